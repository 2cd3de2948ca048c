#pragma once

#include <QAccessibleWidget>

#include <vector>

namespace orvanlite {

class BulkPluginList;

/// The list as screen readers see it: all rows in order. Rows that exist as widgets speak for themselves; the
/// others are represented by objects that last until the next reload.
class BulkListAccessible final : public QAccessibleWidget {
public:
    /// `column` is the widget that contains the rows.
    BulkListAccessible(QWidget* column, BulkPluginList& list);
    ~BulkListAccessible() override;

    /// Installed once. Recognises the column by its object name.
    static void install();
    static constexpr auto kColumnName = "bulkPluginColumn";

    /// The rows have changed.
    void reload();

    [[nodiscard]] int childCount() const override;
    [[nodiscard]] QAccessibleInterface* child(int index) const override;
    [[nodiscard]] int indexOfChild(const QAccessibleInterface* child) const override;
    [[nodiscard]] QAccessibleInterface* childAt(int x, int y) const override;

private:
    BulkPluginList& m_list;
    mutable std::vector<QAccessible::Id> m_absentRows; ///< by position; 0 if not asked for yet
};

} // namespace orvanlite
