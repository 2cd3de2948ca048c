#pragma once

#include "demo/Stage.h"

namespace orvanlite::platform {
struct Platform;
}

namespace orvanlite::demo {

class DemoAppearance;

/// Saves a screenshot of every region of the window, first in light and then in dark mode; of some also with
/// higher contrast, and after the appearance and the font have changed.
class Looks final : public Stage {
public:
    /// File names start with "light-" and "dark-".
    Looks(MainWindow& window, const platform::Platform& platform, DemoAppearance& appearance,
          const QString& outputFolder, bool isMac);

    /// True when every step succeeded.
    bool run();

private:
    void setDark(bool isDark);
    void makeHistory();
    void updateBanner();
    void regions();
    void sidebar();
    void dialogs();
    void bulkPane();
    void profiles();
    void smallestWindow();
    void cleanUp();
    void onboarding();
    void changesUnderQuestion();
    void highContrast();
    /// Closes dialogs and resets the window.
    void leave();
    void open(const QString& section);
    void picture(const QString& name);

    const platform::Platform& m_platform;
    DemoAppearance& m_appearance;
    bool m_isMac;
    QString m_look;
};

} // namespace orvanlite::demo
