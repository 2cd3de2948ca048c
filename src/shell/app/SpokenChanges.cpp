#include "shell/app/SpokenChanges.h"

#include "operations/PluginManagerViewModel.h"
#include "records/ActivityLogManager.h"
#include "shell/toolkit/Announce.h"
#include "shell/toolkit/ViewUpdater.h"

#include <QWidget>

#include <algorithm>
#include <utility>

namespace orvanlite {

using namespace Qt::StringLiterals;

SpokenChanges::SpokenChanges(const PluginManagerViewModel& viewModel, const ActivityLogManager& log,
                             QWidget* view)
    : QObject(view)
    , m_viewModel(viewModel)
    , m_log(log)
    , m_view(*view)
    , m_lastEntry(log.entries->empty() ? QUuid() : log.entries->front().id)
    , m_updates(new ViewUpdater([this] { speak(); }, this))
{
    m_updates->watch(viewModel.selectedPlugins, viewModel.consolidatedBulkPlugins, log.entries);
}

void SpokenChanges::speak()
{
    speakActions();
    speakSelection();
}

void SpokenChanges::speakActions()
{
    const std::vector<ActivityLogEntry>& entries = *m_log.entries;
    const QUuid last = std::exchange(m_lastEntry, entries.empty() ? QUuid() : entries.front().id);
    const auto end = std::find_if(entries.begin(), entries.end(),
                                  [&last](const ActivityLogEntry& each) { return each.id == last; });
    for (const ActivityAction action : allCases<ActivityAction>) {
        const auto isMeant = [action](const ActivityLogEntry& each) { return each.action == action; };
        const auto count = std::count_if(entries.begin(), end, isMeant);
        const bool isCut = static_cast<std::size_t>(count) == ActivityLogManager::kMaxEntries;
        if (count == 1)
            announce(&m_view, u"%1, %2"_s.arg(std::find_if(entries.begin(), end, isMeant)->pluginName,
                                              rawValue(action)));
        else if (count > 1)
            announce(&m_view, u"%1, %2 plugins%3"_s.arg(rawValue(action))
                                  .arg(count)
                                  .arg(isCut ? u" or more"_s : QString()));
    }
}

void SpokenChanges::speakSelection()
{
    const qsizetype before = std::exchange(m_selectedCount, m_viewModel.persistedSelections.size());
    if (m_selectedCount != before)
        announce(&m_view, (m_selectedCount > before ? u"selected, "_s : QString()) +
                              u"%1 plugin(s)"_s.arg(m_selectedCount));
}

} // namespace orvanlite
