#include "records/ActivityLogManager.h"

#include "model/Uuid.h"
#include "support/Fakes.h"

namespace orvanlite::test {

const QByteArray kEntry = R"({"id":"00000000-0000-4000-8000-00000000000a","timestamp":721692800.25,)"
                          R"("pluginName":"P","format":"VST3","action":"Enabled"})";

class ActivityLogManagerTest : public testing::Test {
protected:
    QString storedNames()
    {
        QStringList names;
        const ActivityLogManager log(m_system.platform);
        for (const ActivityLogEntry& entry : *log.entries)
            names << entry.pluginName;
        return names.join(u' ');
    }

    TestPlatform m_system;
    /// Relative to the root.
    const QString m_folder = m_system.layout.applicationFolder().sliced(m_system.root.path().size());
    const QString m_file = m_folder + u"/activity_log.json"_s;
};

TEST_F(ActivityLogManagerTest, AgeTexts)
{
    const std::pair<double, QString> rows[] = {
        {-1e300, u"just now"_s}, {59.9, u"just now"_s},      {60, u"1m ago"_s},
        {3599.9, u"59m ago"_s},  {3600, u"1h ago"_s},        {86399, u"23h ago"_s},
        {86400, u"yesterday"_s}, {172799.5, u"yesterday"_s}, {172800, u"2d ago"_s},
    };
    for (const auto& [age, wanted] : rows) {
        const ActivityLogEntry entry{{}, Date{7e8 - age}, {}, {}, ActivityAction::deleted};
        EXPECT_EQ(entry.timeAgo(Date{7e8}), wanted) << age;
    }
}

TEST_F(ActivityLogManagerTest, EntriesAreWrittenNewestFirst)
{
    m_system.clock.setNow(1'700'000'000.25);
    ActivityLogManager log(m_system.platform);
    log.log(u"First \"ü\""_s, u"VST"_s, ActivityAction::disabled);
    m_system.clock.setNow(1'700'000'060);
    log.logBatch({{u"B"_s, u"VST3"_s}, {u"A"_s, u"Waves"_s}}, ActivityAction::deleted);

    const auto& entries = *log.entries;
    ASSERT_EQ(entries.size(), 3U);
    EXPECT_NE(entries[0].id, entries[1].id);
    EXPECT_EQ(
        QString::fromUtf8(m_system.root.content(m_file)),
        u"[{\"id\":\"%1\",\"timestamp\":721692860.0,\"pluginName\":\"B\",\"format\":\"VST3\",\"action\":\"Deleted\"},"
        "{\"id\":\"%2\",\"timestamp\":721692860.0,\"pluginName\":\"A\",\"format\":\"Waves\",\"action\":\"Deleted\"},"
        "{\"id\":\"%3\",\"timestamp\":721692800.25,\"pluginName\":\"First \\\"ü\\\"\",\"format\":\"VST\","
        "\"action\":\"Disabled\"}]"_s.arg(uuidText(entries[0].id), uuidText(entries[1].id),
                                          uuidText(entries[2].id)));
    EXPECT_EQ(*ActivityLogManager(m_system.platform).entries, entries);

    log.clear();
    EXPECT_TRUE(log.entries->empty());
    EXPECT_EQ(m_system.root.content(m_file), "[]");
    m_system.files.remove(m_system.root.at(m_file));
    log.logBatch({}, ActivityAction::enabled);
    EXPECT_EQ(m_system.root.content(m_file), "[]") << "an empty batch writes too";
}

TEST_F(ActivityLogManagerTest, KeepsTheNewestTwoHundred)
{
    ActivityLogManager log(m_system.platform);
    log.log(u"Old"_s, u"VST"_s, ActivityAction::enabled);
    std::vector<LoggedPlugin> batch;
    for (int i = 1; i <= 199; ++i)
        batch.push_back({QString::number(i), u"VST"_s});
    log.logBatch(batch, ActivityAction::disabled);
    EXPECT_EQ(log.entries->back().pluginName, u"Old"_s);
    log.log(u"New"_s, u"VST"_s, ActivityAction::enabled);
    EXPECT_EQ(log.entries->front().pluginName, u"New"_s);
    EXPECT_EQ(log.entries->back().pluginName, u"199"_s);
    EXPECT_EQ(storedNames().count(u' '), 199);

    m_system.root.addFile(m_file, '[' + (kEntry + ',').repeated(499) + kEntry + ']');
    ActivityLogManager longLog(m_system.platform);
    EXPECT_EQ(longLog.entries->size(), 500U);
    longLog.log(u"New"_s, u"VST"_s, ActivityAction::enabled);
    EXPECT_EQ(longLog.entries->size(), 200U);
}

TEST_F(ActivityLogManagerTest, InvalidFileReadsAsEmptyAndIsReplaced)
{
    const auto with = [&](const char* text, const char* other) {
        return '[' + QByteArray(kEntry).replace(text, other) + ']';
    };
    const std::tuple<const char*, QByteArray, std::size_t> rows[] = {
        {"two entries", '[' + kEntry + ", " + kEntry + ']', 2},
        {"further member, whole seconds", with(R"("timestamp":721692800.25)", R"("x":1,"timestamp":-5)"), 1},
        {"no array", kEntry, 0},
        {"unknown action beside a good entry", '[' + kEntry + ',' + with("Enabled", "enabled").sliced(1), 0},
        {"no UUID", with("0000-4000", "4000"), 0},
        {"a missing member", with(R"("format":"VST3",)", ""), 0},
    };
    for (const auto& [name, content, wanted] : rows) {
        SCOPED_TRACE(name);
        m_system.root.addFile(m_file, content);
        ActivityLogManager log(m_system.platform);
        EXPECT_EQ(log.entries->size(), wanted);
        EXPECT_EQ(m_system.root.content(m_file), content);
        log.log(u"N"_s, u"VST"_s, ActivityAction::enabled);
        EXPECT_EQ(storedNames(), u"N"_s + u" P"_s.repeated(qsizetype(wanted)));
    }
}

TEST_F(ActivityLogManagerTest, FailedWriteKeepsTheEntries)
{
    m_system.root.addFile(m_folder, "a file in the place of the folder");
    ActivityLogManager log(m_system.platform);
    log.log(u"N"_s, u"VST"_s, ActivityAction::enabled);
    EXPECT_EQ(log.entries->size(), 1U);
    EXPECT_EQ(storedNames(), u""_s);
    m_system.files.remove(m_system.root.at(m_folder));
    log.log(u"M"_s, u"VST"_s, ActivityAction::enabled);
    EXPECT_EQ(storedNames(), u"M N"_s);
    m_system.layout.applicationSupport.clear();
    EXPECT_DEATH(ActivityLogManager{m_system.platform}, "application support");
}

} // namespace orvanlite::test
