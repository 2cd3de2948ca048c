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

/// The last page: it asks for the one permission, and looks every 2 seconds whether it has been given while it is in
/// sight.
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
    /// Looks again. What changes while the page is in sight grows in and is announced.
    void test(bool isInSight);
    void render();

    const platform::Platform& m_platform;
    platform::FullDiskAccess& m_access;
    OnboardingPage5* m_illustration;
    PressButton* m_openSettings;
    QLabel* m_path;
    bool m_hasAccess = false;
    /// Number of the appearance that a waiting look belongs to: those of earlier ones end.
    int m_appearance = 0;

    static QCoro::Task<> watch(OnboardingAccessPage* page, int appearance);
};

} // namespace orvanlite
