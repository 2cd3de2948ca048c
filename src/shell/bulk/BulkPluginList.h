#pragma once

#include "shell/bulk/BulkPluginRow.h"

#include <QScrollArea>

namespace orvanlite {

class BulkSelection;
class Glide;

/// The rows of the bulk pane in a scrolling column. Only visible rows and the current one exist as widgets;
/// they are reused while scrolling, so that thousands of plugins cost no more than one screenful.
class BulkPluginList final : public QScrollArea {
    Q_OBJECT

public:
    /// `selectedNames`: the selected rows, read at every rendering; outlives the list.
    BulkPluginList(const BulkSelection& selection, const QSet<QString>& selectedNames, QWidget* parent);

    /// Reads the plugins again. Scrolls to the last one if there are more than before.
    void reload();
    /// Updates selection and chips of the visible rows.
    void renderRows(bool isAnimated);
    /// The rows in use, from top to bottom.
    [[nodiscard]] std::vector<BulkPluginRow*> builtRows() const;

    /// The height of the list if the window has space for it.
    void setPreferredHeight(int height);
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;
    /// Focuses the current row, or the first one.
    void focusCurrentRow();

    // Any row by its position, whether or not it has a widget.
    [[nodiscard]] int rowCount() const { return static_cast<int>(plugins().size()); }
    [[nodiscard]] QString rowName(int position) const;
    [[nodiscard]] bool isRowMarked(int position) const;
    /// In the column that contains the rows; null while the layout is out of date.
    [[nodiscard]] QRect rowRect(int position) const;
    /// Null if the row has no widget.
    [[nodiscard]] BulkPluginRow* builtRow(int position) const;
    /// -1 if the widget is not in use.
    [[nodiscard]] int positionOf(const BulkPluginRow& row) const;
    /// The row at this height of the column; the space below a row belongs to it.
    [[nodiscard]] int positionAt(int y) const { return static_cast<int>(rowAt(y)); }
    /// Makes the row current and scrolls to it.
    void focusRow(int position);

Q_SIGNALS:
    void nameClicked(const QString& name);
    void variantClicked(const QUuid& id);

protected:
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    [[nodiscard]] const std::vector<ConsolidatedPlugin>& plugins() const;
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
    const QSet<QString>& m_selectedNames;
    BulkRowLayout m_rowLayout;
    QWidget* m_column;
    std::vector<int>
        m_tops; ///< of each row in the column; the last element is where the next row would start
    QHash<QString, BulkPluginRow*> m_rows;
    int m_rowCount = 0; ///< created so far
    std::vector<BulkPluginRow*> m_spares;
    QSet<QString> m_seenNames; ///< already highlighted
    QString m_currentName;
    std::size_t m_currentIndex = 0;
    std::size_t m_previousCount = 0;
    int m_preferredHeight = 0;
    bool m_isBuilding = false;
    bool m_isAtLastWanted = false; ///< scroll to the last row once the list is shown
    Glide* m_scrolling;
};

} // namespace orvanlite
