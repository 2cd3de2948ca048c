#include "OperationsFixture.h"

namespace orvanlite::test {

namespace {

const QString kVst3 = u"/Library/Audio/Plug-Ins/VST3/"_s;

} // namespace

class DeletePluginsTest : public OperationsTest {
protected:
    /// Three bundles, all of them picked, and a fourth.
    void arrange(const QStringList& names)
    {
        for (const QString& name : names)
            m_root.addBundle(kVst3 + name + u".vst3"_s, "x");
        scan();
        model().clearSelection();
        for (const AudioPlugin& each : rows(names))
            model().collectSelection({each.id});
        model().refreshFromDatabase();
        m_system.scripts.sources.clear();
        m_log.clear();
    }
    void remove(AudioPlugins plugins) { runTask(model().deletePlugins(std::move(plugins))); }
};

TEST_F(DeletePluginsTest, TakesFilesRowsAndSelection)
{
    m_root.addBundle(u"/Library/Audio/Plug-Ins/Disabled/VST3/Off.vst3");
    m_root.addBundle(u"/Applications/Waves/Plug-Ins V14/Disabled/Wave.bundle");
    m_root.addFolder(u"/Applications/Waves/WaveShells V14/Waves AU Reg Utility.app");
    arrange({u"Gone"_s, u"Kept"_s, u"Missing"_s});
    model().collectSelection({row(u"Off"_s).id, row(u"Wave"_s).id});
    model().refreshFromDatabase();
    m_root.addFile(kVst3 + u"Off.vst3"_s, "came back meanwhile");
    m_system.files.remove(m_root.at(kVst3 + u"Missing.vst3"_s));
    const QUuid kept = row(u"Kept"_s).id;
    int changes = 0;
    m_log.entries.observe(&model(), [&] { ++changes; });

    remove(rows({u"Off"_s, u"Gone"_s, u"Wave"_s, u"Missing"_s}));
    EXPECT_FALSE(model().error->has_value()) << "a missing file is no failure";
    EXPECT_EQ(
        m_system.scripts.sources,
        QStringList{u"do shell script \"rm -rf '%1/Library/Audio/Plug-Ins/Disabled/VST3/Off.vst3' && rm -rf "
                    "'%1/Library/Audio/Plug-Ins/VST3/Gone.vst3' && rm -rf "
                    "'%1/Applications/Waves/Plug-Ins V14/Disabled/Wave.bundle' && rm -rf "
                    "'%1/Library/Audio/Plug-Ins/VST3/Missing.vst3'\" with administrator privileges"_s.arg(
                        m_root.path())});
    EXPECT_EQ(m_root.names(u"/Library/Audio/Plug-Ins/Disabled/VST3"), QStringList());
    EXPECT_EQ(m_root.names(kVst3), (QStringList{u"Kept.vst3"_s, u"Off.vst3"_s}))
        << "not where it would belong";
    EXPECT_EQ(m_root.names(u"/Applications/Waves/Plug-Ins V14/Disabled"), QStringList());
    EXPECT_EQ(states(), QStringList{u"Kept Enabled"_s});
    EXPECT_EQ(model().plugins->size(), 1U);
    EXPECT_EQ(model().persistedSelections, QSet<QUuid>{kept});
    EXPECT_EQ(*model().selectedPlugins, QSet<QUuid>{kept});
    EXPECT_EQ(model().cachedPluginKeysTransfer->keys, QStringList{u"Kept|VST3"_s});
    EXPECT_EQ(logged(),
              (QStringList{u"Deleted Off"_s, u"Deleted Gone"_s, u"Deleted Wave"_s, u"Deleted Missing"_s}));
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(model().consolidatedBulkPlugins->size(), 5U) << "the pane keeps what it showed";
    EXPECT_TRUE(m_system.processes.starts.empty());
    EXPECT_TRUE(m_progress.calls.isEmpty());
}

TEST_F(DeletePluginsTest, KeepsRowsAndSelectionWhenItFails)
{
    const QByteArray secondFails = "[ $n = 2 ] && { echo busy >&2; exit 1; }\nexec /bin/rm \"$@\"\n";
    const struct {
        const char* title;
        QString names; ///< between commas
        std::function<void()> arrange;
        QString left; ///< on disk
        PluginError::Kind kind;
        QString payloadPart;
    } cases[] = {
        {"cancelled prompt", u"A,B,C"_s, [this] { m_system.scripts.failNext(u"User canceled."_s); },
         u"A,B,C"_s, PluginError::Kind::permissionDenied,
         u"NSAppleScriptErrorMessage = \"User canceled.\";"_s},
        {"no answer at all", u"A,B,C"_s, [this] { m_system.scripts.answerNext({}); }, u"A,B,C"_s,
         PluginError::Kind::unknownError, u"Failed to delete plugins"_s},
        {"an apostrophe does not compile", u"A,It's"_s, [] {}, u"A,It's"_s,
         PluginError::Kind::permissionDenied, u"-2741"_s},
        {"the second fails", u"A,B,C"_s, [&] { standIn(u"rm"_s, secondFails); }, u"B,C"_s,
         PluginError::Kind::permissionDenied, u"busy"_s},
    };
    for (const auto& each : cases) {
        SCOPED_TRACE(each.title);
        const QStringList names = each.names.split(u',');
        arrange(names);
        each.arrange();
        const QStringList before = states();
        const QSet<QUuid> persisted = model().persistedSelections;
        const QSet<QUuid> marked = *model().selectedPlugins;
        const int posts = countPosts();
        remove(rows(names));
        ASSERT_TRUE(model().error->has_value());
        EXPECT_EQ((*model().error)->kind(), each.kind);
        EXPECT_TRUE((*model().error)->payload().contains(each.payloadPart))
            << qPrintable((*model().error)->payload());
        EXPECT_EQ(states(), before);
        EXPECT_EQ(model().persistedSelections, persisted);
        EXPECT_EQ(*model().selectedPlugins, marked);
        EXPECT_EQ(countPosts(), posts);
        EXPECT_TRUE(m_log.entries->empty());
        scan();
        QStringList left;
        for (const AudioPlugin& plugin : *model().plugins)
            left.append(plugin.name);
        EXPECT_EQ(left.join(u','), each.left) << "the next scan brings the rows in line";
        m_system.files.remove(m_root.at(u"/Library/Audio/Plug-Ins/VST3"));
    }
}

TEST_F(DeletePluginsTest, AsksForNothingToDeleteToo)
{
    arrange({u"A"_s});
    remove({});
    EXPECT_EQ(m_system.scripts.sources, QStringList{u"do shell script \"\" with administrator privileges"_s});
    EXPECT_FALSE(model().error->has_value());
    EXPECT_EQ(states(), QStringList{u"A Enabled"_s});
    EXPECT_TRUE(m_log.entries->empty());
}

} // namespace orvanlite::test
