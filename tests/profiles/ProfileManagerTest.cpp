#include "ProfilesFixture.h"

#include "profiles/ProfileDocument.h"

namespace orvanlite::test {

class ProfileManagerTest : public ProfilesTest {};

TEST_F(ProfileManagerTest, WritesEveryChange)
{
    ProfileManager manager(m_system.platform);
    manager.saveProfile(u"Empty \"ü\" %1"_s, {});
    EXPECT_EQ(QString::fromUtf8(m_system.root.content(m_profiles)),
              u"[{\"id\":\"%1\",\"name\":\"Empty \\\"ü\\\" %1\",\"createdAt\":721692800.25,"
              "\"enabledPlugins\":[],\"totalPluginCount\":0,\"allPluginKeys\":[]}]"_s.replace(
                  u"\"%1"_s, u'"' + uuidText(manager.profiles->front().id)));

    // Two rows of one key count twice.
    const AudioPlugins live{plugin(u"A|B"_s, true), plugin(u"A|B"_s, true), plugin(u"C"_s, false),
                            plugin(u"D"_s, true)};
    manager.saveProfile(u"Live"_s, live);
    manager.saveProfileFromSelection(u"Selection"_s, {live[2]}, live);
    EXPECT_EQ(summary(manager),
              (QStringList{u"Empty \"ü\" %1:  / 0 "_s, u"Live: A|B|VST3,D|VST3 / 4 A|B|VST3,C|VST3,D|VST3"_s,
                           u"Selection: C|VST3 / 4 A|B|VST3,C|VST3,D|VST3"_s}));

    m_system.clock.setNow(2'000'000'000);
    PluginProfile renamed = (*manager.profiles)[1];
    renamed.name = u"New"_s;
    manager.updateProfile(renamed, {live[2]});
    EXPECT_EQ(summary(manager)[1], u"New:  / 1 C|VST3"_s);
    EXPECT_EQ((*manager.profiles)[1].createdAt, Date{721692800.25});
    manager.deleteProfile(manager.profiles->front()); // by a reference into the list
    EXPECT_TRUE(summary(manager)[0].startsWith(u"New:"_s));
    EXPECT_EQ(*ProfileManager(m_system.platform).profiles, *manager.profiles);

    m_system.files.remove(m_system.root.at(m_profiles));
    renamed.id = makeUuid();
    manager.updateProfile(renamed, live);
    EXPECT_FALSE(m_system.root.exists(m_profiles)) << "nothing is written for an unknown id";
    manager.deleteProfile(renamed);
    EXPECT_TRUE(m_system.root.exists(m_profiles));
}

TEST_F(ProfileManagerTest, ReadsOnlyValidProfiles)
{
    const auto with = [](const char* from, const QByteArray& to) {
        QByteArray text(kObject);
        EXPECT_TRUE(text.contains(from));
        return text.replace(from, to);
    };
    const QByteArray deep =
        QByteArray("[{\"\":").repeated(200'000) + "1" + QByteArray("}]").repeated(200'000);
    const QString same = u"P: A|VST3 / 2 A|VST3,B/ü|Waves"_s;
    const std::tuple<const char*, QByteArray, QString> rows[] = {
        {"as it is", kObject, same},
        {"whitespace, escapes, other order",
         R"({ "allPluginKeys" : null, "enabledPlugins":["\u00FC\/\ud83d\ude00|VST","x"],)"
         R"("totalPluginCount":-1, "name":"","id":"0f1e2d3c-0000-4000-8000-000000000001","createdAt":-0.5e-3})",
         u": x,ü/😀|VST / -1 x,ü/😀|VST"_s},
        {"known on and off alike when the list is absent", with(R"("allPluginKeys")", R"("other")"),
         u"P: A|VST3 / 2 A|VST3"_s},
        {"unknown members, deep", with(R"("name")", R"("deep":)" + deep + R"(,"name")"), same},
        {"last of equal members", with(R"("name")", R"("name":[{}],"enabledPlugins":["Q",1],"name")"), same},
        {"last is bad", with(R"("totalPluginCount")", R"("id":"x","totalPluginCount")"), {}},
        {"whole number with a fraction of nought", with(":2,", ":2.0,"), same},
        {"half a count", with(":2,", ":2.5,"), {}},
        {"a count beyond 64 bits", with(":2,", ":9223372036854775808,"), {}},
        {"no UUID", with("0F1E2D3C", "0F1E2D3"), {}},
        {"a key that is no text", with(R"(["A|VST3"])", R"(["A|VST3",null])"), {}},
        {"wrong type of the optional list", with(R"(["A|VST3","B)", R"(5,"x":["A|VST3","B)"), {}},
        {"cut off", kObject.chopped(1), {}},
        {"no UTF-8", with("\"P\"", "\"\xFF\""), {}},
        {"deep alone", deep, {}},
    };
    for (const auto& [name, object, wanted] : rows) {
        SCOPED_TRACE(name);
        const bool isValid = !wanted.isNull();
        m_system.root.addFile(m_profiles, "\xEF\xBB\xBF [" + object + "," + kObject + "]\n");
        ProfileManager manager(m_system.platform);
        ASSERT_EQ(manager.profiles->size(), isValid ? 2U : 0U);
        manager.saveProfile(u"N"_s, {});
        EXPECT_EQ(ProfileManager(m_system.platform).profiles->size(), isValid ? 3U : 1U);
        m_system.root.addFile(u"/d.json", "\xEF\xBB\xBF" + object);
        const auto before = *manager.profiles;
        if (!isValid) {
            EXPECT_ANY_THROW(manager.importProfile(m_system.root.at(u"/d.json")));
            EXPECT_EQ(*manager.profiles, before);
            continue;
        }
        EXPECT_EQ(summary(manager).front(), wanted);
        manager.importProfile(m_system.root.at(u"/d.json"));
        PluginProfile imported = manager.profiles->back();
        EXPECT_NE(std::exchange(imported.id, before.front().id), before.front().id);
        EXPECT_EQ(imported, before.front());
    }
    m_system.root.addFile(m_profiles, kObject);
    EXPECT_TRUE(ProfileManager(m_system.platform).profiles->empty()) << "one profile is no list";
}

TEST_F(ProfileManagerTest, DocumentsMoveBetweenMachines)
{
    ProfileManager manager(m_system.platform);
    manager.saveProfile(u"Mix / down"_s, {plugin(u"A"_s, true), plugin(u"B"_s, false)});
    const ProfileDocument document{manager.profiles->front()};
    EXPECT_EQ(ProfileDocument{}.defaultFileName(), u"profile"_s);
    EXPECT_FALSE(ProfileDocument::decoded(std::nullopt).profile);
    const QString path = m_system.root.at(u"/mix.json");
    const QString missing = m_system.root.at(u"/no/such.json");

    exportProfile(m_system.files, document, path);
    const QByteArray text = m_system.root.content(u"/mix.json");
    EXPECT_TRUE(text.startsWith("{\n")) << text.constData();
    qsizetype last = 0;
    for (const char* member :
         {"allPluginKeys", "createdAt", "enabledPlugins", "id", "name", "totalPluginCount"})
        EXPECT_GT(text.indexOf(member), std::exchange(last, text.indexOf(member))) << member;
    EXPECT_EQ(ProfileDocument::decoded(text).profile, document.profile);

    TestPlatform elsewhere;
    ProfileManager other(elsewhere.platform);
    importProfile(other, path);
    EXPECT_EQ(summary(other), QStringList{u"Mix / down: A|VST3 / 2 A|VST3,B|VST3"_s});
    EXPECT_EQ(printedBy([&] {
                  importProfile(other, missing);
                  importProfile(other, m_system.root.at(m_profiles));
                  exportProfile(m_system.files, document, missing);
                  exportProfile(m_system.files, {}, path);
                  reportCancelledImport(std::runtime_error("x"));
              }),
              "Failed to import profile: No such file or directory: " + missing.toStdString() +
                  "\nFailed to import profile: no profile\nExport failed: No such file or directory: " +
                  missing.toStdString() +
                  "\nExport failed: The file couldn’t be saved.\nImport cancelled: x\n");
    EXPECT_EQ(other.profiles->size(), 1U);
    EXPECT_EQ(m_system.root.content(u"/mix.json"), text) << "a document without a profile touches no file";
}

TEST_F(ProfileManagerTest, FailedWritesKeepTheProfiles)
{
    m_system.root.addFile(m_folder, "a file in the place of the folder");
    ProfileManager manager(m_system.platform);
    manager.saveProfile(u"P"_s, {});
    m_system.files.remove(m_system.root.at(m_folder));
    m_system.root.addFolder(m_folder);
    manager.saveProfile(u"Q"_s, {});
    EXPECT_EQ(ProfileManager(m_system.platform).profiles->size(), 2U);

    TestPlatform noFolder;
    noFolder.layout.applicationSupport.clear();
    EXPECT_DEATH(ProfileManager{noFolder.platform}, "application support");
}

TEST_F(ProfileManagerTest, ChangesAndTexts)
{
    PluginProfile profile;
    profile.name = u"%1"_s;
    profile.enabledPlugins = {u"OnOn|VST3"_s, u"OnOff|VST3"_s, u"Gone|VST3"_s};
    profile.allPluginKeys = {u"OffOn|VST3"_s};
    const AudioPlugins live{plugin(u"New"_s, true),   plugin(u"OnOn"_s, true), plugin(u"OnOff"_s, false),
                            plugin(u"OffOn"_s, true), plugin(u"Off"_s, false), plugin(u"OnOff"_s, false)};
    const ProfileChanges changes = ProfileManager::computeChanges(profile, live);
    EXPECT_EQ(changes.toEnable, (AudioPlugins{live[2], live[5]}));
    EXPECT_EQ(changes.toDisable, (AudioPlugins{live[0], live[3]}));
    EXPECT_EQ(applyQuestion(profile.name, changes),
              u"Applying \"%1\" will enable 2 and disable 2 plugins."_s);
    EXPECT_EQ(trimmedProfileName(u"\u00A0\t a b \n\t "_s), u"a b \n"_s);
}

} // namespace orvanlite::test
