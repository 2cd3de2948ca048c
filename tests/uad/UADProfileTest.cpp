#include "uad/UADProfile.h"

#include "platform/freedesktop/FreedesktopFileManager.h"
#include "support/TempRoot.h"

#include <fcntl.h>

#include <array>

namespace orvanlite::test {

TEST(UADProfileTest, ReadsThePluginLinesOfTheSection)
{
    const std::tuple<const char*, QString, QString> rows[] = {
        {"a whole profile",
         u"UAD-2 System Profile\nFirmware: authorized\n---\n\nUAD-2 Plug-in Authorizations\n\n"
         "UAD 1176LN Classic: Authorized for all devices\n\tUAD API 2500: Demo (13 days left)\n"
         "UAD Neve 1073: Demo expired\nUAD Pultec: Demo not started\n  UAD Manley: Demo  \n"
         "UAD Neve 1073: Expired\n---------\nUAD Late: Authorized\n"_s,
         u"UAD 1176LN Classic=Authorized, UAD API 2500=Demo (13 days left), UAD Neve 1073=Demo Expired, "
         "UAD Pultec=Demo Not Started, UAD Manley=Demo Not Started, UAD Neve 1073=Demo Expired"_s},
        {"no section", u"UAD A: Authorized\nPlug-in authorizations\nUAD B: Demo"_s, u""_s},
        {"a marker inside the section, with a colon, a status and dashes before it",
         u"Plug-in Authorizations\nA: demo 3\n--- UAD-2 Plug-in Authorizations: demo 4 ---\nB: demo 5"_s,
         u"A=Demo (3 days left), B=Demo (5 days left)"_s},
        {"every newline, and other whitespace",
         u"Plug-in Authorizations\r\nA: expired\rB: expired\vC: expired\fD: expired\u0085E: expired\u2028F: expired"
         "\u2029\u00A0G: demo 1\u00A0\r\n"_s,
         u"A=Demo Expired, B=Demo Expired, C=Demo Expired, D=Demo Expired, E=Demo Expired, F=Demo Expired, "
         "G=Demo (1 days left)"_s},
        {"colons",
         u"Plug-in Authorizations\nA:demo 1\nB demo\nC:\nD: Bus: demo 2\nE:1: demo 3\nF : demo 4\n: demo 5"_s,
         u"D=Demo (2 days left), E:1=Demo (3 days left), F =Demo (4 days left), =Demo (5 days left)"_s},
        {"the first word that is found decides",
         u"Plug-in Authorizations\nA: UNAUTHORIZED, demo expired\nB: demo expired, not started\nC: demo 4, expired\n"
         "D: trial 5\nE: democracy 0 of 9\nF: n\u00F6t DEM\u00D6, DEMO"_s,
         u"A=Authorized, B=Demo Not Started, C=Demo Expired, E=Demo (0 days left), F=Demo Not Started"_s},
        {"numbers at the edge of the integer and beyond",
         u"Plug-in Authorizations\nA: demo 9223372036854775807\nB: demo 9223372036854775808\nC: demo -7x8\n"
         "D: demo 99999999999999999999999999999 5\nE: demo \u0661\u0662\nF: demo 000000000000000000000000000012"_s,
         u"A=Demo (9223372036854775807 days left), B=Demo (0 days left), C=Demo (7 days left), "
         "D=Demo (0 days left), E=Demo (12 days left), F=Demo (12 days left)"_s},
    };
    for (const auto& [name, text, wanted] : rows) {
        SCOPED_TRACE(name);
        QStringList found;
        for (const UADPluginAuth& each : parsePluginAuthorizations(text))
            found.append(each.name + u'=' + each.status.displayString());
        EXPECT_EQ(found.join(u", "_s), wanted);
    }
}

TEST(UADProfileTest, FindsAndReadsTheNewestProfile)
{
    const TempRoot root;
    const platform::FreedesktopFileManager files;
    const auto add = [&root](QStringView path, const QByteArray& content, qint64 nanoseconds) {
        root.addFile(path, content);
        const std::array times{timespec{1'700'000'000, 0}, timespec{1'700'000'000, nanoseconds}};
        ASSERT_EQ(::utimensat(AT_FDCWD, root.at(path).toUtf8().constData(), times.data(), 0), 0);
    };
    EXPECT_EQ(findProfileFile(files, root.at(u"/missing")), std::nullopt);
    add(u"/d/UADSystemProfile.rtf", {}, 900);
    add(u"/d/uadsystemprofile.txt", {}, 900);
    add(u"/d/UADSystemProfile.txt/below.txt", {}, 900);
    add(u"/e/UADSystemProfile.txt", "old", 100);
    add(u"/e/My UADSystemProfile 2024-05-01.TXT", "new", 200);
    add(u"/e/sub/UADSystemProfile.txt", "newest, but below", 900);
    EXPECT_EQ(findProfileFile(files, root.at(u"/d")), root.at(u"/d/UADSystemProfile.txt"));
    const auto newest = [&] { return readProfile(files, findProfileFile(files, root.at(u"/e")).value()); };
    EXPECT_EQ(newest(), u"new"_s);
    add(u"/e/UADSystemProfile.txt", "newer", 300);
    EXPECT_EQ(newest(), u"newer"_s);

    const QString file = root.at(u"/e/rubbish.txt");
    root.addFile(u"/e/rubbish.txt", "Plug-in Authorizations\nA: demo \xE2\x82"); // cut off inside a character
    EXPECT_THROW((void)readProfile(files, file), platform::FileError);
    root.addFile(u"/e/rubbish.txt", "\x01\nPlug-in Authorizations\n" + QByteArray(5'000'000, ':') + ": demo");
    EXPECT_EQ(parsePluginAuthorizations(readProfile(files, file)).at(0).name.size(), 5'000'000);
}

} // namespace orvanlite::test
