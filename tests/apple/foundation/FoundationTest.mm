// Runs what needs only Foundation with GNUstep's: the same interfaces that the back end of Linux implements.
#include "platform/ScriptAnswer.h"
#include "platform/SystemLayout.h"
#include "platform/apple/AppleBridge.h"
#include "platform/apple/AppleDefaults.h"
#import <Foundation/Foundation.h>

#include <gtest/gtest.h>

#include <pwd.h>
#include <unistd.h>

#include <QProcess>

#include <cstdlib>
#include <limits>

using namespace orvanlite::platform;
using namespace Qt::StringLiterals;

TEST(Foundation, ValuesSurviveTheWayThereAndBack)
{
    const QVariantList values{true,
                              false,
                              qlonglong(1),
                              qlonglong(0),
                              std::numeric_limits<qlonglong>::min(),
                              0.5,
                              QString(),
                              u"ü 🎛 \0x"_s,
                              QByteArray("\0\xff\n", 3)};
    for (const QVariant& value : values) {
        SCOPED_TRACE(value.toString().toStdString() + ' ' + value.typeName());
        const QVariant back = fromNativeObject(toNativeObject(value));
        EXPECT_EQ(back.typeId(), value.typeId());
        EXPECT_EQ(back, value);
    }
    EXPECT_EQ(toNativeObject(QStringList(u"x"_s)), nil);
    EXPECT_FALSE(fromNativeObject([NSArray array]).isValid());
    EXPECT_TRUE(fromNative(nil).isEmpty());
}

TEST(Foundation, DefaultsAreSharedThroughAFile)
{
    AppleDefaultsStore store;
    Defaults* suite = store.suite(u"com.yourcompany.Orvanlite"_s);
    ASSERT_NE(suite, nullptr);
    EXPECT_EQ(store.suite(u"com.yourcompany.Orvanlite"_s), suite);
    EXPECT_NE(store.suite(u"other"_s), suite);
    EXPECT_FALSE(suite->value(u"enabledPluginCount"_s).isValid());
    const QVariantMap values{{u"enabledPluginCount"_s, qlonglong(1042)},
                             {u"onboardingComplete"_s, true},
                             {u"text"_s, u"a, \"ü\"; \\n\n%"_s},
                             {u"frame"_s, QByteArray("\0\xff\n", 3)}};
    for (Defaults* each : {suite, &store.standard()}) {
        for (auto value = values.cbegin(); value != values.cend(); ++value)
            each->setValue(value.key(), value.value());
    }
    store.standard().setValue(u"text"_s, QVariant());
    // As another process sees it: from the files.
    AppleDefaultsStore again;
    [NSUserDefaults resetStandardUserDefaults];
    for (auto value = values.cbegin(); value != values.cend(); ++value)
        EXPECT_EQ(again.suite(u"com.yourcompany.Orvanlite"_s)->value(value.key()), value.value());
    EXPECT_EQ(AppleDefaultsStore().standard().value(u"onboardingComplete"_s), QVariant(true));
    EXPECT_FALSE(AppleDefaultsStore().standard().value(u"text"_s).isValid());
}

TEST(Foundation, FoldersAreAbsoluteAndTheUsersOwn)
{
    const SystemLayout layout = SystemLayout::ofThisMachine();
    EXPECT_EQ(layout.home, QString::fromUtf8(getpwuid(getuid())->pw_dir));
    for (const QString& folder : {layout.applicationSupport, layout.configuration, layout.cache,
                                  layout.desktop, layout.downloads, layout.documents}) {
        EXPECT_TRUE(folder.startsWith(layout.home + u'/') && !folder.endsWith(u'/')) << folder.toStdString();
    }
    EXPECT_TRUE(layout.configuration.endsWith(u"/Preferences"));
    EXPECT_TRUE(layout.temporary.startsWith(u'/') && !layout.temporary.endsWith(u'/'));
}

TEST(Foundation, ScriptHelperAnswersWithTheWholeErrorDictionary)
{
    const std::pair<QByteArray, ScriptOutcome> rows[] = {
        {"return 1 + 1", {u"2"_s, {}}},
        {"beep",
         {{},
          ScriptErrorDictionary{{u"NSAppleScriptErrorNumber"_s, u"-128"_s},
                                {u"NSAppleScriptErrorMessage"_s, u"User canceled: “ü”"_s}}}},
        {"\xff", {}}, // no text
    };
    for (const auto& [source, wanted] : rows) {
        QProcess helper;
        helper.start(QStringLiteral(ORV_SCRIPT_HELPER));
        helper.write(source);
        helper.closeWriteChannel();
        ASSERT_TRUE(helper.waitForFinished());
        EXPECT_EQ(helper.exitCode(), 0);
        EXPECT_EQ(decodeScriptAnswer(helper.readAllStandardOutput()), wanted) << source.constData();
    }
}

int main(int argc, char** argv)
{
    // Read by the library before main(). It keeps the test from the defaults of the user.
    if (!std::getenv("GNUSTEP_CONFIG_FILE"))
        return EXIT_FAILURE;
    testing::InitGoogleTest(&argc, argv);
    @autoreleasepool {
        return RUN_ALL_TESTS();
    }
}
