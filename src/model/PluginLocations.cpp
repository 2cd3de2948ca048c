#include "model/PluginLocations.h"

#include "platform/Path.h"
#include "platform/SystemLayout.h"

namespace orvanlite {

using namespace Qt::StringLiterals;
using platform::join;

namespace {

struct FormatRow {
    QStringView folder; ///< relative to the root and to the user's home folder
    QStringView extension;
};

const FormatRow& row(PluginFormat format)
{
    static constexpr std::array<FormatRow, allCases<PluginFormat>.size()> rows{{
        {u"/Library/Audio/Plug-Ins/Components", u"component"},
        {u"/Library/Audio/Plug-Ins/VST3", u"vst3"},
        {u"/Library/Audio/Plug-Ins/VST", u"vst"},
        {u"/Library/Application Support/Avid/Audio/Plug-Ins", u"aaxplugin"},
        {u"/Library/Audio/Plug-Ins/CLAP", u"clap"},
        {u"", u"bundle"},
    }};
    static_assert(!rows.back().extension.empty(), "each format has its row");
    return rows[static_cast<std::size_t>(format)];
}

constexpr QStringView kUnused = u"Plug-Ins (Unused)"; // the AAX hosts' folder for disabled plugins
constexpr QStringView kVersionFolder = u"Plug-Ins V";

} // namespace

PluginLocations::PluginLocations(const platform::SystemLayout& layout)
    : m_layout(layout)
    , m_centralDisabledDirectory(layout.centralDisabledDirectory())
    , m_wavesFolder(layout.wavesDirectory())
{}

QStringList PluginLocations::systemPaths(PluginFormat format) const
{
    const QStringView folder = row(format).folder;
    if (folder.isEmpty())
        return {};
    QStringList paths{m_layout.system(folder)};
    if (const QString ofUser = m_layout.inHome(folder); !ofUser.isEmpty())
        paths.append(ofUser);
    return paths;
}

QStringList PluginLocations::searchFolders(PluginFormat format) const
{
    if (format == PluginFormat::wavesBundle)
        return {};
    QStringList folders = systemPaths(format);
    folders.append(centralDisabledDirectory(format));
    if (format == PluginFormat::aax) {
        folders.append(m_layout.aaxUnusedDirectory());
        if (const QString ofUser = m_layout.aaxUnusedDirectoryOfUser(); !ofUser.isEmpty())
            folders.append(ofUser);
    }
    return folders;
}

QString PluginLocations::centralDisabledDirectory(PluginFormat format) const
{
    return join(m_centralDisabledDirectory, rawValue(format));
}

QString PluginLocations::disabledFolder(const AudioPlugin& plugin) const
{
    if (plugin.format == PluginFormat::aax)
        return m_layout.aaxUnusedDirectory();
    if (plugin.format == PluginFormat::wavesBundle)
        return wavesDisabledFolder(platform::parentFolder(plugin.originalPath));
    return centralDisabledDirectory(plugin.format);
}

bool PluginLocations::isDisabled(const QString& path) const
{
    return path.contains(m_centralDisabledDirectory) || path.contains(kUnused);
}

QString PluginLocations::originalPath(const QString& path, PluginFormat format) const
{
    // On purpose: a disabled plugin returns to the top of the system folder, even if it came from elsewhere.
    if (path.contains(m_centralDisabledDirectory))
        return join(systemPaths(format).constFirst(), platform::fileName(path));
    if (path.contains(kUnused))
        return join(m_layout.aaxDirectory(), platform::fileName(path));
    return path;
}

bool PluginLocations::isWavesVersionFolder(QStringView name) { return name.startsWith(kVersionFolder); }

bool PluginLocations::isWavesShellsFolder(QStringView name) { return name.startsWith(u"WaveShells V"); }

QString PluginLocations::wavesVersion(const QString& name) { return name.sliced(kVersionFolder.size() - 1); }

QString PluginLocations::wavesDisabledFolder(const QString& versionFolder)
{
    return join(versionFolder, u"Disabled"_s);
}

QStringView PluginLocations::bundleExtension(PluginFormat format) { return row(format).extension; }

bool PluginLocations::isPluginOf(PluginFormat format, QStringView fileName)
{
    return platform::extension(fileName) == bundleExtension(format);
}

bool PluginLocations::isContainer(const QString& name)
{
    constexpr QStringView kShell = u"waveshell";
    // The first comparison is fast but uses full case folding; the second one is exact.
    return name.startsWith(kShell, Qt::CaseInsensitive) && name.first(kShell.size()).toLower() == kShell;
}

} // namespace orvanlite
