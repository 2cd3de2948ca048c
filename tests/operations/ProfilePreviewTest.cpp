#include "OperationsFixture.h"

#include "profiles/ProfileManager.h"

namespace orvanlite::test {

class ProfilePreviewTest : public OperationsTest {
protected:
    /// "Plugin 0000" to "Plugin 0029", every tenth disabled, and a profile of that state.
    ProfilePreviewTest()
    {
        fill(30);
        model().refreshAllState();
        save(u"Mix"_s);
    }
    PluginProfile save(const QString& name)
    {
        EXPECT_TRUE(model().saveProfile(m_manager, name));
        return m_manager.profiles->back();
    }
    /// Toggles the state in the catalogue only.
    void flip(const QStringList& names)
    {
        for (AudioPlugin each : rows(names)) {
            each.isEnabled = !each.isEnabled;
            m_database.updatePlugin(each);
        }
        model().refreshAllState();
    }
    QString shown()
    {
        QString numbers;
        for (const QString& name : shownNames())
            numbers += name.last(2) + u' ';
        return numbers.trimmed();
    }
    /// The cached answer, compared with one that is computed from scratch.
    int changes(const PluginProfile& profile)
    {
        const ProfileChanges wanted = ProfileManager::computeChanges(profile, *model().plugins);
        const int count = model().profileChangeCount(profile);
        EXPECT_EQ(static_cast<std::size_t>(count), wanted.toEnable.size() + wanted.toDisable.size());
        return count;
    }
    [[nodiscard]] const PluginProfile& mix() const { return m_manager.profiles->front(); }

    ProfileManager m_manager{m_system.platform};
};

TEST_F(ProfilePreviewTest, ShowsThePluginsOfTheChosenTab)
{
    flip({u"Plugin 0010"_s, u"Plugin 0001"_s, u"Plugin 0002"_s});
    model().previewProfile(mix());
    model().searchText = u"plugin 000"_s;
    m_system.clock.advance(std::chrono::seconds(1));
    EXPECT_EQ(shown(), u"01 02 10"_s) << "filters do not apply to the changes";
    for (const auto& [filter, wanted] : {std::pair(u"enabled"_s, u"03 04 05 06 07 08 09"_s),
                                         {u"disabled"_s, u"00"_s},
                                         {u"all"_s, u"00 01 02 03 04 05 06 07 08 09"_s}}) {
        model().profileViewFilter = filter;
        EXPECT_EQ(shown(), wanted);
    }
    // The cached rows follow everything they depend on.
    model().profileViewFilter = u"enabled"_s;
    model().sortOrder = PluginSortOrder{{PluginSortKey::name, PluginSortDirection::reverse}};
    EXPECT_EQ(shown().left(5), u"09 08"_s);
    flip({u"Plugin 0009"_s});
    EXPECT_EQ(shown().left(5), u"08 07"_s);
    PluginProfile other = mix();
    other.enabledPlugins.remove(u"Plugin 0008|VST3"_s);
    model().activeProfile = other;
    EXPECT_EQ(shown().left(5), u"07 06"_s);
}

TEST_F(ProfilePreviewTest, AClickStartsReplacesAndEndsThePreview)
{
    const PluginProfile master = save(u" Master "_s);
    EXPECT_EQ(master.name, u"Master"_s);
    model().persistedSelections = {row(u"Plugin 0003"_s).id};
    model().selectedFormats = QSet<PluginFormat>{PluginFormat::clap};
    model().selectedManufacturers = QSet<QString>{u"Odd"_s};
    model().searchText = u"0001"_s;
    model().profileViewFilter = u"enabled"_s;
    model().previewProfile(mix());
    EXPECT_EQ((*model().activeProfile)->id, mix().id);
    EXPECT_EQ(*model().profileViewFilter, u"changes"_s);
    EXPECT_TRUE(*model().showAllPlugins && model().persistedSelections.isEmpty());
    EXPECT_TRUE(model().selectedFormats->isEmpty() && model().selectedManufacturers->isEmpty());
    EXPECT_EQ(*model().searchText, u"0001"_s);
    EXPECT_TRUE(model().cachedProfileChanges->empty()) << "the profile equals the current state";

    model().previewProfile(master);
    EXPECT_EQ((*model().activeProfile)->id, master.id);
    flip({u"Plugin 0007"_s});
    model().profileViewFilter = u"disabled"_s;
    model().previewProfile(master);
    EXPECT_FALSE(model().activeProfile->has_value() || *model().showAllPlugins);
    EXPECT_EQ(model().cachedProfileChanges->size(), 1U) << "stays until the next preview";
}

TEST_F(ProfilePreviewTest, FilterSortAndReloadRefreshTheChanges)
{
    model().previewProfile(mix());
    const auto disableBehind = [&](std::size_t index) {
        model().plugins.mutate([index](AudioPlugins& all) { all[index].isEnabled = false; });
        return model().cachedProfileChanges->size();
    };
    model().profileViewFilter = u"enabled"_s;
    EXPECT_EQ(disableBehind(1), 0U);
    model().profileViewFilter = u"changes"_s;
    EXPECT_EQ(model().cachedProfileChanges->size(), 1U);
    EXPECT_EQ(disableBehind(2), 1U);
    model().sortOrder = PluginSortOrder{};
    EXPECT_EQ(model().cachedProfileChanges->size(), 2U);
    model().refreshAllState();
    EXPECT_EQ(model().cachedProfileChanges->size(), 0U) << "nothing changed in the catalogue";

    QList<int> modes;
    const auto sortBy = [&](PluginSortKey key) {
        model().sortOrder = PluginSortOrder{{key, PluginSortDirection::forward}};
        modes.append(*model().profileSortMode);
    };
    for (int i = 0; i < 3; ++i)
        sortBy(PluginSortKey::statusValue);
    sortBy(PluginSortKey::name);
    model().closeProfilePreview();
    sortBy(PluginSortKey::statusValue);
    EXPECT_EQ(modes, (QList<int>{0, 1, 2, 2, 2}));
}

TEST_F(ProfilePreviewTest, UpdateAndDeletionAffectThePreview)
{
    const PluginProfile master = save(u"Master"_s);
    EXPECT_EQ(changes(mix()), 0);
    model().previewProfile(mix());
    flip({u"Plugin 0001"_s});
    EXPECT_EQ(shown(), u"01"_s);
    PluginProfile other = mix();
    other.enabledPlugins.clear();
    EXPECT_EQ(changes(other), 26) << "same id, other plugins";
    EXPECT_EQ(changes(mix()), 1);
    model().plugins.mutate([](AudioPlugins& all) {
        all.push_back(all[5]);
        all.back().name = u"New"_s;
    });
    EXPECT_EQ(changes(mix()), 2) << "a new plugin is disabled in every profile";
    model().updateProfile(m_manager, master);
    EXPECT_EQ(shown(), u"01"_s) << "the other profile is previewed";
    EXPECT_EQ(changes(m_manager.profiles->back()), 0);
    model().deleteProfile(m_manager, *(*model().activeProfile));
    EXPECT_EQ(shownNames().size(), 30);
}

TEST_F(ProfilePreviewTest, SavesTheSelectionAsAProfileRegardlessOfFilters)
{
    model().persistedSelections = {row(u"Plugin 0000"_s).id, row(u"Plugin 0003"_s).id, makeUuid()};
    model().selectedFormats = QSet<PluginFormat>{PluginFormat::aax};
    EXPECT_FALSE(model().saveProfileFromSelection(m_manager, u" \t"_s));
    EXPECT_FALSE(model().saveProfile(m_manager, {}));
    EXPECT_TRUE(model().saveProfileFromSelection(m_manager, u"\tSelection"_s));
    const PluginProfile& profile = m_manager.profiles->back();
    EXPECT_EQ(profile.name, u"Selection"_s);
    EXPECT_EQ(profile.enabledPlugins, (QSet<QString>{u"Plugin 0000|VST3"_s, u"Plugin 0003|CLAP"_s}));
    EXPECT_EQ(profile.totalPluginCount, 30);

    model().selectedFormats.clear();
    FavoritesList favourites;
    favourites.pluginKeys = profile.enabledPlugins;
    model().activeFavoritesList = favourites;
    EXPECT_EQ(shown(), u"00 03"_s);
    EXPECT_EQ(*model().totalPluginCount, 2);
}

TEST_F(ProfilePreviewTest, AppliesAProfileWithOneScript)
{
    const QString vst3 = u"/Library/Audio/Plug-Ins/VST3/"_s;
    for (const QString& name : {u"A"_s, u"B"_s, u"C"_s})
        m_root.addFile(vst3 + name + u".vst3"_s);
    scan();
    const PluginProfile profile = save(u"All on"_s);
    runTask(model().togglePlugin(row(u"B"_s)));
    m_root.addFile(vst3 + u"New.vst3"_s);
    model().previewProfile(profile);
    scan();
    EXPECT_EQ(shownNames(), (QStringList{u"B"_s, u"New"_s})) << "compared again after the scan";
    for (const AudioPlugin& each : model().filteredPlugins())
        EXPECT_EQ(each.id, row(each.name).id) << "a click has to find its row";
    const auto scripts = m_system.scripts.sources.size();
    runTask(model().applyProfile(profile));
    EXPECT_EQ(m_system.scripts.sources.size(), scripts + 1);
    EXPECT_EQ(logged().mid(0, 2), (QStringList{u"Disabled New"_s, u"Enabled B"_s}));
    EXPECT_EQ(shownNames(), QStringList{}) << "the open preview empties";
    runTask(model().applyProfile(profile));
    EXPECT_EQ(m_system.scripts.sources.size(), scripts + 1) << "no script without changes";
}

} // namespace orvanlite::test
