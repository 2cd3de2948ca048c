#pragma once

#include <QWidget>

namespace orvanlite {

/// Shown instead of the table while no category is selected.
class EmptyStateView final : public QWidget {
    Q_OBJECT

public:
    explicit EmptyStateView(QWidget* parent);
};

} // namespace orvanlite
