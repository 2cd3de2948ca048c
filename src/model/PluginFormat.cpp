#include "model/PluginFormat.h"

#include "platform/SystemLayout.h"

namespace orvanlite {

namespace {

struct FormatRow {
    QStringView folder;
    QStringView extension;
};

const FormatRow& row(PluginFormat format)
{
    static constexpr std::array<FormatRow, 6> rows{{
        {u"/Library/Audio/Plug-Ins/Components", u"component"},
        {u"/Library/Audio/Plug-Ins/VST3", u"vst3"},
        {u"/Library/Audio/Plug-Ins/VST", u"vst"},
        {u"/Library/Application Support/Avid/Audio/Plug-Ins", u"aaxplugin"},
        {u"/Library/Audio/Plug-Ins/CLAP", u"clap"},
        {u"", u"bundle"},
    }};
    return rows[static_cast<std::size_t>(format)];
}

} // namespace

QStringList systemPaths(PluginFormat format, const platform::SystemLayout& layout)
{
    const QStringView folder = row(format).folder;
    if (folder.isEmpty())
        return {};
    QStringList paths{layout.system(folder)};
    if (const QString ofUser = layout.inHome(folder); !ofUser.isEmpty())
        paths.append(ofUser);
    return paths;
}

QStringView bundleExtension(PluginFormat format) { return row(format).extension; }

} // namespace orvanlite
