#pragma once

#include <QWidget>

namespace orvanlite {

class ElidedLabel;

/// Summary of the active filters, with a button that clears them.
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
