#pragma once

#include "shell/bulk/BulkPluginRow.h"

#include <QScrollArea>

namespace orvanlite {

class BulkSelection;
class Glide;

/// The rows of the bulk pane in a scrolling column. Only rows that are in view exist as widgets, and the one that the
/// keyboard is on; they are given other plugins as the column moves, so that thousands cost no more than a screenful.
class BulkPluginList final : public QScrollArea {
    Q_OBJECT

public:
    /// `markedNames` is read at every rendering.
    BulkPluginList(const BulkSelection& selection, const QSet<QString>& markedNames, QWidget* parent);

    /// Takes over the folded plugins. When there are more of them than the last time it scrolls to the last one.
    void reload();
    /// Brings marks and chips of the rows in view up to date.
    void renderRows(bool isAnimated);
    /// The rows that exist as widgets and show a plugin, from top to bottom.
    [[nodiscard]] std::vector<BulkPluginRow*> builtRows() const;

    /// The height that the list takes where the window has room for it.
    void setPreferredHeight(int height);
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;
    /// Gives the keyboard to the current row, or to the first one.
    void focusCurrentRow();

Q_SIGNALS:
    void nameClicked(const QString& name);
    void variantClicked(const QUuid& id);

protected:
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    [[nodiscard]] const std::vector<ConsolidatedPlugin>& plugins() const;
    /// The row that stands at this height of the column, or the one below it.
    [[nodiscard]] std::size_t rowAt(int y) const;
    void layOut();
    void buildRows(bool isAnimated = false);
    void placeRow(BulkPluginRow& row, std::size_t index, bool isAnimated);
    BulkPluginRow* freeRow(std::vector<BulkPluginRow*>& unused);
    void restoreFocus();
    void moveCurrent(int key);
    void makeCurrent(const QString& name);
    void scrollTo(std::size_t index);
    void scrollToLast();

    const BulkSelection& m_selection;
    const QSet<QString>& m_markedNames;
    BulkRowLayout m_rowLayout;
    QWidget* m_column;
    std::vector<int> m_tops; ///< of each row in the column, and where a row behind the last would stand
    QHash<QString, BulkPluginRow*> m_rows;
    int m_rowCount = 0; ///< of all that were ever made
    std::vector<BulkPluginRow*> m_spares;
    QSet<QString> m_seenNames; ///< have been highlighted
    QString m_currentName;
    std::size_t m_currentIndex = 0;
    std::size_t m_previousCount = 0;
    int m_preferredHeight = 0;
    bool m_isBuilding = false;
    bool m_isAtLastWanted = false; ///< as soon as there is a height to scroll in
    Glide* m_scrolling;
};

} // namespace orvanlite
