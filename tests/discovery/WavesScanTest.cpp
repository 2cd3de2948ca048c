#include "discovery/WavesScan.h"

#include "model/PluginLocations.h"
#include "support/Fakes.h"

#include <QFile>

#include <gmock/gmock.h>

namespace orvanlite::test {
namespace {

using testing::UnorderedElementsAre;

/// "version name original current", with a "-" in front when disabled; paths below the Waves folder.
std::vector<std::string> scanned(const TempRoot& root)
{
    const platform::FreedesktopFileManager files;
    const QString waves = root.at(u"/Applications/Waves/");
    std::vector<std::string> lines;
    const platform::SystemLayout layout = root.layout();
    for (const AudioPlugin& plugin : scanWavesBundlePlugins(files, PluginLocations(layout))) {
        EXPECT_EQ(plugin.manufacturer, u"Waves Audio"_s);
        EXPECT_EQ(plugin.format, PluginFormat::wavesBundle);
        EXPECT_FALSE(plugin.id.isNull());
        EXPECT_FALSE(plugin.bundleIdentifier || plugin.lastUsed);
        EXPECT_TRUE(plugin.originalPath.startsWith(waves) && plugin.currentPath.startsWith(waves));
        const QString line = (plugin.isEnabled ? u""_s : u"-"_s) + plugin.version.value_or(u"?"_s) + u' ' +
                             plugin.name + u' ' + plugin.originalPath.sliced(waves.size()) + u' ' +
                             plugin.currentPath.sliced(waves.size());
        lines.push_back(line.toStdString());
    }
    return lines;
}

TEST(WavesScanTest, FindsBundlesOneLevelBelowVersionFolders)
{
    TempRoot root;
    EXPECT_TRUE(scanned(root).empty());
    const auto add = [&](const QString& path) { root.addBundle(u"/Applications/Waves/"_s + path); };
    add(u"Plug-Ins V14/Foo.bundle"_s);
    add(u"Plug-Ins V15/Disabled/Foo.bundle"_s);
    root.addFile(u"/Applications/Waves/Plug-Ins V14/File.bundle");
    root.addBundle(u"/Applications/Waves/Plug-Ins V14/WaveShell A.B.bundle",
                   infoPlist({{u"CFBundleIdentifier"_s, u"com.other.x"_s}}), true);
    root.addFile(u"/Applications/Waves/Plug-Ins V14/Disabled/Off.bundle");
    QFile::link(u"nowhere"_s, root.at(u"/Applications/Waves/Plug-Ins V14/Dangling.bundle"));
    // Neither a file nor a link to a folder is a version folder.
    root.addFile(u"/Applications/Waves/Plug-Ins V9");
    root.addFile(u"/Applications/Waves/Plug-Ins V16/Disabled", "a file");
    root.addFile(u"/elsewhere/Far.bundle");
    QFile::link(root.at(u"/elsewhere"), root.at(u"/Applications/Waves/Plug-Ins V"));
    QFile::link(root.at(u"/nowhere"), root.at(u"/Applications/Waves/Plug-Ins V1"));
    for (const QString& ignored :
         {u"Plug-Ins V14/Sub/Nested.bundle"_s, u"Plug-Ins V14/Disabled/Sub/Nested.bundle"_s,
          u"Plug-Ins V14/Foo.bundle/Inner.bundle"_s, u"Plug-Ins V14/Upper.BUNDLE"_s,
          u"Plug-Ins V14/.bundle"_s, u"Plug-Ins V14/.Hidden.bundle"_s, u"Plug-Ins V14/Foo.component"_s,
          u"Plug-Ins/Foo.bundle"_s, u"plug-ins V14/Foo.bundle"_s, u"Data/Foo.bundle"_s, u"Foo.bundle"_s})
        add(ignored);
    EXPECT_THAT(scanned(root),
                UnorderedElementsAre(
                    "V14 Foo Plug-Ins V14/Foo.bundle Plug-Ins V14/Foo.bundle",
                    "V14 File Plug-Ins V14/File.bundle Plug-Ins V14/File.bundle",
                    "V14 WaveShell A.B Plug-Ins V14/WaveShell A.B.bundle Plug-Ins V14/WaveShell A.B.bundle",
                    "V14 Dangling Plug-Ins V14/Dangling.bundle Plug-Ins V14/Dangling.bundle",
                    "-V14 Off Plug-Ins V14/Off.bundle Plug-Ins V14/Disabled/Off.bundle",
                    "-V15 Foo Plug-Ins V15/Foo.bundle Plug-Ins V15/Disabled/Foo.bundle"));
}

} // namespace
} // namespace orvanlite::test
