#include "OperationsFixture.h"

namespace orvanlite::test {

class BulkPaneTest : public OperationsTest {
protected:
    QUuid add(const QString& name, PluginFormat format, const QString& version = {}, bool isEnabled = true)
    {
        AudioPlugin plugin;
        plugin.id = QUuid(++m_lastId, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0); // ascending
        plugin.name = name;
        plugin.format = format;
        plugin.originalPath = plugin.currentPath = u"/Library/"_s + name;
        plugin.isEnabled = isEnabled;
        if (!version.isEmpty())
            plugin.version = version;
        m_rows.push_back(plugin);
        m_database.replaceAllPlugins(m_rows);
        return plugin.id;
    }
    void select(const QSet<QUuid>& ids) { model().collectSelection(ids); }
    /// "{name}: {badge}, {badge}", with inactive variants in brackets.
    [[nodiscard]] QStringList pane()
    {
        QStringList groups;
        for (const ConsolidatedPlugin& group : *model().consolidatedBulkPlugins) {
            QStringList badges;
            for (const FormatVariant& variant : group.variants) {
                const bool isActive = model().bulkActiveVariants->contains(variant.id);
                badges.append(isActive ? variant.badgeLabel() : u'[' + variant.badgeLabel() + u']');
            }
            groups.append(group.name + u": "_s + badges.join(u", "_s));
        }
        return groups;
    }
    [[nodiscard]] QStringList actedOn()
    {
        QStringList names;
        for (const AudioPlugin& each : model().bulkActionPlugins())
            names.append(each.name + u' ' + rawValue(each.format));
        return names;
    }
    QSet<QUuid> allIds() { return m_database.getAllFilteredPluginIds({}); }

    AudioPlugins m_rows;
    uint m_lastId = 0;
};

TEST_F(BulkPaneTest, GroupsTheSelectionByName)
{
    add(u"reverb"_s, PluginFormat::clap);
    add(u"Zoom"_s, PluginFormat::wavesBundle, u"V9"_s);
    add(u"Zoom"_s, PluginFormat::wavesBundle, u"V14"_s);
    add(u"Zoom"_s, PluginFormat::wavesBundle);
    add(u"Reverb"_s, PluginFormat::vst3, u"2.0"_s);
    add(u"Reverb"_s, PluginFormat::au);
    add(u"alpha"_s, PluginFormat::vst2);
    add(u"Beta"_s, PluginFormat::aax);
    const QUuid outside = add(u"Not selected"_s, PluginFormat::vst3);
    select(allIds().subtract({outside}));
    select({makeUuid()}); // from an earlier scan
    EXPECT_EQ(pane(), (QStringList{u"alpha: VST"_s, u"Beta: AAX"_s, u"reverb: CLAP"_s,
                                   u"Reverb: Audio Units, VST3"_s, u"Zoom: V14, V9, Waves"_s}));
    EXPECT_EQ(model().selectedFormatsInBulk(),
              (std::vector{PluginFormat::aax, PluginFormat::au, PluginFormat::clap, PluginFormat::vst2,
                           PluginFormat::vst3, PluginFormat::wavesBundle}));
    EXPECT_EQ(actedOn(),
              (QStringList{u"alpha VST"_s, u"Beta AAX"_s, u"reverb CLAP"_s, u"Reverb VST3"_s,
                           u"Reverb Audio Units"_s, u"Zoom Waves"_s, u"Zoom Waves"_s, u"Zoom Waves"_s}));
}

TEST_F(BulkPaneTest, SwitchesFormatsUntilTheSelectionGrows)
{
    using enum PluginFormat;
    const QUuid first = add(u"A"_s, vst3);
    select({first, add(u"B"_s, vst3), add(u"B"_s, au)});
    EXPECT_TRUE(model().isFormatFullyActive(vst3) && !model().isFormatPartiallyActive(vst3));
    EXPECT_FALSE(model().isFormatFullyActive(aax) || model().isFormatPartiallyActive(aax));
    model().toggleBulkVariant(first);
    EXPECT_TRUE(model().isFormatPartiallyActive(vst3) && !model().isFormatFullyActive(vst3));
    model().toggleBulkFormat(vst3);
    EXPECT_EQ(pane(), (QStringList{u"A: VST3"_s, u"B: Audio Units, VST3"_s}));
    model().toggleBulkFormat(vst3);
    EXPECT_EQ(pane(), (QStringList{u"A: [VST3]"_s, u"B: Audio Units, [VST3]"_s}));
    EXPECT_EQ(actedOn(), QStringList{u"B Audio Units"_s});
    select({add(u"C"_s, clap)});
    EXPECT_EQ(pane(), (QStringList{u"A: VST3"_s, u"B: Audio Units, VST3"_s, u"C: CLAP"_s}));
}

TEST_F(BulkPaneTest, ShowsTheStatesOfItsLastRebuildAndActsOnCurrentOnes)
{
    const QUuid waves = add(u"W"_s, PluginFormat::wavesBundle, u"V14"_s);
    select({add(u"A"_s, PluginFormat::vst3), waves});
    EXPECT_TRUE(model().selectionContainsWavesBundleToDisable());
    m_system.scripts.answerNext({QString(), std::nullopt});
    runTask(model().toggleMultiplePlugins(model().bulkActionPlugins()));
    for (const ConsolidatedPlugin& group : *model().consolidatedBulkPlugins)
        EXPECT_TRUE(group.variants.at(0).isEnabled) << qPrintable(group.name);
    for (const AudioPlugin& each : model().bulkActionPlugins())
        EXPECT_FALSE(each.isEnabled) << qPrintable(each.name);
    EXPECT_FALSE(model().selectionContainsWavesBundleToDisable()) << "it is disabled already";
    model().refreshBulkPane();
    EXPECT_FALSE(model().consolidatedBulkPlugins->front().variants.at(0).isEnabled);
    model().toggleBulkVariant(waves);
    EXPECT_FALSE(model().selectionContainsWavesBundleToDisable());
}

TEST_F(BulkPaneTest, InvertsTheFilterAndNotTheSelection)
{
    add(u"One"_s, PluginFormat::vst3);
    const QUuid two = add(u"Two"_s, PluginFormat::vst3);
    add(u"Three"_s, PluginFormat::clap);
    add(u"Four"_s, PluginFormat::au);
    const std::tuple<QString, QSet<PluginFormat>, QStringList> cases[] = {
        {u"o"_s, {}, {u"Three: CLAP"_s}},
        {u"o"_s, {PluginFormat::vst3}, {u"Four: Audio Units"_s, u"Three: CLAP"_s}},
        {{}, {}, {}},
    };
    for (const auto& [search, formats, wanted] : cases) {
        model().searchText = search;
        model().selectedFormats = formats;
        model().selectedPlugins = QSet<QUuid>{two};
        select({two});
        model().invertSelection();
        EXPECT_EQ(pane(), wanted);
        EXPECT_TRUE(model().selectedPlugins->isEmpty());
        EXPECT_EQ(model().cachedPluginKeysTransfer->keys.size(), wanted.size());
    }
}

TEST_F(BulkPaneTest, RemovesNamesFromTheSelection)
{
    const QUuid shell = add(u"Waveshell-VST3 9"_s, PluginFormat::wavesBundle);
    const QUuid inside = add(u"My WAVESHELL copy"_s, PluginFormat::clap);
    const QUuid longS = add(u"Wave\u017Fhell"_s, PluginFormat::clap); // not an ASCII "s"
    const QUuid foo = add(u"Foo"_s, PluginFormat::vst3);
    add(u"Foo"_s, PluginFormat::au);
    const QUuid lower = add(u"foo"_s, PluginFormat::au);
    select(allIds());
    model().refreshFromDatabase();
    model().toggleBulkVariant(foo);
    model().deselectPluginsByName(u"Not there"_s);
    EXPECT_EQ(model().persistedSelections.size(), 6);
    EXPECT_TRUE(model().bulkActiveVariants->contains(foo)) << "the pane is rebuilt all the same";

    model().removeWavesPluginsFromSelection();
    EXPECT_EQ(model().persistedSelections, allIds().subtract({shell, inside}));
    EXPECT_EQ(*model().selectedPlugins, model().persistedSelections);
    EXPECT_EQ(model().cachedPluginKeysTransfer->keys.size(), 4);

    model().deselectPluginsByName(u"Foo"_s);
    EXPECT_EQ(model().persistedSelections, (QSet<QUuid>{longS, lower}));
    EXPECT_EQ(*model().selectedPlugins, model().persistedSelections);
    EXPECT_EQ(pane(), (QStringList{u"foo: Audio Units"_s, u"Wave\u017Fhell: CLAP"_s}));
    model().clearSelection();
    EXPECT_TRUE(model().selectedPlugins->isEmpty() && model().cachedPluginKeysTransfer->keys.isEmpty());
    EXPECT_EQ(pane(), QStringList());
}

} // namespace orvanlite::test
