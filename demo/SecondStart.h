#pragma once

#include "demo/Stage.h"

namespace orvanlite::demo {

class DemoAppearance;

/// Restarts the application after two plugins have been installed: the banner names them, one is added to the
/// profiles and the other is left out.
class SecondStart final : public Stage {
public:
    SecondStart(MainWindow& window, DemoAppearance& appearance, const QString& outputFolder);

    /// Names of the two plugins, which must be on disk before the window is created.
    static constexpr char16_t kAdded[] = u"Newly Added";
    static constexpr char16_t kLeftOut[] = u"Newly Left Out";

    /// True when every step succeeded. `isSavedRight` checks the profiles' file afterwards.
    bool run(const std::function<bool()>& isSavedRight);

private:
    /// In light and dark mode.
    void pictures(const QString& name);

    DemoAppearance& m_appearance;
};

} // namespace orvanlite::demo
