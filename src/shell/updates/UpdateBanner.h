#pragma once

#include <functional>

class QWidget;

namespace orvanlite::platform {
struct Platform;
}

namespace orvanlite {

class Banner;
class UpdateChecker;

/// The banner shown while an update is available. "Download" opens the download URL in the browser and calls
/// `quit` half a second later, so that the new version does not start while this one is running; an invalid
/// URL is ignored. Dismissing hides it until the next check that finds an update.
[[nodiscard]] Banner* makeUpdateBanner(UpdateChecker& checker, const platform::Platform& platform,
                                       std::function<void()> quit, QWidget* parent);

} // namespace orvanlite
