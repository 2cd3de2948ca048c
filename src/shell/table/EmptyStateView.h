#pragma once

#include <QWidget>

namespace orvanlite {

struct WorkStatus;
template <typename T>
class Observable;

/// Shown instead of the table while no category is selected. Operations can be started from the sidebar
/// meanwhile, so it has the status line of the table's footer.
class EmptyStateView final : public QWidget {
    Q_OBJECT

public:
    EmptyStateView(const Observable<WorkStatus>& status, QWidget* parent);
};

} // namespace orvanlite
