#pragma once

#include "shell/onboarding/OnboardingPageShell.h"

#include <qcorotask.h>

namespace orvanlite::platform {
class FullDiskAccess;
struct Platform;
} // namespace orvanlite::platform

namespace orvanlite {

class OnboardingPage5;
class PressButton;

/// The last page: asks for the one permission and, while visible, checks for it every 2 seconds.
class OnboardingAccessPage final : public OnboardingPageShell {
public:
    OnboardingAccessPage(const platform::Platform& platform, platform::FullDiskAccess& access,
                         QWidget* parent);

    [[nodiscard]] bool hasAccess() const { return m_hasAccess; }

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    OnboardingAccessPage(const platform::Platform& platform, platform::FullDiskAccess& access,
                         OnboardingPage5* illustration, QWidget* parent);
    /// Checks again. A change is animated and announced if the page is in sight.
    void test(bool isInSight);
    void render();

    const platform::Platform& m_platform;
    platform::FullDiskAccess& m_access;
    OnboardingPage5* m_illustration;
    PressButton* m_openSettings;
    QLabel* m_path;
    bool m_hasAccess = false;
    /// Incremented when the page is shown or hidden, which ends a watch() of an earlier value.
    int m_appearance = 0;

    static QCoro::Task<> watch(OnboardingAccessPage* page, int appearance);
};

} // namespace orvanlite
