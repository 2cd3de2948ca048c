#include "records/ActivityLogManager.h"

#include "model/Uuid.h"
#include "platform/Clock.h"
#include "platform/FileManager.h"
#include "platform/Platform.h"

namespace orvanlite {

using namespace Qt::StringLiterals;

namespace {

/// Bytes. Far more than our log ever needs; a larger file is not ours.
constexpr qint64 kLargestFile = 64 * 1024 * 1024;

} // namespace

ActivityLogManager& ActivityLogManager::shared(const platform::Platform& platform)
{
    static auto* const log = new ActivityLogManager(platform);
    return *log;
}

ActivityLogManager::ActivityLogManager(const platform::Platform& platform)
    : m_platform(platform)
{
    entries = load();
}

void ActivityLogManager::log(const QString& plugin, const QString& format, ActivityAction action)
{
    logBatch({{plugin, format}}, action);
}

void ActivityLogManager::logBatch(const std::vector<LoggedPlugin>& plugins, ActivityAction action)
{
    const Date now = Date::fromUnix(m_platform.clock.now());
    entries.mutate([&](std::vector<ActivityLogEntry>& list) {
        std::vector<ActivityLogEntry> added;
        added.reserve(plugins.size());
        for (const LoggedPlugin& plugin : plugins)
            added.push_back({makeUuid(), now, plugin.name, plugin.format, action});
        list.insert(list.begin(), std::move_iterator(added.begin()), std::move_iterator(added.end()));
        if (list.size() > kMaxEntries)
            list.resize(kMaxEntries);
    });
    save();
}

void ActivityLogManager::clear()
{
    entries.set({});
    save();
}

QString ActivityLogManager::saveUrl() const
{
    if (m_platform.layout.applicationSupport.isEmpty())
        qFatal("no application support folder");
    const QString folder = m_platform.layout.applicationFolder();
    try {
        m_platform.files.createDirectory(folder);
    } catch (const platform::FileError&) {
        // Writing the file fails too, which save() ignores.
    }
    return folder + u"/activity_log.json"_s;
}

std::vector<ActivityLogEntry> ActivityLogManager::load() const
{
    const auto content = m_platform.files.read(saveUrl(), kLargestFile);
    return content ? decodeActivityLog(*content) : std::vector<ActivityLogEntry>();
}

void ActivityLogManager::save() const
{
    try {
        // On purpose in place: users may have linked the file from elsewhere.
        m_platform.files.write(saveUrl(), encodeActivityLog(*entries), platform::WriteMode::inPlace);
    } catch (const platform::FileError&) {
        // The entries in memory stay; the next change tries again.
    }
}

} // namespace orvanlite
