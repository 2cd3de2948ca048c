#include "shell/sidebar/ProfileRow.h"

#include "shell/toolkit/AppTheme.h"
#include "shell/toolkit/ButtonKeys.h"
#include "shell/toolkit/ElidedLabel.h"
#include "shell/toolkit/PressButton.h"

#include <QAccessibleWidget>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPainter>

namespace orvanlite {

using namespace Qt::StringLiterals;

namespace {

constexpr int kBleedX = 4; // its ground stands in line with those of the other rows
constexpr int kPaddingX = 12;
constexpr int kPaddingY = 5;
constexpr double kCornerRadius = 7;
constexpr double kStatusSize = 0.86;

/// Reads a row as an item of a list that can be selected.
class ProfileRowAccessible final : public QAccessibleWidget {
public:
    explicit ProfileRowAccessible(ProfileRow* row)
        : QAccessibleWidget(row, QAccessible::ListItem)
    {}
    [[nodiscard]] QString text(QAccessible::Text kind) const override
    {
        switch (kind) {
        case QAccessible::Name:
            return row()->profile().name;
        case QAccessible::Description:
            return row()->status();
        default:
            return QAccessibleWidget::text(kind);
        }
    }
    [[nodiscard]] QAccessible::State state() const override
    {
        QAccessible::State state = QAccessibleWidget::state();
        state.selectable = true;
        state.selected = row()->isActive();
        return state;
    }
    [[nodiscard]] QStringList actionNames() const override { return {pressAction(), setFocusAction()}; }
    void doAction(const QString& action) override
    {
        if (action == pressAction())
            row()->click();
        else
            QAccessibleWidget::doAction(action);
    }

private:
    [[nodiscard]] ProfileRow* row() const { return static_cast<ProfileRow*>(widget()); }
};

QAccessibleInterface* makeAccessible(const QString& className, QObject* object)
{
    if (className != QLatin1StringView(ProfileRow::staticMetaObject.className()))
        return nullptr;
    auto* row = qobject_cast<ProfileRow*>(object);
    return row ? new ProfileRowAccessible(row) : nullptr;
}

QColor white(const QPalette& /*colours*/) { return Qt::white; }

void setInk(QLabel* label, const QColor& colour)
{
    QPalette own; // only this one colour: all others go on following the application's palette
    own.setColor(QPalette::WindowText, colour);
    label->setForegroundRole(QPalette::WindowText); // in a button it would be another one
    label->setPalette(own);
}

} // namespace

ProfileRow::ProfileRow(int number, bool reducesMotion, QWidget* parent)
    : QAbstractButton(parent)
    , m_reducesMotion(reducesMotion)
    , m_name(new ElidedLabel({}, this))
    , m_status(new ElidedLabel({}, this))
{
    static const bool isInstalled = (QAccessible::installFactory(makeAccessible), true);
    Q_UNUSED(isInstalled)
    const QString identity = u"profileRow%1"_s.arg(number);
    setObjectName(identity);
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_Hover);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    m_name->setObjectName(identity + u"Name"_s);
    m_status->setObjectName(identity + u"Status"_s);
    QFont medium = m_name->font();
    medium.setWeight(QFont::Medium);
    m_name->setFont(medium);
    fitStatusFont();
    auto* texts = new QVBoxLayout;
    texts->setSpacing(1);
    texts->addWidget(m_name);
    texts->addWidget(m_status);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(kPaddingX, kPaddingY, kPaddingX - kBleedX, kPaddingY);
    row->setSpacing(0);
    row->addLayout(texts, 1);
    const auto add = [&](const QString& icon, const QString& tip, const QString& name,
                         void (ProfileRow::*signal)()) {
        PressButton* button = addButton(icon, tip, identity + name);
        connect(button, &QAbstractButton::clicked, this, signal);
        row->addWidget(button);
    };
    add(u"play.circle.fill"_s, u"Apply profile"_s, u"Apply"_s, &ProfileRow::applyClicked);
    add(u"arrow.triangle.2.circlepath.circle.fill"_s, u"Update profile with current state"_s, u"Update"_s,
        &ProfileRow::updateClicked);
    add(u"square.and.arrow.up.circle.fill"_s, u"Export profile"_s, u"Export"_s, &ProfileRow::exportClicked);
    add(u"trash.circle.fill"_s, u"Delete profile"_s, u"Delete"_s, &ProfileRow::deleteClicked);
}

PressButton* ProfileRow::addButton(const QString& iconKey, const QString& toolTip, const QString& objectName)
{
    auto* button = new PressButton({}, iconKey, PressButton::Ground::compact, this);
    button->setObjectName(objectName);
    button->setToolTip(toolTip);
    button->setAccessibleName(toolTip);
    button->setReducesMotion(m_reducesMotion);
    m_buttons.push_back(button);
    return button;
}

void ProfileRow::showProfile(const PluginProfile& profile, const QString& status, bool isActive)
{
    const bool wasActive = std::exchange(m_isActive, isActive);
    m_profile = profile;
    m_name->setText(QString(profile.name).replace(u'\n', u' ')); // the row has one line for it
    m_status->setText(status);
    setInk(m_name, isActive ? QColor(Qt::white) : AppTheme::primary(palette()));
    setInk(m_status, isActive ? QColor(Qt::white) : AppTheme::secondary(palette()));
    QPalette onTint; // a focus frame in the accent would not be seen there
    onTint.setColor(QPalette::Highlight, Qt::white);
    for (PressButton* button : m_buttons) {
        button->setAccessibleDescription(profile.name);
        button->setTextColour(isActive ? &white : &AppTheme::secondary);
        button->setPalette(isActive ? onTint : QPalette());
    }
    if (wasActive != isActive) {
        QAccessible::State changed;
        changed.selected = true;
        QAccessibleStateChangeEvent event(this, changed);
        QAccessible::updateAccessibility(&event);
    }
    update();
}

QString ProfileRow::status() const { return m_status->text(); }

QSize ProfileRow::sizeHint() const { return layout()->sizeHint(); }

QSize ProfileRow::minimumSizeHint() const { return layout()->minimumSize(); }

void ProfileRow::fitStatusFont()
{
    QFont small = font();
    small.setPointSizeF(small.pointSizeF() * kStatusSize);
    m_status->setFont(small);
}

void ProfileRow::changeEvent(QEvent* event)
{
    QAbstractButton::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        fitStatusFont(); // a size of its own does not follow
}

void ProfileRow::keyPressEvent(QKeyEvent* event)
{
    m_showsFocus = true;
    if (!pressByReturn(*this, *event))
        QAbstractButton::keyPressEvent(event);
    update();
}

void ProfileRow::focusInEvent(QFocusEvent* event)
{
    m_showsFocus = event->reason() != Qt::MouseFocusReason;
    QAbstractButton::focusInEvent(event);
}

void ProfileRow::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF bounds = QRectF(rect()).adjusted(kBleedX + 0.5, 0.5, -kBleedX - 0.5, -0.5);
    painter.setPen(Qt::NoPen);
    if (m_isActive) {
        painter.setBrush(AppTheme::groundForWhite(AppTheme::accentBlue()));
        painter.drawRoundedRect(bounds, kCornerRadius, kCornerRadius);
    }
    if (underMouse() || isDown()) {
        // The tint gets darker, never lighter: the text on it is white.
        const QColor shade = m_isActive ? QColor(Qt::black) : AppTheme::primary(palette());
        painter.setBrush(AppTheme::withOpacity(shade, isDown() ? 0.12 : 0.06));
        painter.drawRoundedRect(bounds, kCornerRadius, kCornerRadius);
    }
    if (hasFocus() && m_showsFocus) {
        painter.setPen(QPen(m_isActive ? QColor(Qt::white) : AppTheme::accent(palette()), 2));
        painter.setBrush(Qt::NoBrush);
        // Tint stays around a white frame, or it would be one with a white ground.
        const double inset = m_isActive ? 3 : 1;
        const double radius = m_isActive ? kCornerRadius - 2 : kCornerRadius;
        painter.drawRoundedRect(bounds.adjusted(inset, inset, -inset, -inset), radius, radius);
    }
}

} // namespace orvanlite
