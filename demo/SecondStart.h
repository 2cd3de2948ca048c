#pragma once

#include "demo/Stage.h"

namespace orvanlite::demo {

class DemoAppearance;

/// The application started again after two plugins have been installed: the banner names them, one is added to the
/// profiles and the other one left out.
class SecondStart final : public Stage {
public:
    SecondStart(MainWindow& window, DemoAppearance& appearance, const QString& outputFolder);

    /// The names of the two. They must stand on the disk before the window is made.
    static constexpr char16_t kAdded[] = u"Newly Added";
    static constexpr char16_t kLeftOut[] = u"Newly Left Out";

    /// True when every step came out right. `isSavedRight` looks into the profiles' file
    /// afterwards.
    bool run(const std::function<bool()>& isSavedRight);

private:
    /// In light and in dark.
    void pictures(const QString& name);

    DemoAppearance& m_appearance;
};

} // namespace orvanlite::demo
