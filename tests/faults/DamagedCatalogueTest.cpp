#include "FaultySystem.h"
#include "catalogue/PluginDatabase.h"
#include "model/Uuid.h"
#include "support/Fakes.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <random>

namespace orvanlite::test {

using namespace Qt::StringLiterals;

namespace {

class DamagedCatalogueTest : public testing::Test {
protected:
    /// Rows of several pages: with a new id each, like those of a scan.
    static AudioPlugins plugins(int count)
    {
        AudioPlugins all(static_cast<std::size_t>(count));
        for (AudioPlugin& each : all) {
            each.id = makeUuid();
            each.name = u"Plugin %1"_s.arg(&each - all.data(), 3, 10, QChar(u'0'));
            each.manufacturer = u"Maker of %1"_s.arg(each.name);
            each.originalPath = each.currentPath = u"/Library/Audio/Plug-Ins/VST3/"_s + each.name;
            each.version = u"1.10"_s;
        }
        return all;
    }
    [[nodiscard]] static AudioPlugins rows(const PluginDatabase& database)
    {
        return database.queryPlugins({}, "name"_L1, true, 1000, 0);
    }
    /// What a start and its scan leave in the catalogue, as the next start reads it.
    AudioPlugins afterScan(const AudioPlugins& found)
    {
        testing::internal::CaptureStdout();
        {
            PluginDatabase database(m_system.platform, m_path);
            static_cast<void>(rows(database));
            database.replaceAllPlugins(found);
            EXPECT_TRUE(rows(database) == found);
        }
        const AudioPlugins read = rows(PluginDatabase(m_system.platform, m_path));
        m_printed = QString::fromStdString(testing::internal::GetCapturedStdout());
        return read;
    }
    void removeAll()
    {
        if (const QString folder = m_system.layout.applicationFolder(); m_system.files.exists(folder))
            m_system.files.remove(folder);
    }

    TestPlatform m_system;
    const QString m_path = m_system.layout.applicationFolder() + u"/plugins.db"_s;
    const QString m_file = m_path.sliced(m_system.root.path().size());
    QString m_printed;
};

/// Changes some bytes of the file: single bits, a block of zeros, foreign bytes, or the rest is missing.
void damage(QByteArray& content, std::mt19937& random)
{
    const auto below = [&random](qsizetype limit) {
        return static_cast<qsizetype>(random() % static_cast<std::uint32_t>(limit));
    };
    const qsizetype begin =
        below(4) == 0 ? below(std::min<qsizetype>(content.size(), 200)) : below(content.size());
    const qsizetype length = std::min<qsizetype>(content.size() - begin, 1 + below(700));
    switch (below(4)) {
    case 0:
        for (qsizetype i = below(8); i >= 0; --i)
            content[i == 0 ? begin : below(content.size())] ^= static_cast<char>(1 << below(8));
        break;
    case 1:
        content.replace(begin, length, QByteArray(length, '\0'));
        break;
    case 2:
        for (qsizetype i = begin; i < begin + length; ++i)
            content[i] = static_cast<char>(random());
        break;
    default:
        content.truncate(begin);
        break;
    }
}

} // namespace

/// ORV_FAULTS_CATALOGUES=N damages N files instead of 60.
TEST_F(DamagedCatalogueTest, IsReplacedByTheNextScan)
{
    QByteArrayList files;
    {
        PluginDatabase database(m_system.platform, m_path);
        database.replaceAllPlugins(plugins(150));
        for (const char* suffix : {"", "-wal", "-shm"})
            files.append(m_system.root.content(m_file + QLatin1StringView(suffix)));
    }
    const QByteArray closed = m_system.root.content(m_file);
    const int asked = qEnvironmentVariableIntValue("ORV_FAULTS_CATALOGUES");
    const int count = asked > 0 ? asked : 60;
    std::mt19937 random(17);
    int setAside = 0;
    int lost = 0;
    for (int i = 0; i < count; ++i) {
        SCOPED_TRACE(i);
        removeAll();
        QByteArrayList damaged = i % 2 == 0 ? QByteArrayList{closed} : files;
        damage(damaged[damaged.size() > 1 && i % 4 == 1 ? 1 : 0], random);
        const QStringList suffixes{QString(), u"-wal"_s, u"-shm"_s};
        for (qsizetype each = 0; each < damaged.size(); ++each)
            m_system.root.addFile(m_file + suffixes[each], damaged[each]);
        const AudioPlugins found = plugins(140);
        const bool isHealed = afterScan(found) == found;
        lost += isHealed ? 0 : 1;
        EXPECT_TRUE(isHealed) << qPrintable(m_printed);
        setAside += m_system.root.exists(m_file + u".damaged"_s) ? 1 : 0;
    }
    std::printf("%d damaged catalogues: %d set aside, %d without the list of the next scan\n", count,
                setAside, lost);
    EXPECT_GT(setAside, 0);
}

TEST_F(DamagedCatalogueTest, OtherColumnsAndVersionsAreReplacedToo)
{
    PluginDatabase(m_system.platform, m_path).replaceAllPlugins(plugins(3));
    const QByteArray whole = m_system.root.content(m_file);
    // A letter of a column and of a type, the format of the schema, and the version of SQLite that may write.
    const std::pair<qsizetype, char> rows[] = {
        {whole.indexOf("originalPath TEXT"), 1}, {whole.indexOf("TEXT,\n    bundle"), 1}, {47, 2}, {18, 4}};
    for (const auto& [offset, bits] : rows) {
        SCOPED_TRACE(offset);
        removeAll();
        QByteArray content = whole;
        content[offset] ^= bits;
        m_system.root.addFile(m_file, content);
        const AudioPlugins found = plugins(5);
        EXPECT_TRUE(afterScan(found) == found) << qPrintable(m_printed);
    }
}

/// A full disk and a failing one: the file keeps the old rows or gets the new ones, and heals with the next
/// scan.
TEST_F(DamagedCatalogueTest, AFailedReplacementHeals)
{
    const AudioPlugins old = plugins(40);
    const AudioPlugins found = plugins(50);
    for (const auto& [error, isPartial, isRead] : {std::tuple(0, false, false),
                                                   {ENOSPC, false, false},
                                                   {ENOSPC, true, false},
                                                   {EIO, false, false},
                                                   {EIO, false, true}}) {
        const int tried = forEachCall([&, error = error, isPartial = isPartial, isRead = isRead](int call) {
            SCOPED_TRACE(testing::Message() << "errno " << error << " at call " << call);
            removeAll();
            afterScan(old);
            bool isReached = false;
            const auto scan = [&] {
                std::freopen("/dev/null", "w", stdout);
                PluginDatabase database(m_system.platform, m_path);
                database.replaceAllPlugins(found);
                if (error == ENOSPC && !isPartial && rows(database) != found) {
                    EXPECT_TRUE(database.isOutOfSpace());
                }
            };
            const Fault fault{m_path.toStdString(), call, error, isPartial, isRead};
            EXPECT_NE(runWith(fault, scan, &isReached), End::failed);
            testing::internal::CaptureStdout();
            const AudioPlugins read = rows(PluginDatabase(m_system.platform, m_path));
            testing::internal::GetCapturedStdout();
            // On purpose: rows that cannot be inserted are left out, and what has been deleted stays deleted.
            EXPECT_TRUE(isRead || read == old || read == found) << read.size() << " rows";
            EXPECT_TRUE(afterScan(found) == found);
            return isReached;
        });
        EXPECT_GT(tried, 3);
    }
}

} // namespace orvanlite::test
