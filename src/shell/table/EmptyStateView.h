#pragma once

#include <QWidget>

namespace orvanlite {

/// What stands in the table's place while no category is chosen.
class EmptyStateView final : public QWidget {
    Q_OBJECT

public:
    explicit EmptyStateView(QWidget* parent);
};

} // namespace orvanlite
