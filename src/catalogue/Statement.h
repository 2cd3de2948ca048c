#pragma once

#include <QByteArray>
#include <QByteArrayView>

#include <optional>

struct sqlite3_stmt;

namespace orvanlite {

class Connection;

/// Owns one prepared statement, from prepare to finalize.
///
/// Shape:   parameters count from 1, columns from 0; all text is UTF-8.
/// Errors:  not reported, only noted by the connection. A statement that could not be prepared accepts every
///          call and has no rows.
class Statement final {
public:
    Statement(Connection& connection, const QByteArray& sql);
    Statement(const Statement&) = delete;
    Statement& operator=(const Statement&) = delete;
    ~Statement();

    /// Binds without a copy: the text must live until the statement has run.
    void bindText(int parameter, const QByteArray& text);
    void bindText(int parameter, QByteArray&& text) = delete;
    /// Binds a text that SQLite copies.
    void bindCopy(int parameter, const QByteArray& text);
    void bindInteger(int parameter, int value);
    void bindReal(int parameter, double value);
    void bindNull(int parameter);

    /// Runs to the next row; false at the end and after an error.
    bool step();
    /// Makes the statement ready to run again and keeps its bindings.
    void reset();

    /// The column's bytes, valid until the next step; null only for SQL NULL.
    [[nodiscard]] QByteArrayView text(int column) const;
    [[nodiscard]] int integer(int column) const;
    /// Nothing only for SQL NULL.
    [[nodiscard]] std::optional<double> real(int column) const;
    /// Whether the column is the integer 1, without conversion from other numbers or text.
    [[nodiscard]] bool isOne(int column) const;

private:
    Connection& m_connection;
    sqlite3_stmt* m_handle = nullptr;
};

} // namespace orvanlite
