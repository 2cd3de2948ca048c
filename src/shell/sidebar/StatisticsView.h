#pragma once

#include <QWidget>

class QLabel;

namespace orvanlite {

/// How many plugins there are, and in which state.
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
