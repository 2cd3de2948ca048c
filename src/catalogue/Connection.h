#pragma once

#include <QString>

#include <chrono>

struct sqlite3;

namespace orvanlite {

/// An SQLite connection that remembers what its statements report about the file. Without an open file it has
/// no handle, and its statements have no rows.
class Connection final {
public:
    Connection() = default;
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;
    ~Connection() { close(); }

    /// Opens or creates the file. `patience` is how long each statement waits for another process's lock.
    bool open(const QString& path, std::chrono::milliseconds patience);
    /// Forgets what has been noted. Requires that no statement exists.
    void close();
    [[nodiscard]] sqlite3* handle() const { return m_handle; }

    /// Notes the result of a call and returns it.
    int note(int result);
    /// note() for a call that may change rows, which are lost when the disk is full. A query that finds no
    /// space for sorting loses nothing.
    int noteChange(int result);
    void noteDamage() { m_isDamaged = true; }
    /// Whether the file turned out to be damaged or no database.
    [[nodiscard]] bool isDamaged() const { return m_isDamaged; }
    /// Whether the file's header asks for a later version of SQLite to write it. We never write such a one.
    [[nodiscard]] bool isMarkedReadOnly() const;
    /// Whether a change was lost because the disk is full.
    [[nodiscard]] bool isOutOfSpace() const { return m_isOutOfSpace; }
    /// Whether a transaction is open. A full disk can end one in its middle.
    [[nodiscard]] bool isInTransaction() const;
    void forgetOutOfSpace() { m_isOutOfSpace = false; }

    /// While in scope, the statements wait only once for a lock of another process: the first one that does
    /// not get it takes the patience of all others.
    class SharedPatience {
    public:
        explicit SharedPatience(Connection& connection);
        SharedPatience(const SharedPatience&) = delete;
        SharedPatience& operator=(const SharedPatience&) = delete;
        ~SharedPatience();

    private:
        Connection& m_connection;
    };

private:
    sqlite3* m_handle = nullptr;
    std::chrono::milliseconds m_patience{};
    bool m_isDamaged = false;
    bool m_isOutOfSpace = false;
    bool m_sharesPatience = false;
};

} // namespace orvanlite
