#pragma once

#include <QScrollBar>

namespace orvanlite {

/// A slim scroll bar without arrows: a rounded handle without a track, more opaque under the pointer.
class ThinScrollBar final : public QScrollBar {
    Q_OBJECT

public:
    ThinScrollBar(Qt::Orientation orientation, QWidget* parent);

    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    [[nodiscard]] int length() const;
    [[nodiscard]] int handleLength() const;
    [[nodiscard]] QRect handleRect() const;
    [[nodiscard]] int along(const QPoint& point) const;

    /// Offset of the pointer within the dragged handle; -1 while not dragging.
    int m_grip = -1;
};

} // namespace orvanlite
