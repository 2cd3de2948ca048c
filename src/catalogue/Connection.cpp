#include "catalogue/Connection.h"

#include <sqlite3.h>

#include <cerrno>

namespace orvanlite {

namespace {

void setPatience(sqlite3* db, std::chrono::milliseconds patience)
{
    sqlite3_busy_timeout(db, static_cast<int>(patience.count()));
}

} // namespace

bool Connection::open(const QString& path, std::chrono::milliseconds patience)
{
    // NOMUTEX: only the main thread uses the connection, and every column read would take the lock.
    constexpr int kFlags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_NOMUTEX;
    close();
    m_patience = patience;
    if (sqlite3_open_v2(path.toUtf8().constData(), &m_handle, kFlags, nullptr) != SQLITE_OK) {
        close(); // a failed open returns a handle as well
        return false;
    }
    // On purpose: the main thread waits for the brief locks of backup programs and readers. A row that is not
    // written shows a wrong state until the next scan, which is worse than a short delay.
    setPatience(m_handle, m_patience);
    // A 16 MB page cache, so that a large scan does not spill to disk before it commits. Only a tuning
    // setting: failure is ignored.
    sqlite3_exec(m_handle, "PRAGMA cache_size=-16000", nullptr, nullptr, nullptr);
    return true;
}

void Connection::close()
{
    sqlite3_close(m_handle);
    m_handle = nullptr;
    m_isDamaged = false;
    m_isOutOfSpace = false;
}

int Connection::note(int result)
{
    switch (result) {
    case SQLITE_CORRUPT:
    case SQLITE_NOTADB:
        m_isDamaged = true;
        break;
    case SQLITE_BUSY:
        if (m_sharesPatience)
            setPatience(m_handle, std::chrono::milliseconds(0));
        break;
    default:
        break;
    }
    return result;
}

int Connection::noteChange(int result)
{
    if (result == SQLITE_FULL) {
        m_isOutOfSpace = true;
    } else if (result == SQLITE_IOERR) {
        // A quota, and a full disk outside the database file itself.
        const int error = sqlite3_system_errno(m_handle);
        m_isOutOfSpace = m_isOutOfSpace || error == ENOSPC || error == EDQUOT;
    }
    return note(result);
}

bool Connection::isMarkedReadOnly() const
{
    constexpr sqlite3_int64 kWriteVersion = 18; // offset. Source: SQLite's file format
    // Through SQLite's own handle: closing another one would release its locks.
    sqlite3_file* file = nullptr;
    unsigned char version = 0;
    return m_handle &&
           sqlite3_file_control(m_handle, "main", SQLITE_FCNTL_FILE_POINTER, &file) == SQLITE_OK && file &&
           file->pMethods && file->pMethods->xRead(file, &version, 1, kWriteVersion) == SQLITE_OK &&
           version > 2;
}

bool Connection::isInTransaction() const { return m_handle && sqlite3_get_autocommit(m_handle) == 0; }

Connection::SharedPatience::SharedPatience(Connection& connection)
    : m_connection(connection)
{
    m_connection.m_sharesPatience = true;
}

Connection::SharedPatience::~SharedPatience()
{
    m_connection.m_sharesPatience = false;
    if (m_connection.m_handle)
        setPatience(m_connection.m_handle, m_connection.m_patience);
}

} // namespace orvanlite
