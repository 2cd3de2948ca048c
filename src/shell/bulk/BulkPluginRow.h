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

/// Where the chips of a folded plugin stand, and how high its row is. Known without any widget, so that a list of
/// thousands can be laid out while few of its rows exist.
class BulkRowLayout {
public:
    /// Takes over the font that rows are written in, and forgets what it has measured in another one.
    void setFont(const QFont& font);

    struct Places {
        QRect name;
        std::vector<QRect> chips; ///< in the order of the variants; further lines where one is too short
        int height = 0;
    };
    /// For a row of this width, from (0, 0) on.
    [[nodiscard]] Places places(const ConsolidatedPlugin& plugin, int width) const;

private:
    [[nodiscard]] QSize chipSize(const QString& label) const;

    QFont m_font;
    QFont m_chipFont;
    mutable QHash<QString, QSize> m_chipSizes; ///< by label, of which there are few
};

/// One folded plugin of the bulk pane: its name and one chip per variant. A click on the row itself, or Space,
/// marks it.
class BulkPluginRow final : public Control {
    Q_OBJECT

public:
    /// Room left and right of what is seen of a row, for its growth while it is highlighted.
    static constexpr int kBleedX = 8;
    static constexpr int kBleedY = 1;

    /// `number` makes the object names of the row and of its chips unique.
    BulkPluginRow(const BulkRowLayout& places, int number, QWidget* parent);

    /// Shows this plugin from now on. A row may be given another plugin at any time.
    void showPlugin(const ConsolidatedPlugin& plugin, const QSet<QUuid>& activeVariants, bool isMarked,
                    bool isAnimated);
    [[nodiscard]] const QString& pluginName() const { return m_plugin.name; }
    [[nodiscard]] bool isMarked() const { return isChecked(); }
    [[nodiscard]] bool isHighlighted() const { return m_highlight > 0; }
    /// The highlight of a row that has just arrived.
    void highlight();
    /// Only the current row is reached by Tab, with its chips.
    void setCurrent(bool isCurrent);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QAccessible::Role accessibleRole() const override { return QAccessible::ListItem; }

Q_SIGNALS:
    void variantClicked(const QUuid& id);
    /// A key that moves to another row.
    void moveRequested(int key);
    /// The row or one of its chips has got the focus.
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
    std::vector<ChipButton*> m_chips; ///< may be more than the plugin has variants; the others are hidden
    QVariantAnimation* m_animation = nullptr;
    double m_highlight = 0; ///< strength, 0 to 1
    double m_scale = 1;
};

} // namespace orvanlite
