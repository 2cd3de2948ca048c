#pragma once

#include "shell/table/PluginTableModel.h"

#include <QElapsedTimer>
#include <QTableView>

#include <array>

namespace orvanlite {

class PluginTableDelegate;
class PluginTableHeader;

/// The plugin table widget: keyboard handling, link hovering and the scroll position across reloads.
class PluginTableView final : public QTableView {
    Q_OBJECT

public:
    PluginTableView(PluginTableModel& model, QWidget* parent);

    [[nodiscard]] PluginTableHeader* header() const { return m_header; }
    /// Shows the columns of the current mode, plain table or preview.
    void showModelColumns();
    /// Whether the last row is visible.
    [[nodiscard]] bool showsLastRow() const;
    /// Scrolls to the top left and clears the current row.
    void startOver();
    /// Call after new rows: makes the first row current if the table has the focus but no current row.
    void keepACurrentRow();
    void scrollTo(const QModelIndex& index, ScrollHint hint = EnsureVisible) override;
    /// Makes the next row whose name starts with the typed letters current, without selecting it.
    void keyboardSearch(const QString& letters) override;

Q_SIGNALS:
    void linkActivated(const QModelIndex& index);
    void viewportChanged();
    /// No loaded row has a name that was typed.
    void nameNotFound();

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
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;

private:
    void hoverLink(const QModelIndex& index);
    void followPointer(const QPoint& position);
    /// Shows the focus ring of the current row for keyboard navigation and hides it after a click.
    void showKeyboardFocus(bool shows);
    /// Sizes each column by its share of the width, but at least to its minimum width.
    void layoutColumns();
    [[nodiscard]] int leastWidth(int column) const;
    /// Stores the shares after the user has resized a column, so that they persist when the window is
    /// resized.
    void takeOverShares();
    /// Handles keys that act on the current row; false for keys left to the table.
    bool actOnCurrentRow(const QKeyEvent& event);
    bool moveCurrentRow(const QKeyEvent& event);
    /// Space then belongs to the name.
    [[nodiscard]] bool isTypingName() const;
    bool goToName(const QString& start, int firstRow);
    void goToRow(int row, Qt::KeyboardModifiers modifiers);
    void keepCurrentRowInSight(int oldHeight, int newHeight);

    PluginTableModel& m_model;
    PluginTableDelegate* m_delegate;
    PluginTableHeader* m_header;
    QPersistentModelIndex m_hovered;
    using Shares = std::array<double, kPluginColumnCount>;
    [[nodiscard]] Shares& shares() { return m_model.isPreview() ? m_previewShares : m_shares; }

    Shares m_shares{};
    Shares m_previewShares{};
    bool m_isLayingOut = false;
    /// The current row was set by focusing the table, not by the user.
    bool m_isCurrentFromFocus = false;
    bool m_goesByCells = false;
    QSize m_windowSize;
    QString m_typed; ///< letters typed in quick succession
    QElapsedTimer m_sinceTyped;
};

} // namespace orvanlite
