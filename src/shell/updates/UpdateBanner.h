#pragma once

#include <functional>

class QWidget;

namespace orvanlite::platform {
struct Platform;
}

namespace orvanlite {

class Banner;
class UpdateChecker;

/// The banner of a newer version, there while one is available. "Download" opens its place with the user's browser
/// and calls `quit` half a second later, so that the new version does not meet a running one; a text that is no URL
/// does nothing. Dismissed, it stays away for this run.
[[nodiscard]] Banner* makeUpdateBanner(UpdateChecker& checker, const platform::Platform& platform,
                                       std::function<void()> quit, QWidget* parent);

} // namespace orvanlite
