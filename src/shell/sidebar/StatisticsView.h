#pragma once

#include <QWidget>

class QLabel;

namespace orvanlite {

/// The numbers of all, enabled and disabled plugins.
class StatisticsView final : public QWidget {
    Q_OBJECT

public:
    explicit StatisticsView(QWidget* parent);

    void setCounts(int total, int enabled, int disabled);

private:
    QLabel* m_total;
    QLabel* m_enabled;
    QLabel* m_disabled;
};

} // namespace orvanlite
