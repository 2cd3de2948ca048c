#pragma once

#include <QLabel>

namespace orvanlite {

/// A plain text of one line that ends in an ellipsis where the room is short; the whole of it is in the tooltip then.
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
