#include "profiles/NewPlugins.h"

#include "ProfilesFixture.h"

namespace orvanlite::test {

class NewPluginsTest : public ProfilesTest {
protected:
    static QStringList chips(const NewPlugins& shown)
    {
        const auto& on = shown.selectedNewPluginFormats;
        QStringList all;
        for (const PluginFormat format : shown.detectedFormats())
            all.append(shown.chipText(format) + (on.contains(format) ? u'+' : u'-'));
        return all;
    }

    const AudioPlugins m_old{plugin(u"Old"_s, true)};
    const AudioPlugins m_new{plugin(u"A"_s, true), plugin(u"B"_s, false),
                             plugin(u"C"_s, true, PluginFormat::au),
                             plugin(u"D"_s, true, PluginFormat::clap)};
    AudioPlugins m_all{m_old[0], m_new[0], m_new[1], m_new[2], m_new[3]};
};

TEST_F(NewPluginsTest, StaysPendingUntilDecided)
{
    {
        ProfileManager manager(m_system.platform);
        EXPECT_FALSE(collectNewPlugins(manager, m_new, m_all));
        EXPECT_FALSE(m_system.root.exists(m_pending));
        manager.saveProfile(u"P"_s, m_old);
        EXPECT_FALSE(collectNewPlugins(manager, {}, m_all));
        EXPECT_EQ(collectNewPlugins(manager, {m_new[3]}, m_all)->bannerText(), u"1 new plugin detected: D"_s);
        EXPECT_EQ(m_system.root.content(m_pending), "[\"D|CLAP\"]");
    }
    ProfileManager manager(m_system.platform);
    EXPECT_EQ(collectNewPlugins(manager, {m_new[0], m_new[1]}, m_all)->bannerText(),
              u"3 new plugins detected: A, B, D"_s);
    EXPECT_EQ(collectNewPlugins(manager, {m_new[2]}, m_all)->bannerText(),
              u"4 new plugins detected: A, B, C +1 more"_s);

    EXPECT_FALSE(collectNewPlugins(manager, {}, m_old)) << "what is pending is no longer installed";
    EXPECT_TRUE(m_system.root.exists(m_pending));

    collectNewPlugins(manager, {}, m_all)->dismiss(manager);
    EXPECT_FALSE(m_system.root.exists(m_pending));
    EXPECT_EQ(summary(manager),
              QStringList{u"P: Old|VST3 / 1 A|VST3,B|VST3,C|Audio Units,D|CLAP,Old|VST3"_s});

    for (const auto& [text, keys] : {std::pair(R"({"a":"A|VST3"})", 0),
                                     {R"(["A|VST3",1])", 0},
                                     {R"(["A|VST3")", 0},
                                     {"\xEF\xBB\xBF[\"A|VST3\", \"Gone|VST3\"]", 2}}) {
        m_system.root.addFile(m_pending, text);
        EXPECT_EQ(ProfileManager(m_system.platform).pendingNewPluginKeys->size(), keys) << text;
    }
}

TEST_F(NewPluginsTest, ChipsAndRowsFollowEachOther)
{
    ProfileManager manager(m_system.platform);
    manager.saveProfile(u"P"_s, m_old);
    manager.saveProfile(u"Q"_s, m_old);
    NewPlugins shown = *collectNewPlugins(manager, m_new, m_all);
    EXPECT_EQ(chips(shown), (QStringList{u"Audio Units (1)+"_s, u"CLAP (1)+"_s, u"VST3 (2)+"_s}));
    EXPECT_EQ(shown.explanation(),
              u"These 4 plugins were just installed on your system. Select which ones to add "
              u"to your profiles."_s);
    // What is clicked, the selected plugins and the chip of VST3.
    const std::tuple<const char*, std::function<void()>, QString> rows[] = {
        {"one of two off", [&] { shown.togglePlugin(m_new[0]); }, u"BCD VST3 (2)+"_s},
        {"the last off", [&] { shown.togglePlugin(m_new[1]); }, u"CD VST3 (2)-"_s},
        {"one of two on", [&] { shown.togglePlugin(m_new[1]); }, u"BCD VST3 (2)-"_s},
        {"all on", [&] { shown.togglePlugin(m_new[0]); }, u"ABCD VST3 (2)+"_s},
        {"one of two off again", [&] { shown.togglePlugin(m_new[1]); }, u"ACD VST3 (2)+"_s},
        {"chip off", [&] { shown.toggleFormat(PluginFormat::vst3); }, u"CD VST3 (2)-"_s},
        {"chip on", [&] { shown.toggleFormat(PluginFormat::vst3); }, u"ABCD VST3 (2)+"_s},
    };
    for (const auto& [name, click, wanted] : rows) {
        SCOPED_TRACE(name);
        click();
        QString selected;
        for (const AudioPlugin& each : shown.selectedNewPlugins())
            selected += each.name;
        EXPECT_EQ(selected + u' ' + chips(shown).back(), wanted);
        EXPECT_EQ(chips(shown).front(), u"Audio Units (1)+"_s);
    }
    shown.toggleProfile(manager.profiles->front().id);
    EXPECT_TRUE(!shown.hasAllProfiles(manager) && shown.canAdd());
    shown.toggleAllProfiles(manager);
    shown.toggleAllProfiles(manager);
    EXPECT_FALSE(shown.canAdd()) << "no profile is selected";
    shown.toggleAllProfiles(manager);
    for (const PluginFormat format : shown.detectedFormats())
        shown.toggleFormat(format);
    EXPECT_FALSE(shown.canAdd()) << "no plugin is selected";
    EXPECT_EQ(shown.selectionText() + shown.addButtonText(), u"0 of 4 plugins selectedAdd 0 to Profiles"_s);
}

TEST_F(NewPluginsTest, AddsSelectedPluginsAndKnowsTheOthersAsOff)
{
    ProfileManager manager(m_system.platform);
    manager.saveProfile(u"P"_s, m_old);
    manager.saveProfile(u"Q"_s, m_old);
    NewPlugins shown = *collectNewPlugins(manager, m_new, m_all);
    shown.togglePlugin(m_new[2]);
    shown.toggleProfile((*manager.profiles)[1].id);
    shown.addToProfiles(manager);
    EXPECT_EQ(summary(manager),
              (QStringList{u"P: A|VST3,D|CLAP,Old|VST3 / 4 A|VST3,B|VST3,C|Audio Units,D|CLAP,Old|VST3"_s,
                           u"Q: Old|VST3 / 1 C|Audio Units,Old|VST3"_s}));
    EXPECT_TRUE(manager.pendingNewPluginKeys->isEmpty() && !m_system.root.exists(m_pending));
    // Known plugins count again, and none is ever turned off.
    manager.addPluginsToProfiles({m_new[0], m_new[1]}, {manager.profiles->front().id, makeUuid()}, false);
    EXPECT_TRUE(summary(manager)[0].startsWith(u"P: A|VST3,D|CLAP,Old|VST3 / 6 A"_s));
}

} // namespace orvanlite::test
