#pragma once

#include "model/ConsolidatedPlugin.h"
#include "shell/toolkit/Control.h"

#include <QHash>
#include <QRect>
#include <QSet>

#include <vector>

class QVariantAnimation;

namespace orvanlite {

class ChipButton;

/// Positions of the chips and height of a row, computed without widgets, so that a list of thousands can be
/// laid out while only a few of its rows exist.
class BulkRowLayout {
public:
    /// Sets the font of the rows and clears the cached chip sizes.
    void setFont(const QFont& font);

    struct Places {
        QRect name;
        std::vector<QRect> chips; ///< in the order of the variants; wrapped into several lines if needed
        int height = 0;
    };
    /// For a row of this width with its origin at (0, 0).
    [[nodiscard]] Places places(const ConsolidatedPlugin& plugin, int width) const;

private:
    [[nodiscard]] QSize chipSize(const QString& label) const;

    QFont m_font;
    QFont m_chipFont;
    mutable QHash<QString, QSize> m_chipSizes; ///< by label
};

/// One plugin of the bulk pane: its name and one chip per variant. Click or Space on the row selects it.
class BulkPluginRow final : public Control {
    Q_OBJECT

public:
    /// Margin around the painted row, into which it grows while highlighted.
    static constexpr int kBleedX = 8;
    static constexpr int kBleedY = 1;

    /// `number` makes the object names of the row and of its chips unique.
    BulkPluginRow(const BulkRowLayout& places, int number, QWidget* parent);

    /// Rows are reused: may be called with another plugin at any time.
    void showPlugin(const ConsolidatedPlugin& plugin, const QSet<QUuid>& activeVariants, bool isMarked,
                    bool isAnimated);
    [[nodiscard]] const QString& pluginName() const { return m_plugin.name; }
    [[nodiscard]] bool isMarked() const { return isChecked(); }
    [[nodiscard]] bool isHighlighted() const { return m_highlight > 0; }
    /// Briefly highlights a new row.
    void highlight();
    /// Only the current row and its chips can be reached by Tab.
    void setCurrent(bool isCurrent);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QAccessible::Role accessibleRole() const override { return QAccessible::ListItem; }

Q_SIGNALS:
    void variantClicked(const QUuid& id);
    /// A navigation key was pressed.
    void moveRequested(int key);
    /// The row or one of its chips received the focus.
    void focused();

protected:
    bool event(QEvent* event) override;
    void paint(QPainter& painter) const override;
    [[nodiscard]] FocusRing focusRing() const override;
    void resizeEvent(QResizeEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    [[nodiscard]] QRectF bounds() const;
    ChipButton* addChip();
    void placeChips();
    void stopHighlight();
    void setHighlightTime(double milliseconds);

    const BulkRowLayout& m_layout;
    ConsolidatedPlugin m_plugin;
    bool m_isCurrent = false;
    BulkRowLayout::Places m_places;
    std::vector<ChipButton*> m_chips; ///< surplus ones are hidden
    QVariantAnimation* m_animation = nullptr;
    double m_highlight = 0; ///< strength, 0 to 1
    double m_scale = 1;
};

} // namespace orvanlite
