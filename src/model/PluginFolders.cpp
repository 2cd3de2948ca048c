#include "model/PluginFolders.h"

#include "platform/SystemLayout.h"

namespace orvanlite {

using namespace Qt::StringLiterals;

QStringList pluginFolders(PluginFormat format, const platform::SystemLayout& layout)
{
    if (format == PluginFormat::wavesBundle)
        return {};
    QStringList folders = systemPaths(format, layout);
    folders.append(layout.centralDisabledDirectory() + u'/' + rawValue(format));
    if (format == PluginFormat::aax) {
        folders.append(layout.aaxUnusedDirectory());
        if (const QString ofUser = layout.aaxUnusedDirectoryOfUser(); !ofUser.isEmpty())
            folders.append(ofUser);
    }
    return folders;
}

bool isWavesVersionFolder(QStringView name) { return name.startsWith(u"Plug-Ins V"); }

bool isPluginContainer(const QString& name)
{
    constexpr QStringView shell = u"waveshell";
    // The first comparison is quick, but folds more than letter case.
    return name.startsWith(shell, Qt::CaseInsensitive) && name.first(shell.size()).toLower() == shell;
}

} // namespace orvanlite
