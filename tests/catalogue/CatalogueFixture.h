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

    /// Runs the text and gives the first column of its rows; fails the test on an error.
    QStringList run(const QString& sql)
    {
        QStringList rows;
        const auto keep = [](void* list, int, char** values, char**) {
            static_cast<QStringList*>(list)->append(QString::fromUtf8(values[0]));
            return 0;
        };
        EXPECT_EQ(sqlite3_exec(m_db, sql.toUtf8().constData(), keep, &rows, nullptr), SQLITE_OK)
            << sqlite3_errmsg(m_db);
        return rows;
    }

private:
    sqlite3* m_db = nullptr;
};

inline AudioPlugin plugin(const QString& name, PluginFormat format = PluginFormat::vst3,
                          const QString& maker = u"Maker"_s)
{
    const QString path = u"/Library/"_s + name;
    return {makeUuid(), name, maker, format, path, path, true, u"1.0"_s, std::nullopt, std::nullopt};
}

inline QString names(const AudioPlugins& plugins)
{
    QStringList list;
    for (const AudioPlugin& each : plugins)
        list << each.name;
    return list.join(u' ');
}

inline AudioPlugins all(const PluginDatabase& database)
{
    return database.queryPlugins({}, "name"_L1, true, 1000, 0);
}

/// What the function prints.
template <typename Function>
std::string printed(Function&& function)
{
    testing::internal::CaptureStdout();
    function();
    return testing::internal::GetCapturedStdout();
}

} // namespace orvanlite::test
