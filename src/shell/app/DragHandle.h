#pragma once

#include <QWidget>

#include <optional>

namespace orvanlite {

/// The band between table and bulk pane that is dragged to resize the pane; by keyboard, Up and Down do it.
class DragHandle final : public QWidget {
    Q_OBJECT

public:
    explicit DragHandle(QWidget* parent);

Q_SIGNALS:
    /// At every move of a drag: how far the pointer is below its start, in logical pixels.
    void dragged(double translation);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    std::optional<QPointF> m_start;
    bool m_isDragging = false;
};

} // namespace orvanlite
