#pragma once

#include <QAbstractButton>
#include <QAccessible>

namespace orvanlite {

class Glide;

/// Base of all our buttons: the label, the focus ring, Return and Space, hover, the press animation, and what
/// assistive technology hears and does.
///
/// A click, either key and the accessible action are the same. A held key presses once. The focus ring is for the
/// keyboard: it goes with a click.
class Control : public QAbstractButton {
    Q_OBJECT

public:
    /// The visible text, and the name for assistive technology unless there is another one. An ampersand in it makes
    /// no shortcut.
    void setLabel(const QString& label);
    [[nodiscard]] const QString& label() const { return m_label; }

    /// As the interface for assistive technology reports it: a button, a check box or a radio button.
    [[nodiscard]] virtual QAccessible::Role accessibleRole() const;

protected:
    explicit Control(QWidget* parent);

    virtual void paint(QPainter& painter) const = 0;
    struct FocusRing {
        QRectF rect;
        double cornerRadius = 0;
        QColor colour;
        double width = 2;
    };
    [[nodiscard]] virtual FocusRing focusRing() const = 0;
    /// The usual one: inside these bounds, in the accent colour.
    [[nodiscard]] FocusRing accentRing(const QRectF& bounds, double cornerRadius) const;
    /// Fills the shape at one opacity under the pointer, at another while pressed.
    void paintHover(QPainter& painter, const QRectF& shape, double cornerRadius, const QColor& colour,
                    double hovered, double pressed) const;

    /// Shrinks a little while it is pressed, and under the pointer takes the scale that is passed.
    void setScaling(double hovered = 1);
    /// Scales what is painted next around the centre.
    void applyScale(QPainter& painter, const QPointF& centre) const;
    /// Without a focus ring until a key is pressed: for what has the focus of a new window that nobody gave it.
    void hideInitialFocusRing() { m_showsFocus = false; }

    void paintEvent(QPaintEvent* event) override;
    bool event(QEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    /// A click changes the state of one of several exclusive buttons only. All others show what their owner made of the
    /// click.
    void nextCheckState() override;

private:
    void updateScale(int milliseconds);

    QString m_label;
    bool m_showsFocus = true;
    Glide* m_scale = nullptr;
    double m_hoverScale = 1;
};

} // namespace orvanlite
