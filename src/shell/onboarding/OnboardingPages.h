#pragma once

#include "shell/onboarding/OnboardingIllustration.h"

#include <vector>

namespace orvanlite {

/// Welcome: a row of bars that move like a level meter.
class OnboardingPage0 final : public OnboardingIllustration {
public:
    using OnboardingIllustration::OnboardingIllustration;

protected:
    void draw(QPainter& painter, double seconds) const override;
    [[nodiscard]] double still() const override { return 0.6; }
};

/// A table whose switches are toggled one after the other.
class OnboardingPage1 final : public OnboardingIllustration {
public:
    using OnboardingIllustration::OnboardingIllustration;

protected:
    void draw(QPainter& painter, double seconds) const override;
    [[nodiscard]] double still() const override { return 1.9; }
};

/// Two profiles that alternate.
class OnboardingPage2 final : public OnboardingIllustration {
public:
    using OnboardingIllustration::OnboardingIllustration;

protected:
    void draw(QPainter& painter, double seconds) const override;
    [[nodiscard]] double still() const override { return 1; }
};

/// A list whose rows are selected one by one, followed by the bulk actions.
class OnboardingPage3 final : public OnboardingIllustration {
public:
    using OnboardingIllustration::OnboardingIllustration;

protected:
    void draw(QPainter& painter, double seconds) const override;
    [[nodiscard]] double still() const override { return 3.4; }
};

/// A file that moves into a safe folder.
class OnboardingPage4 final : public OnboardingIllustration {
public:
    using OnboardingIllustration::OnboardingIllustration;

protected:
    void draw(QPainter& painter, double seconds) const override;
    [[nodiscard]] double still() const override { return 2.2; }
};

/// A shield: with a lock, and with a checkmark once access is granted.
class OnboardingPage5 final : public OnboardingIllustration {
public:
    using OnboardingIllustration::OnboardingIllustration;

    /// `growsIn` animates the checkmark.
    void setHasAccess(bool hasAccess, bool growsIn);

protected:
    void draw(QPainter& painter, double seconds) const override;
    [[nodiscard]] double still() const override { return 0; }

private:
    bool m_hasAccess = false;
    QElapsedTimer m_growing; ///< time since access was granted; invalid when the animation is over
};

} // namespace orvanlite
