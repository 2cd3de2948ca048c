#include "discovery/PluginScanner.h"

#include "support/Fakes.h"

#include <QFile>

#include <gmock/gmock.h>

#include <unistd.h>

#include <cerrno>

namespace orvanlite::test {
namespace {

using testing::HasSubstr;
using testing::StartsWith;
using testing::UnorderedElementsAre;

const QString kDisabled = u"/Library/Audio/Plug-Ins/Disabled/"_s;

class PluginScannerTest : public testing::Test {
protected:
    AudioPlugins scan()
    {
        PluginScanner scanner(system.platform);
        runTask(scanner.scanAllPlugins());
        return *scanner.discoveredPlugins;
    }

    /// "name format current", and " <- original" where it belongs elsewhere; "-" in front when disabled.
    std::vector<std::string> lines()
    {
        std::vector<std::string> found;
        for (const AudioPlugin& plugin : scan()) {
            QString line = (plugin.isEnabled ? u""_s : u"-"_s) + plugin.name + u' ' +
                           rawValue(plugin.format) + u' ' + plugin.currentPath.sliced(root.path().size());
            if (plugin.originalPath != plugin.currentPath)
                line += u" <- "_s + plugin.originalPath.sliced(root.path().size());
            line.replace(u"/Library/Application Support/Avid/Audio/Plug-Ins"_s, u"AVID"_s);
            found.push_back(line.replace(u"/Library/Audio/Plug-Ins"_s, u"PLUGINS"_s).toStdString());
        }
        return found;
    }

    TestPlatform system;
    TempRoot& root = system.root;
};

TEST_F(PluginScannerTest, FindsPluginsByFolderAndExtension)
{
    const QString unused = u"/Library/Application Support/Avid/Audio/Plug-Ins (Unused)/"_s;
    for (const QString& bundle : {
             u"/Library/Audio/Plug-Ins/Components/Unit.component"_s,
             u"/Library/Audio/Plug-Ins/Components/Wrong.vst3"_s,
             u"/Library/Audio/Plug-Ins/VST3/A/B/C/Deep.vst3"_s,
             u"/Library/Audio/Plug-Ins/VST3/Outer.vst3/Contents/Inner.vst3"_s,
             u"/Library/Audio/Plug-Ins/VST3/Folder.VST3/In Upper.vst3"_s,
             u"/Library/Audio/Plug-Ins/VST3/.Hidden.vst3"_s,
             u"/Library/Audio/Plug-Ins/VST3/WaveShell-X.vst3"_s,
             u"/Library/Audio/Plug-Ins/Components/waveshell-y.component"_s,
             u"/Library/Audio/Plug-Ins/VST3/Not a WaveShell.vst3"_s,
             u"/Users/tester/Library/Audio/Plug-Ins/CLAP/Two.Dots.clap"_s,
             u"/Users/tester/Library/Application Support/Avid/Audio/Plug-Ins/Mine.aaxplugin"_s,
             kDisabled + u"VST3/Acme/Off.vst3"_s,
             kDisabled + u"VST/Lost.vst3"_s,
             kDisabled + u"Waves/Lost.bundle"_s,
             kDisabled + u"AAX/Away.aaxplugin"_s,
             u"/Library/Audio/Plug-Ins/VST3/Plug-Ins (Unused)/Marked.vst3"_s,
             kDisabled + u"VST3/Plug-Ins (Unused)/Both.vst3"_s,
             unused + u"Acme/Old.aaxplugin"_s,
             u"/Users/tester"_s + unused + u"Older.aaxplugin"_s,
             u"/Applications/Waves/Plug-Ins V14/Wave.bundle"_s,
         })
        root.addBundle(bundle);
    root.addFile(u"/Library/Audio/Plug-Ins/VST/Plain.vst");
    root.addFile(u"/Library/Audio/Plug-Ins/VST/Plain.txt");
    EXPECT_THAT(
        lines(),
        UnorderedElementsAre(
            "Unit Audio Units PLUGINS/Components/Unit.component", "Deep VST3 PLUGINS/VST3/A/B/C/Deep.vst3",
            "Outer VST3 PLUGINS/VST3/Outer.vst3", "In Upper VST3 PLUGINS/VST3/Folder.VST3/In Upper.vst3",
            "Not a WaveShell VST3 PLUGINS/VST3/Not a WaveShell.vst3", "Plain VST PLUGINS/VST/Plain.vst",
            "Two.Dots CLAP /Users/testerPLUGINS/CLAP/Two.Dots.clap",
            "Mine AAX /Users/testerAVID/Mine.aaxplugin",
            "-Off VST3 PLUGINS/Disabled/VST3/Acme/Off.vst3 <- PLUGINS/VST3/Off.vst3",
            "-Marked VST3 PLUGINS/VST3/Plug-Ins (Unused)/Marked.vst3 <- AVID/Marked.vst3",
            "-Both VST3 PLUGINS/Disabled/VST3/Plug-Ins (Unused)/Both.vst3 <- PLUGINS/VST3/Both.vst3",
            "-Away AAX PLUGINS/Disabled/AAX/Away.aaxplugin <- AVID/Away.aaxplugin",
            "-Old AAX AVID (Unused)/Acme/Old.aaxplugin <- AVID/Old.aaxplugin",
            "-Older AAX /Users/testerAVID (Unused)/Older.aaxplugin <- AVID/Older.aaxplugin",
            "Wave Waves /Applications/Waves/Plug-Ins V14/Wave.bundle"));
}

TEST_F(PluginScannerTest, SortsByNameAndKeepsTheOrderOfDiscovery)
{
    const QStringList discovered{u"/Library/Audio/Plug-Ins/Components/B.component"_s,
                                 u"/Library/Audio/Plug-Ins/VST3/B.vst3"_s,
                                 u"/Users/tester/Library/Audio/Plug-Ins/VST3/B.vst3"_s,
                                 kDisabled + u"VST3/B.vst3"_s,
                                 u"/Library/Audio/Plug-Ins/CLAP/B.clap"_s,
                                 u"/Applications/Waves/Plug-Ins V1/B.bundle"_s};
    const QStringList byCodePoints{u"/Library/Audio/Plug-Ins/VST3/a.vst3"_s,
                                   u"/Library/Audio/Plug-Ins/VST3/\u00E9.vst3"_s};
    for (const QString& each : byCodePoints + discovered)
        root.addBundle(each);
    for (int i = 0; i < 40; ++i) {
        root.addBundle(u"/Library/Audio/Plug-Ins/CLAP/%1/Same.clap"_s.arg(i));
        root.addBundle(u"/Library/Audio/Plug-Ins/Components/%1/Same.component"_s.arg(i));
    }
    AudioPlugins plugins = scan();
    const auto isSame = [](const AudioPlugin& each) { return each.name == u"Same"; };
    const auto many = std::find_if(plugins.begin(), plugins.end(), isSame);
    EXPECT_TRUE(std::is_sorted(
        many, many + 80, [](const auto& left, const auto& right) { return left.format < right.format; }));
    plugins.erase(many, many + 80);
    QStringList found;
    for (const AudioPlugin& plugin : plugins)
        found.append(plugin.currentPath.sliced(root.path().size()));
    EXPECT_EQ(found, discovered + byCodePoints);
}

TEST_F(PluginScannerTest, ReadsBundlesAndCorrectsManufacturers)
{
    root.addBundle(
        u"/Library/Audio/Plug-Ins/VST3/Foo.vst3",
        infoPlist({{u"CFBundleIdentifier"_s, u"com.synth.x"_s}, {u"CFBundleShortVersionString"_s, u"2"_s}}),
        true);
    root.addBundle(u"/Library/Audio/Plug-Ins/Components/foo.component",
                   infoPlist({{u"CFBundleIdentifier"_s, u"com.izotope.x"_s}}));
    const AudioPlugins plugins = scan();
    ASSERT_EQ(plugins.size(), 2U);
    EXPECT_EQ(plugins[0].manufacturer, u"iZotope"_s);
    EXPECT_EQ(plugins[0].bundleIdentifier, u"com.synth.x"_s);
    EXPECT_EQ(plugins[0].version, u"2"_s);
    EXPECT_TRUE(plugins[0].lastUsed.has_value());
    EXPECT_EQ(plugins[1].lastUsed, std::nullopt);
    EXPECT_NE(scan()[0].id, plugins[0].id);
}

TEST_F(PluginScannerTest, FollowsLinksButNotToNowhere)
{
    const auto link = [&](const QString& to, const QString& at) {
        ASSERT_TRUE(QFile::link(to, root.at(u"/Library/Audio/Plug-Ins/VST3/"_s + at)));
    };
    root.addBundle(u"/elsewhere/Real.vst3");
    root.addFolder(u"/Library/Audio/Plug-Ins/VST3");
    link(root.at(u"/elsewhere/Real.vst3"), u"Linked.vst3"_s);
    link(root.at(u"/elsewhere"), u"Vendor"_s);
    link(root.at(u"/nowhere"), u"Dangling.vst3"_s);
    link(u"Self.vst3"_s, u"Self.vst3"_s);
    EXPECT_THAT(lines(), UnorderedElementsAre("Linked VST3 PLUGINS/VST3/Linked.vst3",
                                              "Real VST3 PLUGINS/VST3/Vendor/Real.vst3"));
    link(u"."_s, u"Ring"_s);
    const auto found = scan().size(); // the system stops following after some tens of links
    EXPECT_GT(found, 2U);
    EXPECT_EQ(found % 2, 0U);
}

TEST_F(PluginScannerTest, OddNamesDisturbNoOther)
{
    const QStringList odd{u"new\nline"_s, u"qu\"o'te"_s, u"A|B"_s, u"  blanks "_s,  u"e\u0301"_s, u"\u00E9"_s,
                          u"100%1$s"_s,   u"a\\b"_s,     u"-x"_s,  u"\U0001F3B9"_s, u"\uFEFF-x"_s};
    for (const QString& name : odd)
        root.addBundle(u"/Library/Audio/Plug-Ins/VST3/"_s + name + u".vst3"_s,
                       infoPlist({{u"CFBundleShortVersionString"_s, name}}), true);
    const QByteArray folder = root.at(u"/Library/Audio/Plug-Ins/VST3/").toUtf8();
    const int made = ::mkdir((folder + "bad\xFF.vst3").constData(), 0755);
    if (made != 0 && errno == EILSEQ)
        GTEST_SKIP() << "this file system takes no such names, and both forms of é for one";
    ASSERT_EQ(made | ::mkdir((folder + "vendor\xFF").constData(), 0755), 0);
    AudioPlugins plugins;
    const std::string output = printedBy([&] { plugins = scan(); });
    ::rmdir((folder + "bad\xFF.vst3").constData());
    ::rmdir((folder + "vendor\xFF").constData());
    system.files.remove(QString::fromUtf8(folder) + u"\uFEFF-x.vst3"_s); // the root's own removal misses it
    EXPECT_THAT(output,
                StartsWith("❌ Error scanning directory " + (folder + "vendor\uFFFD: ").toStdString()));
    QSet<QString> found;
    for (const AudioPlugin& plugin : plugins) {
        found.insert(plugin.name);
        EXPECT_EQ(plugin.version, plugin.lastUsed ? std::optional(plugin.name) : std::nullopt);
        EXPECT_TRUE(plugin.currentPath.endsWith(u'/' + plugin.name + u".vst3"_s));
    }
    EXPECT_EQ(found, QSet<QString>(odd.begin(), odd.end()) + QSet<QString>{u"bad\uFFFD"_s});
}

TEST_F(PluginScannerTest, CreatesAndHidesTheFoldersOfDisabledPlugins)
{
    for (const mode_t mask : {0077, 0}) { // as root creates them, whose umask may be any
        const mode_t old = ::umask(mask);
        EXPECT_EQ(printedBy([&] { PluginScanner scanner(system.platform); }), "");
        ::umask(old);
        for (const auto& [path, mode] : {std::pair(kDisabled, 0755U),
                                         {kDisabled + u"CLAP"_s, 0755U},
                                         {u"/Library/Audio/Plug-Ins/.hidden"_s, 0644U}}) {
            EXPECT_EQ(statusOf(root.at(path)).st_mode & 0777, mode) << qPrintable(path);
        }
        if (mask != 0)
            system.files.remove(root.at(u"/Library"));
    }
    EXPECT_EQ(root.names(kDisabled),
              QStringList({u"AAX"_s, u"Audio Units"_s, u"CLAP"_s, u"VST"_s, u"VST3"_s, u"Waves"_s}));
    EXPECT_TRUE(root.content(u"/Library/Audio/Plug-Ins/.hidden").contains("Disabled\n"));
    PluginScanner scanner(system.platform);
    root.addFile(u"/Library/Audio/Plug-Ins/.hidden");
    runTask(scanner.scanAllPlugins());
    EXPECT_TRUE(root.content(u"/Library/Audio/Plug-Ins/.hidden").contains("Disabled\n"));
}

TEST_F(PluginScannerTest, PrintsWhatItCouldNotCreateOrHide)
{
    const auto create = [&] { PluginScanner scanner(system.platform); };
    root.addFolder(u"/Library/Audio/Plug-Ins/.hidden/a folder in the file's place");
    EXPECT_THAT(printedBy(create), StartsWith("Error creating central disabled directory: "));
    EXPECT_TRUE(root.exists(kDisabled + u"CLAP"_s));
    EXPECT_THAT(printedBy(create), StartsWith("Error setting hidden attribute: "));
    QFile::rename(root.at(u"/Library"), root.at(u"/Elsewhere"));
    root.addFile(u"/Library", "a file in the folder's place");
    EXPECT_THAT(printedBy([&] { EXPECT_TRUE(scan().empty()); }), HasSubstr("central disabled directory"));
}

TEST_F(PluginScannerTest, PublishesItsStateInOrder)
{
    root.addBundle(u"/Library/Audio/Plug-Ins/CLAP/Foo.clap");
    PluginScanner scanner(system.platform);
    QObject context;
    QStringList steps;
    scanner.isScanning.observe(&context, [&] { steps << (*scanner.isScanning ? u"begin"_s : u"end"_s); });
    scanner.scanProgress.observe(&context, [&] { steps << QString::number(*scanner.scanProgress * 6); });
    scanner.scanError.observe(&context, [&] { steps << (*scanner.scanError ? u"error"_s : u"no error"_s); });
    scanner.discoveredPlugins.observe(
        &context, [&] { steps << u"plugins %1"_s.arg(scanner.discoveredPlugins->size()); });
    runTask(scanner.scanAllPlugins());
    EXPECT_EQ(steps.join(u", "), u"begin, 0, plugins 0, no error, 1, 2, 3, 4, 5, 6, plugins 1, end, 6"_s);
}

} // namespace
} // namespace orvanlite::test
