#pragma once

#include "shell/onboarding/OnboardingIllustration.h"

#include <vector>

namespace orvanlite {

/// A row of bars that move like a meter: the product's greeting.
class OnboardingPage0 final : public OnboardingIllustration {
public:
    using OnboardingIllustration::OnboardingIllustration;

protected:
    void draw(QPainter& painter, double seconds) const override;
    [[nodiscard]] double still() const override { return 0.6; }
};

/// A table whose switches are flipped one after the other.
class OnboardingPage1 final : public OnboardingIllustration {
public:
    using OnboardingIllustration::OnboardingIllustration;

protected:
    void draw(QPainter& painter, double seconds) const override;
    [[nodiscard]] double still() const override { return 1.9; }
};

/// Two profiles that take turns.
class OnboardingPage2 final : public OnboardingIllustration {
public:
    using OnboardingIllustration::OnboardingIllustration;

protected:
    void draw(QPainter& painter, double seconds) const override;
    [[nodiscard]] double still() const override { return 1; }
};

/// A list that is ticked row by row, and then what can be done with all of it.
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

/// A shield: with a lock until the access is there, with a checkmark then.
class OnboardingPage5 final : public OnboardingIllustration {
public:
    using OnboardingIllustration::OnboardingIllustration;

    /// The sign of access grows in, or is there at once.
    void setHasAccess(bool hasAccess, bool growsIn);

protected:
    void draw(QPainter& painter, double seconds) const override;
    [[nodiscard]] double still() const override { return 0; }

private:
    bool m_hasAccess = false;
    QElapsedTimer m_growing; ///< since access came; invalid when the sign has its size
};

} // namespace orvanlite
