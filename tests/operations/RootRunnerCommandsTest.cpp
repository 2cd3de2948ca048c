#include "operations/ShellCommands.h"

#include "HostileTree.h"
#include "model/PluginLocations.h"
#include "platform/AdministratorScript.h"
#include "platform/SystemLayout.h"
#include "platform/freedesktop/root-runner/Commands.h"
#include "platform/freedesktop/root-runner/PluginPaths.h"

#include <gtest/gtest.h>

namespace orvanlite::test {

using namespace Qt::StringLiterals;
using namespace root_runner;

TEST(RootRunnerCommandsTest, EveryTextIsRead)
{
    const auto at = [](const QString& folder, const QString& name) { return folder + u'/' + name; };
    std::vector<BatchItem> items;
    AudioPlugins plugins;
    Removal removal;
    Batch batch{{}, "/run/it's/progress.txt"};
    const QStringList names = hostileNames();
    for (const QString& name : names) {
        SCOPED_TRACE(qPrintable(name));
        const QString source = at(u"/Library/Audio"_s, name);
        const QString destination = at(u"/Library/O'Neil"_s, name);
        const Move move{source.toStdString(), destination.toStdString(), true};
        for (const bool flushes : {false, true}) {
            for (const bool makesFolder : {false, true}) {
                const QString text =
                    moveCommand(source, destination,
                                makesFolder ? ParentFolder::create : ParentFolder::mustExist) +
                    (flushes ? audioUnitCacheFlush({}) : QString());
                const SingleMove wanted{{move.source, move.destination, makesFolder}, flushes};
                EXPECT_EQ(parseCommand(text.toStdString()), Command(wanted));
            }
        }
        items.push_back({{}, source, destination});
        batch.moves.push_back(move);
        plugins.emplace_back().currentPath = source;
        removal.paths.push_back(move.source);
    }
    EXPECT_EQ(parseBatch(batchScript(items, u"/run/it's/progress.txt"_s).toStdString()), batch);
    EXPECT_EQ(parseCommand(deletionCommand(plugins).toStdString()), Command(removal));
    EXPECT_EQ(parseCommand(deletionCommand({}).toStdString()), Command(Removal()));
    EXPECT_EQ(parseBatch(batchScript({}, u"/x"_s).toStdString()), Batch{});
    const auto call = platform::parseAdministratorScript(batchAppleScript(u"/run/batch.sh"_s));
    ASSERT_TRUE(std::holds_alternative<QString>(call));
    EXPECT_EQ(parseCommand(std::get<QString>(call).toStdString()), Command(ScriptCall{"/run/batch.sh"}));
}

TEST(RootRunnerCommandsTest, EveryFolderIsTaken)
{
    const auto layout = platform::SystemLayout::sandbox(u"/sandbox"_s);
    const PluginLocations locations(layout);
    const PluginPaths paths({layout.root.toStdString(), layout.home.toStdString(), {}});
    for (const PluginFormat format : allCases<PluginFormat>) {
        QStringList folders = locations.searchFolders(format);
        if (format == PluginFormat::wavesBundle)
            folders.append(locations.wavesFolder() + u"/Plug-Ins V14"_s);
        AudioPlugin plugin;
        plugin.format = format;
        plugin.originalPath = folders.constFirst() + u"/x"_s;
        folders.append(locations.disabledFolder(plugin));
        for (const QString& folder : folders) {
            SCOPED_TRACE(qPrintable(folder));
            EXPECT_TRUE(paths.holds((folder + u"/x"_s).toStdString()));
            EXPECT_FALSE(paths.holds(folder.toStdString()));
        }
    }
}

} // namespace orvanlite::test
