#pragma once

#include <QAbstractButton>
#include <QAccessible>

namespace orvanlite {

class Glide;

/// Base class of all our buttons: label, focus ring, Return and Space, hover, press animation and
/// accessibility.
///
/// A click, Return, Space and the accessible action are equivalent. Key repeat is ignored. The focus ring is
/// shown for keyboard focus only and hidden on a click.
class Control : public QAbstractButton {
    Q_OBJECT

public:
    /// The visible text, and the accessible name unless another one is set. An ampersand does not create a
    /// mnemonic.
    void setLabel(const QString& label);
    [[nodiscard]] const QString& label() const { return m_label; }

    /// Role reported to assistive technology, by default button, check box or radio button.
    [[nodiscard]] virtual QAccessible::Role accessibleRole() const;
    /// Whether the checked state means that a section is open.
    [[nodiscard]] virtual bool opensSection() const { return false; }

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
    /// The default focus ring: inside the bounds, in the accent colour.
    [[nodiscard]] FocusRing accentRing(const QRectF& bounds, double cornerRadius) const;
    /// Fills the shape while hovered or pressed, with the respective opacity.
    void paintHover(QPainter& painter, const QRectF& shape, double cornerRadius, const QColor& colour,
                    double hovered, double pressed) const;

    /// Enables the press animation, and scaling by `hovered` under the pointer.
    void setScaling(double hovered = 1);
    /// Scales subsequent painting around the centre.
    void applyScale(QPainter& painter, const QPointF& centre) const;
    /// Hides the focus ring until a key is pressed, for the control that gets the focus by default when a
    /// window opens.
    void hideInitialFocusRing() { m_showsFocus = false; }

    void paintEvent(QPaintEvent* event) override;
    bool event(QEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    /// Only exclusive buttons change their state on a click. The state of all others is set by their owner.
    void nextCheckState() override;

private:
    void announceToggle();
    void updateScale(int milliseconds);

    QString m_label;
    bool m_showsFocus = true;
    Glide* m_scale = nullptr;
    double m_hoverScale = 1;
};

} // namespace orvanlite
