#pragma once

#include "demo/Stage.h"

namespace orvanlite::platform {
struct Platform;
}

namespace orvanlite::demo {

class DemoAppearance;

/// Saves a screenshot of every region of the window, first in light and then in dark mode.
class Looks final : public Stage {
public:
    /// File names start with "light-" and "dark-".
    Looks(MainWindow& window, const platform::Platform& platform, DemoAppearance& appearance,
          const QString& outputFolder);

    /// True when every step succeeded.
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
    /// Closes dialogs and resets the window.
    void leave();
    void open(const QString& section);
    void picture(const QString& name);

    const platform::Platform& m_platform;
    DemoAppearance& m_appearance;
    QString m_look;
};

} // namespace orvanlite::demo
