#include "shell/toolkit/Control.h"

#include "shell/toolkit/Announce.h"
#include "shell/toolkit/AppTheme.h"
#include "shell/toolkit/FocusRing.h"
#include "shell/toolkit/KeyRepeat.h"
#include "shell/toolkit/Motion.h"

#include <QAccessibleWidget>
#include <QButtonGroup>
#include <QKeyEvent>
#include <QPainter>

namespace orvanlite {

using namespace Qt::StringLiterals;

namespace {

constexpr double kPressedScale = 0.96;
constexpr int kPressMilliseconds = 150;
constexpr int kHoverMilliseconds = 200;

/// Qt's default interface toggles a checkable button without emitting clicked(), so the action would have no
/// effect.
class ControlAccessible final : public QAccessibleWidget {
public:
    explicit ControlAccessible(Control* control)
        : QAccessibleWidget(control)
    {}
    [[nodiscard]] QAccessible::Role role() const override { return control().accessibleRole(); }
    [[nodiscard]] QString text(QAccessible::Text kind) const override
    {
        const bool isLabel = kind == QAccessible::Name && control().accessibleName().isEmpty();
        return isLabel ? control().label() : QAccessibleWidget::text(kind);
    }
    [[nodiscard]] QAccessible::State state() const override
    {
        QAccessible::State state = QAccessibleWidget::state();
        const bool isRow = role() == QAccessible::ListItem;
        state.selectable = isRow;
        state.selected = isRow && control().isChecked();
        state.expandable = control().opensSection();
        state.expanded = state.expandable && control().isChecked();
        state.collapsed = state.expandable && !control().isChecked();
        state.checkable = !isRow && !state.expandable && control().isCheckable();
        state.checked = state.checkable && control().isChecked();
        state.pressed = control().isDown();
        return state;
    }
    [[nodiscard]] QStringList actionNames() const override
    {
        return QStringList{control().isCheckable() ? toggleAction() : pressAction()} +
               QAccessibleWidget::actionNames();
    }
    void doAction(const QString& action) override
    {
        if (action == pressAction() || action == toggleAction())
            control().click();
        else
            QAccessibleWidget::doAction(action);
    }
    [[nodiscard]] QStringList keyBindingsForAction(const QString& action) const override
    {
        return action == actionNames().first() ? QStringList{u"Space"_s}
                                               : QAccessibleWidget::keyBindingsForAction(action);
    }

private:
    [[nodiscard]] Control& control() const { return *static_cast<Control*>(widget()); }
};

QAccessibleInterface* makeAccessible(const QString& className, QObject* object)
{
    if (className != QLatin1StringView(Control::staticMetaObject.className()))
        return nullptr;
    auto* control = qobject_cast<Control*>(object);
    return control ? new ControlAccessible(control) : nullptr;
}

} // namespace

Control::Control(QWidget* parent)
    : QAbstractButton(parent)
{
    static const bool isInstalled = (QAccessible::installFactory(makeAccessible), true);
    Q_UNUSED(isInstalled)
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_Hover);
    connect(this, &QAbstractButton::toggled, this, &Control::announceToggle);
}

void Control::announceToggle()
{
    QAccessible::State changed;
    changed.selected = accessibleRole() == QAccessible::ListItem;
    changed.expanded = opensSection();
    QAccessibleStateChangeEvent event(this, changed);
    QAccessible::updateAccessibility(&event);
    // The bridge on Linux does not pass on this state.
    if (opensSection() && hasFocus())
        announce(this, isChecked() ? u"expanded"_s : u"collapsed"_s);
}

void Control::setLabel(const QString& label)
{
    if (label == m_label)
        return;
    m_label = label;
    setText(QString(label).replace(u'&', u"&&"_s));
    updateGeometry();
}

QAccessible::Role Control::accessibleRole() const
{
    if (!isCheckable() || opensSection())
        return QAccessible::Button;
    return group() && group()->exclusive() ? QAccessible::RadioButton : QAccessible::CheckBox;
}

Control::FocusRing Control::accentRing(const QRectF& bounds, double cornerRadius) const
{
    return {bounds.adjusted(1, 1, -1, -1), cornerRadius, AppTheme::accent(palette())};
}

void Control::paintHover(QPainter& painter, const QRectF& shape, double cornerRadius, const QColor& colour,
                         double hovered, double pressed) const
{
    if (!underMouse() && !isDown())
        return;
    painter.setPen(Qt::NoPen);
    painter.setBrush(AppTheme::withOpacity(colour, isDown() ? pressed : hovered));
    painter.drawRoundedRect(shape, cornerRadius, cornerRadius);
}

void Control::setScaling(double hovered)
{
    m_hoverScale = hovered;
    m_scale = new Glide(1, kPressMilliseconds, this);
    for (const auto changed : {&QAbstractButton::pressed, &QAbstractButton::released})
        connect(this, changed, this, [this] { updateScale(kPressMilliseconds); });
}

void Control::updateScale(int milliseconds)
{
    if (!m_scale)
        return;
    m_scale->setDuration(milliseconds);
    const bool isStill = reducesMotion(this);
    m_scale->glideTo(isStill ? 1 : (isDown() ? kPressedScale : 1) * (underMouse() ? m_hoverScale : 1));
}

void Control::applyScale(QPainter& painter, const QPointF& centre) const
{
    const double scale = m_scale ? m_scale->value() : 1;
    painter.translate(centre);
    painter.scale(scale, scale);
    painter.translate(-centre);
}

void Control::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.save();
    paint(painter);
    painter.restore();
    if (!hasFocus() || !m_showsFocus)
        return;
    const FocusRing ring = focusRing();
    drawFocusRing(painter, ring.rect, ring.cornerRadius, ring.colour, ring.width);
}

bool Control::event(QEvent* event)
{
    const bool isUsed = QAbstractButton::event(event);
    if (event->type() == QEvent::Enter || event->type() == QEvent::Leave)
        updateScale(kHoverMilliseconds);
    return isUsed;
}

void Control::focusInEvent(QFocusEvent* event)
{
    m_showsFocus = showsFocusAfter(event->reason(), m_showsFocus);
    QAbstractButton::focusInEvent(event);
}

void Control::keyPressEvent(QKeyEvent* event)
{
    m_showsFocus = true;
    update();
    const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if ((isReturn || event->key() == Qt::Key_Space) && KeyRepeat::isRepeat(*event))
        return;
    if (isReturn)
        click();
    else
        QAbstractButton::keyPressEvent(event);
}

void Control::nextCheckState()
{
    if (group() && group()->exclusive())
        QAbstractButton::nextCheckState();
}

} // namespace orvanlite
