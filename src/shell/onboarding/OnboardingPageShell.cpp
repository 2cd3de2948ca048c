#include "shell/onboarding/OnboardingPageShell.h"

#include "shell/onboarding/OnboardingIllustration.h"
#include "shell/toolkit/Announce.h"
#include "shell/toolkit/AppTheme.h"
#include "shell/toolkit/RelativeFont.h"
#include "shell/toolkit/TintedLabel.h"

#include <QEvent>
#include <QVBoxLayout>

namespace orvanlite {

using namespace Qt::StringLiterals;

namespace {

constexpr int kSide = 40;
constexpr int kTop = 28;
constexpr double kTitleSize = 1.6;

} // namespace

OnboardingPageShell::OnboardingPageShell(const QString& title, const QString& description,
                                         OnboardingIllustration* illustration, QWidget* parent)
    : QWidget(parent)
    , m_title(new QLabel(this))
    , m_description(new TintedLabel({}, &AppTheme::secondary, this))
    , m_column(new QVBoxLayout(this))
{
    m_title->setObjectName(u"onboardingTitle"_s);
    m_description->setObjectName(u"onboardingDescription"_s);
    setRelativeFont(m_title, kTitleSize, QFont::DemiBold);
    for (QLabel* text : {m_title, m_description}) {
        text->setAlignment(Qt::AlignCenter);
        text->setWordWrap(true);
    }
    m_column->setContentsMargins(kSide, kTop, kSide, 0);
    m_column->setSpacing(AppTheme::kSpace2);
    m_column->addWidget(illustration, 1);
    m_column->addSpacing(AppTheme::kSpace2);
    m_column->addWidget(m_title);
    m_column->addWidget(m_description);
    setTexts(title, description);
}

void OnboardingPageShell::setTexts(const QString& title, const QString& description)
{
    m_title->setText(title);
    m_description->setText(description);
}

void OnboardingPageShell::announceTexts()
{
    setAccessibleName(m_title->text() + u". "_s + m_description->text());
    announce(this, accessibleName());
}

void OnboardingPageShell::addBelow(QWidget* widget)
{
    // Keep the space of hidden widgets, so that nothing above them moves.
    QSizePolicy policy = widget->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    widget->setSizePolicy(policy);
    // Texts wrap at the full width.
    const bool isText = qobject_cast<QLabel*>(widget) != nullptr;
    m_column->addWidget(widget, 0, isText ? Qt::Alignment() : Qt::AlignHCenter);
}

} // namespace orvanlite
