#pragma once

#include "shell/table/PluginTableModel.h"

#include <QTableView>

#include <array>

namespace orvanlite {

class PluginTableDelegate;
class PluginTableHeader;

/// The plugin table as a widget: keys, links under the pointer, and the place of the view across reloads.
class PluginTableView final : public QTableView {
    Q_OBJECT

public:
    PluginTableView(PluginTableModel& model, QWidget* parent);

    [[nodiscard]] PluginTableHeader* header() const { return m_header; }
    /// Shows the columns of the table that the model is.
    void showModelColumns();
    /// Whether the last row can be seen.
    [[nodiscard]] bool showsLastRow() const;
    /// Back to the first row, with none current.
    void startOver();
    /// After new rows: a table with the focus shows where the keys are.
    void keepACurrentRow();
    void scrollTo(const QModelIndex& index, ScrollHint hint = EnsureVisible) override;

Q_SIGNALS:
    void linkActivated(const QModelIndex& index);
    void viewportChanged();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void changeEvent(QEvent* event) override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;

private:
    void hoverLink(const QModelIndex& index);
    void followPointer(const QPoint& position);
    /// The current row is marked for those who move it by keys, not after a click.
    void showKeyboardFocus(bool shows);
    /// Gives each column its share of the width, and at least what its title and cells need.
    void layoutColumns();
    [[nodiscard]] int leastWidth(int column) const;
    /// The user has dragged a column: its share stays when the window changes.
    void takeOverShares();
    /// What a key on the current row means; false for all that is left to the table.
    bool actOnCurrentRow(const QKeyEvent& event);
    bool moveCurrentRow(const QKeyEvent& event);
    void goToRow(int row, Qt::KeyboardModifiers modifiers);
    void keepCurrentRowInSight(int oldHeight, int newHeight);

    PluginTableModel& m_model;
    PluginTableDelegate* m_delegate;
    PluginTableHeader* m_header;
    QPersistentModelIndex m_hovered;
    /// Share of the width by column.
    using Shares = std::array<double, kPluginColumnCount>;
    [[nodiscard]] Shares& shares() { return m_model.isPreview() ? m_previewShares : m_shares; }

    Shares m_shares{};
    Shares m_previewShares{};
    bool m_isLayingOut = false;
    /// The current row came with the focus: nobody has gone to it yet.
    bool m_isCurrentFromFocus = false;
    bool m_goesByCells = false;
    QSize m_windowSize;
};

} // namespace orvanlite
