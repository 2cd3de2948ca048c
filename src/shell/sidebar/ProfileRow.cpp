#include "shell/sidebar/ProfileRow.h"

#include "shell/toolkit/AppTheme.h"
#include "shell/toolkit/ElidedLabel.h"
#include "shell/toolkit/PressButton.h"
#include "shell/toolkit/RelativeFont.h"

#include <QHBoxLayout>
#include <QPainter>

namespace orvanlite {

using namespace Qt::StringLiterals;

namespace {

constexpr int kBleedX = 4; // aligns the background with those of the other rows
constexpr int kPaddingX = 12;
constexpr int kPaddingY = 5;
constexpr double kCornerRadius = 7;
constexpr double kStatusSize = 0.86;

QColor white(const QPalette& /*colours*/) { return Qt::white; }

void setTextColour(QLabel* label, const QColor& colour)
{
    QPalette own; // sets only this role: the others keep following the application's palette
    own.setColor(QPalette::WindowText, colour);
    label->setForegroundRole(QPalette::WindowText); // inside a button the default role differs
    label->setPalette(own);
}

} // namespace

ProfileRow::ProfileRow(int number, QWidget* parent)
    : Control(parent)
    , m_name(new ElidedLabel({}, this))
    , m_status(new ElidedLabel({}, this))
{
    const QString identity = u"profileRow%1"_s.arg(number);
    setObjectName(identity);
    setCheckable(true);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    m_name->setObjectName(identity + u"Name"_s);
    m_status->setObjectName(identity + u"Status"_s);
    setRelativeFont(m_name, 1, QFont::Medium);
    setRelativeFont(m_status, kStatusSize);
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
        PressButton* button = makeIconButton(icon, tip, identity + name, this, PressButton::Ground::compact);
        m_buttons.push_back(button);
        connect(button, &QAbstractButton::clicked, this, signal);
        row->addWidget(button);
    };
    add(u"play.circle.fill"_s, u"Apply profile"_s, u"Apply"_s, &ProfileRow::applyClicked);
    add(u"arrow.triangle.2.circlepath.circle.fill"_s, u"Update profile with current state"_s, u"Update"_s,
        &ProfileRow::updateClicked);
    add(u"square.and.arrow.up.circle.fill"_s, u"Export profile"_s, u"Export"_s, &ProfileRow::exportClicked);
    add(u"trash.circle.fill"_s, u"Delete profile"_s, u"Delete"_s, &ProfileRow::deleteClicked);
}

void ProfileRow::showProfile(const PluginProfile& profile, const QString& status, bool isActive)
{
    m_profile = profile;
    setLabel(profile.name);
    setAccessibleDescription(status);
    m_name->setText(QString(profile.name).replace(u'\n', u' '));
    m_status->setText(status);
    setTextColour(m_name, isActive ? QColor(Qt::white) : AppTheme::primary(palette()));
    setTextColour(m_status, isActive ? QColor(Qt::white) : AppTheme::secondary(palette()));
    QPalette onTint; // a focus ring in the accent colour would be invisible
    onTint.setColor(QPalette::Highlight, Qt::white);
    for (PressButton* button : m_buttons) {
        button->setAccessibleDescription(profile.name);
        button->setTextColour(isActive ? &white : &AppTheme::secondary);
        button->setPalette(isActive ? onTint : QPalette());
    }
    setChecked(isActive);
    update();
}

QString ProfileRow::status() const { return m_status->text(); }

QSize ProfileRow::sizeHint() const { return layout()->sizeHint(); }

QSize ProfileRow::minimumSizeHint() const { return layout()->minimumSize(); }

QRectF ProfileRow::bounds() const
{
    return QRectF(rect()).adjusted(kBleedX + 0.5, 0.5, -kBleedX - 0.5, -0.5);
}

void ProfileRow::paint(QPainter& painter) const
{
    if (isChecked()) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(AppTheme::groundForWhite(AppTheme::accentBlue()));
        painter.drawRoundedRect(bounds(), kCornerRadius, kCornerRadius);
    }
    // Never lighten the tint: its text is white.
    paintHover(painter, bounds(), kCornerRadius,
               isChecked() ? QColor(Qt::black) : AppTheme::primary(palette()), 0.06, 0.12);
}

Control::FocusRing ProfileRow::focusRing() const
{
    if (!isChecked())
        return accentRing(bounds(), kCornerRadius);
    // Inset, as a white ring at the edge would merge with a white background.
    return {bounds().adjusted(3, 3, -3, -3), kCornerRadius - 2, Qt::white};
}

} // namespace orvanlite
