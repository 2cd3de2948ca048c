#pragma once

#include <QLabel>

namespace orvanlite {

/// A single line of plain text, elided if it does not fit; the tooltip then shows the full text.
class ElidedLabel final : public QLabel {
    Q_OBJECT

public:
    explicit ElidedLabel(const QString& text, QWidget* parent);

    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    bool event(QEvent* event) override;

private:
    [[nodiscard]] QString shownText() const;
};

} // namespace orvanlite
