#pragma once

#include <QWidget>

#include <optional>

namespace orvanlite {

/// The band between table and bulk pane, dragged to resize the pane; Up and Down do the same.
class DragHandle final : public QWidget {
    Q_OBJECT

public:
    explicit DragHandle(QWidget* parent);

Q_SIGNALS:
    /// Emitted on every move of a drag, with the vertical distance from its start in logical pixels; positive
    /// is down.
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
