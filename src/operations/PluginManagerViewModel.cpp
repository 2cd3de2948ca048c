#include "operations/PluginManagerViewModel.h"

#include "model/Console.h"
#include "operations/Detach.h"
#include "operations/OperationErrors.h"
#include "operations/PluginMover.h"
#include "platform/Clock.h"
#include "platform/Defaults.h"
#include "platform/NotificationCenter.h"
#include "platform/Platform.h"

#include <QPointer>

#include <chrono>

namespace orvanlite {

using namespace Qt::StringLiterals;

namespace {

constexpr int kAllRows = 100'000;
constexpr std::chrono::milliseconds kTypingDelay{50};

} // namespace

PluginManagerViewModel::PluginManagerViewModel(const platform::Platform& platform, PluginDatabase& database,
                                               ActivityLogManager& activityLog, QObject* parent)
    : QObject(parent)
    , BulkSelection(database, this)
    , ProfilePreview(static_cast<CatalogueRows&>(*this), this)
    , m_mover(std::make_shared<PluginMover>(platform))
    , isRunningScript(m_mover->isRunningScript)
    , workStatus(m_mover->workStatus)
    , m_platform(platform)
    , m_database(database)
    , m_activityLog(activityLog)
    , m_scanner(platform)
{
    const auto reload = [this] { refreshFromDatabase(); };
    selectedFormats.observe(this, reload);
    selectedManufacturers.observe(this, reload);
    activeFavoritesList.observe(this, reload);
    // On purpose: every change has its own delayed reload, and none is cancelled by a later one.
    searchText.observe(this, [this] { detach(reloadAfterTyping()); });
    sortOrder.observe(this, [this] { sortChanged(); });
    refreshFromDatabase();
}

QCoro::Task<> PluginManagerViewModel::reloadAfterTyping()
{
    const QPointer<PluginManagerViewModel> self(this);
    co_await m_platform.clock.sleepFor(kTypingDelay);
    if (self)
        refreshFromDatabase();
}

QCoro::Task<> PluginManagerViewModel::scanForPlugins()
{
    const QPointer<PluginManagerViewModel> self(this);
    isLoading = true;
    error = std::nullopt;
    if (!workStatus->isBusy()) // a script may be running
        workStatus = WorkStatus{};
    std::optional<PluginError> failure;
    try {
        const QSet<QString> existingKeys = m_database.getAllPluginKeys();
        co_await m_scanner.scanAllPlugins();
        if (!self)
            co_return;
        plugins = *m_scanner.discoveredPlugins;
        m_database.replaceAllPlugins(*plugins);
        allManufacturers = m_database.getDistinctManufacturers();
        refreshFromDatabase();
        refreshProfileChanges(); // the rows have new ids
        isLoading = false;
        detectNewPlugins(existingKeys);
        failure = *m_scanner.scanError;
    } catch (const std::exception& thrown) {
        failure = toPluginError(thrown); // e.g. out of memory: the window must not stay busy forever
        isLoading = false;
    }
    if (failure) {
        error = failure;
        workStatus = workFailure(*failure);
    }
}

void PluginManagerViewModel::detectNewPlugins(const QSet<QString>& existingKeys)
{
    printLine(u"🔍 Scan debug: existingKeys.count = %1"_s.arg(existingKeys.size()));
    printLine(u"🔍 Scan debug: plugins.count = %1"_s.arg(plugins->size()));
    if (existingKeys.isEmpty()) {
        // The first scan must not report every plugin as new.
        printLine(u"⚠️ Scan debug: existingKeys.isEmpty, skipping new plugin detection"_s);
        return;
    }
    AudioPlugins found;
    for (const AudioPlugin& plugin : *plugins) {
        if (existingKeys.contains(pluginKey(plugin)))
            continue;
        printLine(u"🆕 New plugin detected: "_s + plugin.name + u" ("_s + rawValue(plugin.format) + u')');
        found.push_back(plugin);
    }
    newlyDetectedPlugins = std::move(found);
    printLine(u"🔍 Scan debug: newlyDetectedPlugins.count = %1"_s.arg(newlyDetectedPlugins->size()));
}

PluginFilter PluginManagerViewModel::currentFilter() const
{
    const auto& favorites = *activeFavoritesList;
    return PluginFilter{*searchText, *selectedFormats, *selectedManufacturers,
                        favorites ? favorites->pluginKeys : QSet<QString>()};
}

AudioPlugins PluginManagerViewModel::queryPage(int limit, int offset) const
{
    const SqlSort sort = sqlSortFromComparators(*sortOrder);
    return m_database.queryPlugins(currentFilter(), sort.column, sort.ascending, limit, offset);
}

void PluginManagerViewModel::refreshFromDatabase()
{
    m_currentOffset = 0;
    displayedPlugins = queryPage(pageSize, 0);
    selectLoaded(*displayedPlugins);
    totalPluginCount = m_database.totalCount(currentFilter());
    m_hasMorePages = std::ssize(*displayedPlugins) < *totalPluginCount;
    dbEnabledCount = m_database.countPlugins(true);
    dbDisabledCount = m_database.countPlugins(false);
    dbTotalCount = *dbEnabledCount + *dbDisabledCount;
    publishEnabledCount();
    reportUnsaved();
}

void PluginManagerViewModel::reportUnsaved()
{
    const QString reason =
        m_database.isOutOfSpace() ? u"The list could not be saved: no space left"_s : QString();
    if (*unsavedReason != reason)
        unsavedReason = reason;
}

void PluginManagerViewModel::publishEnabledCount()
{
    if (platform::Defaults* suite = m_platform.defaults.suite(u"com.yourcompany.Orvanlite"_s))
        suite->setValue(u"enabledPluginCount"_s, *dbEnabledCount);
    m_platform.notifications.post(u"com.yourcompany.Orvanlite.pluginCountChanged"_s, {});
}

void PluginManagerViewModel::appendRows(int limit, int offset)
{
    AudioPlugins more = queryPage(limit, offset);
    displayedPlugins.mutate([&more](AudioPlugins& rows) {
        rows.insert(rows.end(), std::make_move_iterator(more.begin()), std::make_move_iterator(more.end()));
    });
}

void PluginManagerViewModel::loadMoreIfNeeded()
{
    if (!m_hasMorePages)
        return;
    m_currentOffset += pageSize;
    appendRows(pageSize, m_currentOffset);
    m_hasMorePages = std::ssize(*displayedPlugins) < *totalPluginCount;
}

void PluginManagerViewModel::loadRows(int count)
{
    const int loaded = m_currentOffset + pageSize;
    const int pages = (count - loaded + pageSize - 1) / pageSize;
    if (!m_hasMorePages || pages <= 0)
        return;
    appendRows(pages * pageSize, loaded);
    m_currentOffset += pages * pageSize;
    m_hasMorePages = std::ssize(*displayedPlugins) < *totalPluginCount;
}

void PluginManagerViewModel::loadAllPages()
{
    if (!m_hasMorePages)
        return;
    appendRows(*totalPluginCount, static_cast<int>(displayedPlugins->size()));
    m_currentOffset = static_cast<int>(displayedPlugins->size());
    m_hasMorePages = false;
}

AudioPlugins PluginManagerViewModel::allFilteredPlugins() const { return queryPage(kAllRows, 0); }

void PluginManagerViewModel::refreshAllState()
{
    plugins = m_database.queryPlugins({}, QLatin1StringView("name"), true, kAllRows, 0);
    allManufacturers = m_database.getDistinctManufacturers();
    const QSet<QString> known(allManufacturers->begin(), allManufacturers->end());
    selectedManufacturers = QSet<QString>(*selectedManufacturers).intersect(known);
    // On purpose reloads again: the assignment above has already reloaded once.
    refreshFromDatabase();
    refreshProfileChanges();
}

std::vector<std::pair<PluginFormat, int>> PluginManagerViewModel::pluginCounts() const
{
    std::vector<std::pair<PluginFormat, int>> counts;
    for (const PluginFormat format : allCases<PluginFormat>) {
        PluginFilter filter;
        filter.formats.insert(format);
        counts.emplace_back(format, m_database.totalCount(filter));
    }
    return counts;
}

// On purpose ignores the earlier selection and the favourites list.
void PluginManagerViewModel::invertSelection() { selectOutside(currentFilter()); }

void PluginManagerViewModel::resetView()
{
    activeProfile.clear();
    clearSelection();
    selectedFormats.clear();
    selectedManufacturers.clear();
    searchText.clear();
    manufacturerSearchText.clear();
    showAllPlugins = false;
    if (!workStatus->isBusy())
        workStatus = WorkStatus{};
    resetViewTrigger = !*resetViewTrigger;
}

} // namespace orvanlite
