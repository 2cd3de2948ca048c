#include "uad/UADCleanupManager.h"

#include "catalogue/PluginDatabase.h"
#include "model/Console.h"
#include "operations/Detach.h"
#include "operations/PluginManagerViewModel.h"
#include "platform/Clock.h"
#include "platform/FileManager.h"
#include "platform/Platform.h"
#include "platform/ScriptRunner.h"
#include "uad/UADPluginMatcher.h"
#include "uad/UADProfile.h"
#include "uad/UADScripts.h"

#include <QTimer>

#include <algorithm>

namespace orvanlite {

using namespace Qt::StringLiterals;

namespace {

using State = UADPluginAuth::UADAuthState;

constexpr int kLargestCatalogue = 9999;

AudioPlugins catalogueOf(const PluginDatabase& database)
{
    return database.queryPlugins({}, "name"_L1, true, kLargestCatalogue, 0);
}

bool isUADPlugin(const AudioPlugin& plugin)
{
    return plugin.name.startsWith(u"UAD "_s) || plugin.manufacturer.toLower().contains(u"universal audio"_s);
}

bool hasUADPlugins(const AudioPlugins& catalogue)
{
    return std::any_of(catalogue.begin(), catalogue.end(), isUADPlugin);
}

/// All files that match the names, each once, in catalogue order.
AudioPlugins targetsOf(const QSet<QString>& names, const AudioPlugins& catalogue)
{
    const UADPluginMatcher matcher(catalogue);
    std::vector<std::size_t> rows;
    for (const QString& name : names) {
        const std::vector<std::size_t> matched = matcher.matches(name);
        rows.insert(rows.end(), matched.begin(), matched.end());
    }
    std::sort(rows.begin(), rows.end());
    rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
    AudioPlugins targets;
    for (const std::size_t row : rows)
        targets.push_back(catalogue[row]);
    return targets;
}

QString noTargetsMessage(const AudioPlugins& catalogue)
{
    if (hasUADPlugins(catalogue))
        return u"The selected plugins are already disabled or could not be matched to installed files."_s;
    // The folder's usual path, even when the layout has another root.
    return u"No UAD plugins found on this system. Make sure UAD software is installed and plugins are present in "_s +
           platform::SystemLayout().audioPlugInsDirectory() + u'.';
}

} // namespace

UADCleanupManager& UADCleanupManager::shared(const platform::Platform& platform, PluginDatabase& database)
{
    static auto* const manager = new UADCleanupManager(platform, database);
    return *manager;
}

UADCleanupManager::UADCleanupManager(const platform::Platform& platform, PluginDatabase& database,
                                     QObject* parent)
    : QObject(parent)
    , m_platform(platform)
    , m_database(database)
{}

UADPluginAuths UADCleanupManager::demosOf(State state) const
{
    UADPluginAuths found;
    std::copy_if(demoPlugins->begin(), demoPlugins->end(), std::back_inserter(found),
                 [state](const UADPluginAuth& each) { return each.status.state == state; });
    return found;
}

UADPluginAuths UADCleanupManager::expiredPlugins() const { return demosOf(State::expired); }

UADPluginAuths UADCleanupManager::activeDemoPlugins() const { return demosOf(State::demo); }

UADPluginAuths UADCleanupManager::notStartedPlugins() const { return demosOf(State::demoNotStarted); }

int UADCleanupManager::alreadyDisabledCount() const
{
    return static_cast<int>(std::count_if(demoPlugins->begin(), demoPlugins->end(),
                                          [](const UADPluginAuth& each) { return each.isAlreadyDisabled; }));
}

int UADCleanupManager::selectedCount() const
{
    return static_cast<int>(std::count_if(demoPlugins->begin(), demoPlugins->end(),
                                          [](const UADPluginAuth& each) { return each.isSelected; }));
}

void UADCleanupManager::startCleanup()
{
    ++m_run;
    showCleanupSheet = true;
    isLoading = true;
    errorMessage = std::nullopt;
    demoPlugins.clear();
    authorizedPlugins.clear();
    cleanupComplete = false;
    disabledCount = 0;
    detach(scanAndExport());
}

QCoro::Task<> UADCleanupManager::scanAndExport()
{
    const QPointer<UADCleanupManager> self(this);
    const int run = m_run;
    if (pluginManager)
        co_await pluginManager->scanForPlugins();
    if (self && run == m_run)
        co_await exportAndParseProfile();
}

QCoro::Task<> UADCleanupManager::exportAndParseProfile()
{
    const QPointer<UADCleanupManager> self(this);
    const int run = m_run;
    const std::optional<QString> profile = co_await triggerProfileExport();
    if (!self || run != m_run)
        co_return;
    if (profile)
        parseProfile(*profile);
    isLoading = false;
}

QCoro::Task<std::optional<QString>> UADCleanupManager::triggerProfileExport()
{
    const QPointer<UADCleanupManager> self(this);
    const int run = m_run;
    if (!m_platform.files.exists(m_platform.layout.uadControlPanel())) {
        errorMessage = u"UAD Meter & Control Panel not found. Please install UAD software first."_s;
        co_return std::nullopt;
    }
    removeStaleProfile();
    platform::ScriptRunner& scripts = m_platform.scripts;
    platform::Clock& clock = m_platform.clock;
    const platform::ScriptOutcome opened =
        co_await scripts.execute(kOpenInformationScript.toString(), nullptr);
    if (opened.error && !opened.error->isEmpty())
        printLine(u"AppleScript error opening UAD: "_s + platform::description(*opened.error));
    // Success is decided by whether a file appears, not by the outcome of the scripts.
    co_await scripts.execute(kSaveProfileScript.toString(), nullptr);
    co_await clock.sleepFor(std::chrono::seconds(1));
    if (!self || run != m_run)
        co_return std::nullopt;
    std::optional<QString> profile = findProfile();
    if (!profile) {
        errorMessage = u"Please save the UAD System Profile manually:\n\n"
                       "1. In the UAD Control Panel, press ⌘I\n"
                       "2. Click \"Save Detailed System Profile\" at the bottom-left\n"
                       "3. Save to your Desktop\n"
                       "4. Then try again"_s;
    }
    co_return profile;
}

void UADCleanupManager::removeStaleProfile() const
{
    if (m_platform.layout.desktop.isEmpty())
        return;
    try {
        // An old file must not be mistaken for the new one.
        m_platform.files.remove(m_platform.layout.desktop + u'/' + profileFilename.toString());
    } catch (const platform::FileError&) {
        // Usually there is none; one that cannot be removed is read as if it were new.
    }
}

std::optional<QString> UADCleanupManager::findProfile() const
{
    const platform::SystemLayout& layout = m_platform.layout;
    for (const QString& directory : {layout.desktop, layout.downloads, layout.documents}) {
        if (directory.isEmpty())
            continue;
        if (auto profile = findProfileFile(m_platform.files, directory))
            return profile;
    }
    return std::nullopt;
}

void UADCleanupManager::retryWithExistingProfile()
{
    isLoading = true;
    errorMessage = std::nullopt;
    // In the next event loop iteration, so that the sheet can show that it is busy.
    const auto parse = [this, run = ++m_run] {
        if (run == m_run)
            parseExistingProfile();
    };
    QTimer::singleShot(0, this, parse);
}

void UADCleanupManager::parseExistingProfile()
{
    if (const std::optional<QString> profile = findProfile()) {
        parseProfile(*profile);
    } else {
        errorMessage = u"No UADSystemProfile.txt found. Please export it from the UAD Control Panel "
                       "(⌘I → Save Detailed System Profile) and save it to your Desktop."_s;
    }
    isLoading = false;
}

void UADCleanupManager::parseProfile(const QString& path)
{
    const auto fail = [this](const QString& reason) {
        errorMessage = u"Failed to read UAD System Profile: "_s + reason;
    };
    try {
        parseAndCrossReference(readProfile(m_platform.files, path));
    } catch (const platform::FileError& failure) {
        fail(failure.message);
    } catch (const std::exception& failure) {
        fail(QString::fromUtf8(failure.what())); // e.g. out of memory: the sheet must not stay busy forever
    }
}

void UADCleanupManager::parseAndCrossReference(const QString& text)
{
    UADPluginAuths demos;
    UADPluginAuths authorized;
    for (UADPluginAuth& each : parsePluginAuthorizations(text))
        (each.status.state == State::authorized ? authorized : demos).push_back(std::move(each));

    const AudioPlugins catalogue = catalogueOf(m_database);
    const UADPluginMatcher matcher(catalogue);
    for (UADPluginAuth& demo : demos) {
        const std::vector<std::size_t> matched = matcher.matches(demo.name);
        const bool isOff = std::none_of(matched.begin(), matched.end(),
                                        [&](std::size_t row) { return catalogue[row].isEnabled; });
        demo.isAlreadyDisabled = isOff && !matched.empty();
        demo.isSelected = !demo.isAlreadyDisabled;
    }
    demoPlugins = std::move(demos);
    authorizedPlugins = std::move(authorized);
    if (demoPlugins->empty())
        errorMessage = u"All your UAD plugins are authorized! Nothing to clean up."_s;
    else if (alreadyDisabledCount() == static_cast<int>(demoPlugins->size()))
        errorMessage = u"All demo plugins are already disabled. Nothing new to clean up."_s;
}

void UADCleanupManager::toggleSelection(const QUuid& id)
{
    demoPlugins.mutate([&id](UADPluginAuths& demos) {
        const auto found = std::find_if(demos.begin(), demos.end(),
                                        [&id](const UADPluginAuth& each) { return each.id == id; });
        if (found != demos.end())
            found->isSelected = !found->isSelected;
    });
}

void UADCleanupManager::selectAll()
{
    demoPlugins.mutate([](UADPluginAuths& demos) {
        for (UADPluginAuth& each : demos)
            each.isSelected = each.isSelected || !each.isAlreadyDisabled;
    });
}

void UADCleanupManager::deselectAll()
{
    demoPlugins.mutate([](UADPluginAuths& demos) {
        for (UADPluginAuth& each : demos)
            each.isSelected = false;
    });
}

void UADCleanupManager::selectExpiredOnly()
{
    demoPlugins.mutate([](UADPluginAuths& demos) {
        for (UADPluginAuth& each : demos)
            each.isSelected = each.status.state == State::expired && !each.isAlreadyDisabled;
    });
}

QCoro::Task<> UADCleanupManager::disableSelectedUADDemos()
{
    const QPointer<UADCleanupManager> self(this);
    const int run = ++m_run;
    QSet<QString> names;
    for (const UADPluginAuth& each : *demoPlugins) {
        if (each.isSelected)
            names.insert(each.name);
    }
    isLoading = true;
    AudioPlugins catalogue = catalogueOf(m_database);
    if (!hasUADPlugins(catalogue) && pluginManager) {
        co_await pluginManager->scanForPlugins();
        if (!self || run != m_run)
            co_return;
        catalogue = catalogueOf(m_database);
    }
    const AudioPlugins targets = targetsOf(names, catalogue);
    if (targets.empty()) {
        isLoading = false;
        errorMessage = noTargetsMessage(catalogue);
        co_return;
    }
    AudioPlugins toDisable;
    std::copy_if(targets.begin(), targets.end(), std::back_inserter(toDisable),
                 [](const AudioPlugin& each) { return each.isEnabled; });
    if (!toDisable.empty()) {
        if (pluginManager)
            co_await pluginManager->toggleMultiplePlugins(std::move(toDisable));
        if (!self || run != m_run)
            co_return;
        if (!pluginManager) { // the window has been closed
            isLoading = false;
            co_return;
        }
    }
    isLoading = false;
    disabledCount = static_cast<int>(targets.size());
    cleanupComplete = true;
}

} // namespace orvanlite
