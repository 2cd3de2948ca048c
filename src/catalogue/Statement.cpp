#include "catalogue/Statement.h"

#include "catalogue/Connection.h"

#include <sqlite3.h>

namespace orvanlite {

Statement::Statement(Connection& connection, const QByteArray& sql)
    : m_connection(connection)
{
    // With a length that includes the terminating null, SQLite compiles the text without copying it.
    const int length = static_cast<int>(sql.size()) + 1;
    if (sqlite3* db = connection.handle())
        connection.note(sqlite3_prepare_v2(db, sql.constData(), length, &m_handle, nullptr));
}

Statement::~Statement() { sqlite3_finalize(m_handle); }

void Statement::bindText(int parameter, const QByteArray& text)
{
    // constData() is never null, even for a null array, so an empty text never becomes SQL NULL.
    sqlite3_bind_text(m_handle, parameter, text.constData(), static_cast<int>(text.size()), SQLITE_STATIC);
}

void Statement::bindCopy(int parameter, const QByteArray& text)
{
    // SQLITE_TRANSIENT, whose macro is a C-style cast.
    const auto copy = reinterpret_cast<sqlite3_destructor_type>(-1);
    sqlite3_bind_text(m_handle, parameter, text.constData(), static_cast<int>(text.size()), copy);
}

void Statement::bindInteger(int parameter, int value) { sqlite3_bind_int(m_handle, parameter, value); }

void Statement::bindReal(int parameter, double value) { sqlite3_bind_double(m_handle, parameter, value); }

void Statement::bindNull(int parameter) { sqlite3_bind_null(m_handle, parameter); }

bool Statement::step()
{
    if (!m_handle)
        return false;
    const int result = sqlite3_step(m_handle);
    const bool isQuery = sqlite3_stmt_readonly(m_handle) != 0;
    return (isQuery ? m_connection.note(result) : m_connection.noteChange(result)) == SQLITE_ROW;
}

void Statement::reset() { sqlite3_reset(m_handle); }

QByteArrayView Statement::text(int column) const
{
    // Through sqlite3_value, whose accessors take no lock; a statement is used by one thread only.
    sqlite3_value* value = sqlite3_column_value(m_handle, column);
    // Order matters: sqlite3_value_text may convert the value, and only then is the length right.
    const unsigned char* bytes = sqlite3_value_text(value);
    return {bytes, sqlite3_value_bytes(value)};
}

int Statement::integer(int column) const { return sqlite3_column_int(m_handle, column); }

std::optional<double> Statement::real(int column) const
{
    sqlite3_value* value = sqlite3_column_value(m_handle, column);
    if (sqlite3_value_type(value) == SQLITE_NULL)
        return std::nullopt;
    return sqlite3_value_double(value);
}

bool Statement::isOne(int column) const
{
    sqlite3_value* value = sqlite3_column_value(m_handle, column);
    return sqlite3_value_type(value) == SQLITE_INTEGER && sqlite3_value_int64(value) == 1;
}

} // namespace orvanlite
