#include "shell/onboarding/OnboardingAccessPage.h"

#include "operations/Detach.h"
#include "platform/Clock.h"
#include "platform/FullDiskAccess.h"
#include "platform/Platform.h"
#include "platform/Workspace.h"
#include "shell/onboarding/OnboardingPages.h"
#include "shell/toolkit/AppTheme.h"
#include "shell/toolkit/PressButton.h"
#include "shell/toolkit/TintedLabel.h"

#include <QPointer>

namespace orvanlite {

using namespace Qt::StringLiterals;

namespace {

constexpr std::chrono::milliseconds kLookEvery{2'000};

} // namespace

OnboardingAccessPage::OnboardingAccessPage(const platform::Platform& platform,
                                           platform::FullDiskAccess& access, QWidget* parent)
    : OnboardingAccessPage(platform, access, new OnboardingPage5(nullptr), parent)
{}

OnboardingAccessPage::OnboardingAccessPage(const platform::Platform& platform,
                                           platform::FullDiskAccess& access, OnboardingPage5* illustration,
                                           QWidget* parent)
    : OnboardingPageShell({}, {}, illustration, parent)
    , m_platform(platform)
    , m_access(access)
    , m_illustration(illustration)
    , m_openSettings(
          new PressButton(u"Open System Settings"_s, u"gear"_s, PressButton::Ground::bordered, this))
    , m_path(new TintedLabel(u"Privacy & Security → Full Disk Access → enable Orvanlite"_s,
                             &AppTheme::secondary, this))
{
    m_openSettings->setObjectName(u"openSettingsButton"_s);
    m_openSettings->setTint(&AppTheme::blue);
    if (const QUrl page = access.settings(); page.scheme().startsWith(u"http"_s)) {
        // Show that the button opens a web page and not the system's settings.
        const QString place = u"Opens "_s + page.toDisplayString();
        m_openSettings->setToolTip(place);
        m_openSettings->setAccessibleDescription(place);
    }
    m_path->setObjectName(u"settingsPathLabel"_s);
    m_path->setWordWrap(true);
    m_path->setAlignment(Qt::AlignCenter);
    addBelow(m_openSettings);
    addBelow(m_path);
    connect(m_openSettings, &QAbstractButton::clicked, this,
            [this] { m_platform.workspace.open(m_access.settings()); });
    render();
}

void OnboardingAccessPage::showEvent(QShowEvent* event)
{
    OnboardingPageShell::showEvent(event);
    test(false);
    detach(watch(this, ++m_appearance));
}

void OnboardingAccessPage::hideEvent(QHideEvent* event)
{
    OnboardingPageShell::hideEvent(event);
    ++m_appearance;
}

QCoro::Task<> OnboardingAccessPage::watch(OnboardingAccessPage* page, int appearance)
{
    const QPointer<OnboardingAccessPage> alive(page);
    platform::Clock& clock = page->m_platform.clock;
    while (true) {
        co_await clock.sleepFor(kLookEvery);
        if (!alive || alive->m_appearance != appearance)
            co_return;
        alive->test(true);
    }
}

void OnboardingAccessPage::test(bool isInSight)
{
    const bool hasAccess = m_access.isGranted();
    if (hasAccess == m_hasAccess)
        return;
    m_hasAccess = hasAccess;
    m_illustration->setHasAccess(hasAccess, isInSight);
    render();
    if (isInSight)
        announceTexts(); // otherwise announced when the page is shown
}

void OnboardingAccessPage::render()
{
    if (m_hasAccess) {
        setTexts(u"You're All Set!"_s,
                 u"Full Disk Access granted. Orvanlite can now manage your plugins freely."_s);
    } else {
        setTexts(u"One Permission Needed"_s,
                 u"Orvanlite needs Full Disk Access to enable, disable, and delete plugins "
                 "in system folders."_s);
    }
    if (m_hasAccess && m_openSettings->hasFocus())
        focusNextChild(); // before the button is hidden
    m_openSettings->setVisible(!m_hasAccess);
    m_path->setVisible(!m_hasAccess);
}

} // namespace orvanlite
