#pragma once

#include "catalogue/PluginDatabase.h"
#include "model/Uuid.h"
#include "support/Fakes.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

namespace orvanlite::test {

using namespace Qt::StringLiterals;

/// A second connection that looks at the raw rows, or holds a lock.
class RawConnection {
public:
    explicit RawConnection(const QString& path) { sqlite3_open(path.toUtf8().constData(), &m_db); }
    RawConnection(const RawConnection&) = delete;
    RawConnection& operator=(const RawConnection&) = delete;
    ~RawConnection() { sqlite3_close(m_db); }

    /// Runs the text and gives the rows, columns joined by "|"; fails the test on an error.
    QStringList run(const QString& sql)
    {
        QStringList rows;
        const auto keep = [](void* list, int count, char** values, char**) {
            QStringList cells;
            for (int i = 0; i < count; ++i)
                cells << QString::fromUtf8(values[i] ? values[i] : "NULL");
            static_cast<QStringList*>(list)->append(cells.join(u'|'));
            return 0;
        };
        EXPECT_EQ(sqlite3_exec(m_db, sql.toUtf8().constData(), keep, &rows, nullptr), SQLITE_OK)
            << sqlite3_errmsg(m_db);
        return rows;
    }

private:
    sqlite3* m_db = nullptr;
};

/// A record with a new id; enabled, of version 1.0.
inline AudioPlugin plugin(const QString& name, PluginFormat format = PluginFormat::vst3,
                          const QString& maker = u"Maker"_s)
{
    AudioPlugin made;
    made.id = makeUuid();
    made.name = name;
    made.manufacturer = maker;
    made.format = format;
    made.originalPath = made.currentPath = u"/Library/"_s + name;
    made.version = u"1.0"_s;
    return made;
}

inline QString names(const AudioPlugins& plugins)
{
    QStringList list;
    for (const AudioPlugin& each : plugins)
        list << each.name;
    return list.join(u' ');
}

class CatalogueTest : public testing::Test {
protected:
    AudioPlugins all(const PluginDatabase& database)
    {
        return database.queryPlugins({}, "name"_L1, true, 1000, 0);
    }
    /// What the function prints.
    template <typename Function>
    QString printed(Function&& function)
    {
        testing::internal::CaptureStdout();
        function();
        return QString::fromStdString(testing::internal::GetCapturedStdout());
    }

    TestPlatform m_system;
    const platform::Platform& m_platform = m_system.platform;
    QString m_path = m_system.layout.applicationFolder() + u"/plugins.db"_s;
};

} // namespace orvanlite::test
