#include "shell/updates/UpdateBanner.h"

#include "operations/Detach.h"
#include "platform/Clock.h"
#include "platform/Platform.h"
#include "platform/Workspace.h"
#include "shell/toolkit/AppTheme.h"
#include "shell/toolkit/Banner.h"
#include "shell/toolkit/ViewUpdater.h"
#include "shell/updates/UpdateChecker.h"

#include <QPointer>

#include <chrono>
#include <utility>

namespace orvanlite {

using namespace Qt::StringLiterals;

namespace {

constexpr std::chrono::milliseconds kBeforeQuitting{500};

QColor tint(const QPalette& /*palette*/) { return AppTheme::accentPink(); }

QCoro::Task<> quitLater(platform::Clock* clock, QPointer<Banner> banner, std::function<void()> quit)
{
    co_await clock->sleepFor(kBeforeQuitting);
    if (banner)
        quit();
}

} // namespace

Banner* makeUpdateBanner(UpdateChecker& checker, const platform::Platform& platform,
                         std::function<void()> quit, QWidget* parent)
{
    const Banner::Look look{u"updateBanner"_s, u"arrow.down.circle.fill"_s, u"Download"_s, u"Dismiss"_s,
                            &tint};
    auto* banner = new Banner(look, parent);
    const auto render = [&checker, banner] {
        // Keeps the texts while sliding out.
        if (*checker.updateAvailable)
            banner->setTexts(u"Update Available — v"_s + *checker.latestVersion, *checker.updateReleaseNotes);
        banner->setShown(*checker.updateAvailable);
    };
    auto* updates = new ViewUpdater(render, banner);
    updates->watch(checker.updateAvailable, checker.latestVersion, checker.updateReleaseNotes);
    updates->schedule();
    QObject::connect(banner, &Banner::actionClicked, banner,
                     [&checker, &platform, banner, quit = std::move(quit), isQuitting = false]() mutable {
                         const QUrl url(*checker.updateDownloadURL, QUrl::StrictMode);
                         if (!url.isValid() || url.scheme().isEmpty() || isQuitting)
                             return;
                         isQuitting = true;
                         platform.workspace.open(url);
                         detach(quitLater(&platform.clock, banner, quit));
                     });
    QObject::connect(banner, &Banner::dismissClicked, banner,
                     [&checker] { checker.updateAvailable = false; });
    return banner;
}

} // namespace orvanlite
