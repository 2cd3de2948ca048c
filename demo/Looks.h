#pragma once

#include "demo/Stage.h"

namespace orvanlite::platform {
struct Platform;
}

namespace orvanlite::demo {

class DemoAppearance;

/// Leaves a picture of every region of the window, first in light and then in dark.
class Looks final : public Stage {
public:
    /// The pictures of the two are named "light-..." and "dark-...".
    Looks(MainWindow& window, const platform::Platform& platform, DemoAppearance& appearance,
          const QString& outputFolder);

    /// True when every picture could be made.
    bool run();

private:
    void makeHistory();
    void updateBanner();
    void regions(const QString& look);
    void sidebar();
    void dialogs();
    void bulkPane();
    void profiles();
    void smallestWindow();
    void cleanUp();
    void onboarding();
    /// Back to the window as it is after "Reset".
    void leave();
    void open(const QString& section);
    void picture(const QString& name);

    const platform::Platform& m_platform;
    DemoAppearance& m_appearance;
    QString m_look;
};

} // namespace orvanlite::demo
