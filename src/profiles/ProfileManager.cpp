#include "profiles/ProfileManager.h"

#include "model/Uuid.h"
#include "platform/Clock.h"
#include "platform/FileManager.h"
#include "platform/Platform.h"

#include <algorithm>
#include <cerrno>

namespace orvanlite {

using namespace Qt::StringLiterals;

namespace {

/// Bytes. Far more than any library needs: thirty profiles of 20,000 plugins are 50 MB.
constexpr qint64 kLargestFile = 1024 * 1024 * 1024;

QSet<QString> keysOf(const AudioPlugins& plugins)
{
    QSet<QString> keys;
    keys.reserve(static_cast<qsizetype>(plugins.size()));
    for (const AudioPlugin& plugin : plugins)
        keys.insert(pluginKey(plugin));
    return keys;
}

AudioPlugins enabledOf(const AudioPlugins& plugins)
{
    AudioPlugins enabled;
    std::copy_if(plugins.begin(), plugins.end(), std::back_inserter(enabled),
                 [](const AudioPlugin& plugin) { return plugin.isEnabled; });
    return enabled;
}

void setState(PluginProfile& profile, const AudioPlugins& on, const AudioPlugins& all)
{
    profile.enabledPlugins = keysOf(on);
    profile.allPluginKeys = keysOf(all);
    profile.totalPluginCount = std::ssize(all);
}

/// Reason for a failed read; read() itself only returns nullopt.
platform::FileError readError(const platform::FileManager& files, const QString& path)
{
    const auto status = files.status(path);
    if (!status)
        return {ENOENT, path};
    if (status->isDirectory)
        return {EISDIR, path};
    return {status->size > kLargestFile ? EFBIG : EACCES, path};
}

bool isSpaceOrTab(QChar character)
{
    return character == u'\t' || character.category() == QChar::Separator_Space;
}

} // namespace

ProfileManager::ProfileManager(const platform::Platform& platform)
    : m_platform(platform)
{
    if (m_platform.layout.applicationSupport.isEmpty())
        qFatal("no application support folder");
    const QString folder = m_platform.layout.applicationFolder();
    m_profilesPath = folder + u"/profiles.json"_s;
    m_pendingPluginsPath = folder + u"/pending_new_plugins.json"_s;
    try {
        m_platform.files.createDirectory(folder);
    } catch (const platform::FileError&) {
        // The reads and writes below fail too and leave the values in memory unchanged.
    }
    try {
        if (const auto content = m_platform.files.read(m_profilesPath, kLargestFile))
            profiles = decodeProfiles(*content);
    } catch (const std::exception&) {
        // Start without profiles; the next change replaces the file.
    }
    try {
        if (const auto content = m_platform.files.read(m_pendingPluginsPath, kLargestFile))
            pendingNewPluginKeys = decodePluginKeys(*content);
    } catch (const std::exception&) {
        // Start without pending plugins.
    }
}

void ProfileManager::append(const QString& name, const AudioPlugins& on, const AudioPlugins& all)
{
    PluginProfile profile;
    profile.id = makeUuid();
    profile.name = name;
    profile.createdAt = Date::fromUnix(m_platform.clock.now());
    setState(profile, on, all);
    profiles.mutate([&profile](PluginProfiles& list) { list.push_back(std::move(profile)); });
    saveProfiles();
}

void ProfileManager::saveProfile(const QString& name, const AudioPlugins& plugins)
{
    append(name, enabledOf(plugins), plugins);
}

void ProfileManager::saveProfileFromSelection(const QString& name, const AudioPlugins& selectedPlugins,
                                              const AudioPlugins& allPlugins)
{
    append(name, selectedPlugins, allPlugins);
}

void ProfileManager::updateProfile(const PluginProfile& profile, const AudioPlugins& plugins)
{
    const auto found = std::find_if(profiles->begin(), profiles->end(),
                                    [&profile](const PluginProfile& each) { return each.id == profile.id; });
    if (found == profiles->end())
        return;
    const auto index = static_cast<std::size_t>(found - profiles->begin());
    PluginProfile updated = profile;
    setState(updated, enabledOf(plugins), plugins);
    profiles.mutate([&](PluginProfiles& list) { list[index] = std::move(updated); });
    saveProfiles();
}

void ProfileManager::deleteProfile(const PluginProfile& profile)
{
    // Copies the id: `profile` may be the list element that is removed.
    profiles.mutate([id = profile.id](PluginProfiles& list) {
        std::erase_if(list, [&id](const PluginProfile& each) { return each.id == id; });
    });
    saveProfiles();
}

void ProfileManager::importProfile(const QString& path)
{
    const auto content = m_platform.files.read(path, kLargestFile);
    if (!content)
        throw readError(m_platform.files, path);
    PluginProfile profile = decodeProfile(*content);
    profile.id = makeUuid();
    profiles.mutate([&profile](PluginProfiles& list) { list.push_back(std::move(profile)); });
    saveProfiles();
}

ProfileChanges ProfileManager::computeChanges(const PluginProfile& profile,
                                              const AudioPlugins& currentPlugins)
{
    ProfileChanges changes;
    for (const AudioPlugin& plugin : currentPlugins) {
        const bool shouldBeOn = profile.enabledPlugins.contains(pluginKey(plugin));
        if (shouldBeOn != plugin.isEnabled)
            (shouldBeOn ? changes.toEnable : changes.toDisable).push_back(plugin);
    }
    return changes;
}

void ProfileManager::setPendingNewPlugins(const AudioPlugins& plugins)
{
    pendingNewPluginKeys = keysOf(plugins);
    write(m_pendingPluginsPath, encodePluginKeys(*pendingNewPluginKeys));
}

void ProfileManager::clearPendingNewPlugins()
{
    pendingNewPluginKeys.clear();
    try {
        m_platform.files.remove(m_pendingPluginsPath);
    } catch (const platform::FileError&) {
        // Usually there was no file.
    }
}

AudioPlugins ProfileManager::pendingNewPluginsFrom(const AudioPlugins& plugins) const
{
    AudioPlugins pending;
    if (pendingNewPluginKeys->isEmpty())
        return pending;
    for (const AudioPlugin& plugin : plugins) {
        if (pendingNewPluginKeys->contains(pluginKey(plugin)))
            pending.push_back(plugin);
    }
    return pending;
}

void ProfileManager::addPluginsToProfiles(const AudioPlugins& plugins, const QSet<QUuid>& ids, bool asEnabled)
{
    const QSet<QString> keys = keysOf(plugins);
    profiles.mutate([&](PluginProfiles& list) {
        for (PluginProfile& profile : list) {
            if (!ids.contains(profile.id))
                continue;
            // On purpose: plugins that the profile already knows are counted again.
            profile.totalPluginCount += std::ssize(plugins);
            profile.allPluginKeys.unite(keys);
            if (asEnabled)
                profile.enabledPlugins.unite(keys);
        }
    });
    saveProfiles();
}

void ProfileManager::dismissNewPlugins(const AudioPlugins& plugins)
{
    const QSet<QString> keys = keysOf(plugins);
    profiles.mutate([&keys](PluginProfiles& list) {
        for (PluginProfile& profile : list)
            profile.allPluginKeys.unite(keys);
    });
    saveProfiles();
}

QSet<QUuid> ProfileManager::profileIds() const
{
    QSet<QUuid> ids;
    for (const PluginProfile& profile : *profiles)
        ids.insert(profile.id);
    return ids;
}

void ProfileManager::saveProfiles() const { write(m_profilesPath, encodeProfiles(*profiles)); }

void ProfileManager::write(const QString& path, const QByteArray& content) const
{
    try {
        // On purpose in place: users may have linked the file from elsewhere.
        m_platform.files.write(path, content, platform::WriteMode::inPlace);
    } catch (const platform::FileError&) {
        // The values in memory stay; the next change tries again.
    }
}

QString profileStatusText(qsizetype changes)
{
    if (changes < 1)
        return u"Up to date"_s;
    return u"%1 change%2 to apply"_s.arg(QString::number(changes), changes == 1 ? QString() : u"s"_s);
}

QString applyQuestion(const QString& name, const ProfileChanges& changes)
{
    // No arg(): the name may contain a placeholder.
    return u"Applying \""_s + name + u"\" will enable "_s + QString::number(changes.toEnable.size()) +
           u" and disable "_s + QString::number(changes.toDisable.size()) + u" plugins."_s;
}

QString trimmedProfileName(const QString& entered)
{
    qsizetype begin = 0;
    qsizetype end = entered.size();
    while (begin < end && isSpaceOrTab(entered[begin]))
        ++begin;
    while (end > begin && isSpaceOrTab(entered[end - 1]))
        --end;
    return entered.mid(begin, end - begin);
}

} // namespace orvanlite
