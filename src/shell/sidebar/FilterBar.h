#pragma once

#include <QWidget>

namespace orvanlite {

class ElidedLabel;

/// What the list is filtered by, and the way out of all filters.
class FilterBar final : public QWidget {
    Q_OBJECT

public:
    explicit FilterBar(QWidget* parent);

    void setSummary(const QString& summary);

Q_SIGNALS:
    void clearClicked();

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    ElidedLabel* m_summary;
};

} // namespace orvanlite
