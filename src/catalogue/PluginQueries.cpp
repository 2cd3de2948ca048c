#include "catalogue/PluginDatabase.h"
#include "catalogue/Statement.h"
#include "model/TextOrder.h"
#include "model/Uuid.h"
#include "platform/Utf8.h"

#include <algorithm>
#include <string>

namespace orvanlite {

using namespace Qt::StringLiterals;

namespace {

constexpr int kUsualPage = 256;

/// A WHERE clause and its parameter values, in the order of the conditions.
class WhereClause {
public:
    void addSearch(const QString& searchText)
    {
        if (searchText.isEmpty())
            return;
        // On purpose: nothing is escaped, so that users can search with the wildcards.
        add("(name LIKE ? OR manufacturer LIKE ?)");
        const QByteArray pattern = '%' + searchText.toUtf8() + '%';
        m_values << pattern << pattern;
    }

    /// Sorted, so that equal sets give the same statement and values in every call.
    void addMembership(const QByteArray& expression, const QStringList& sortedTexts)
    {
        if (sortedTexts.isEmpty())
            return;
        add(expression + " IN (" + placeholders(sortedTexts.size()) + ')');
        for (const QString& text : sortedTexts)
            m_values << text.toUtf8();
    }

    static QByteArray placeholders(qsizetype count)
    {
        QByteArray text = QByteArray("?, ").repeated(count);
        text.chop(2);
        return text;
    }

    /// Empty without conditions.
    [[nodiscard]] const QByteArray& sql() const { return m_sql; }

    /// Binds from index 1 without copying: the clause must outlive the statement's run. Returns the next free
    /// index.
    int bindTo(Statement& statement) const
    {
        int parameter = 1;
        for (const QByteArray& value : m_values)
            statement.bindText(parameter++, value);
        return parameter;
    }

private:
    void add(const QByteArray& condition)
    {
        m_sql += m_sql.isEmpty() ? "WHERE " : " AND ";
        m_sql += condition;
    }

    QByteArray m_sql;
    QByteArrayList m_values;
};

enum class KeyFilter { use, leaveOut };

WhereClause whereClause(const PluginFilter& filter, KeyFilter keyFilter)
{
    QStringList formats;
    for (const PluginFormat format : filter.formats)
        formats << rawValue(format);

    WhereClause where;
    where.addSearch(filter.searchText);
    where.addMembership("format", plainSorted(formats));
    where.addMembership("manufacturer", plainSorted(filter.manufacturers));
    if (keyFilter == KeyFilter::use)
        where.addMembership("(name || '|' || format)", plainSorted(filter.pluginKeys));
    return where;
}

std::optional<PluginFormat> formatFromColumn(QByteArrayView text)
{
    // Compared as bytes: all raw values are ASCII, and this saves a QString per row.
    for (const auto& row : RawValueTable<PluginFormat>::rows) {
        if (row.text == QLatin1StringView(text))
            return row.value;
    }
    return std::nullopt;
}

/// An absent text is stored as an empty one.
std::optional<QString> optionalText(QByteArrayView text)
{
    if (text.isEmpty())
        return std::nullopt;
    return platform::fromUtf8(text);
}

} // namespace

std::optional<AudioPlugin> PluginDatabase::pluginFromRow(const Statement& statement)
{
    const auto id = parseUuid(statement.text(0));
    const QByteArrayView name = statement.text(1);
    const QByteArrayView manufacturer = statement.text(2);
    const auto format = formatFromColumn(statement.text(3));
    const QByteArrayView originalPath = statement.text(4);
    const QByteArrayView currentPath = statement.text(5);
    if (!id || name.isNull() || manufacturer.isNull() || !format || originalPath.isNull() ||
        currentPath.isNull())
        return std::nullopt;

    std::optional<AudioPlugin> plugin(std::in_place);
    plugin->id = *id;
    plugin->name = platform::fromUtf8(name);
    plugin->manufacturer = platform::fromUtf8(manufacturer);
    plugin->format = *format;
    plugin->originalPath = platform::fromUtf8(originalPath);
    // Most plugins are at their original path: share one string.
    plugin->currentPath =
        currentPath == originalPath ? plugin->originalPath : platform::fromUtf8(currentPath);
    plugin->isEnabled = statement.isOne(6);
    plugin->version = optionalText(statement.text(7));
    plugin->bundleIdentifier = optionalText(statement.text(8));
    if (const auto lastUsed = statement.real(9))
        plugin->lastUsed = Date::fromUnix(*lastUsed);
    return plugin;
}

AudioPlugins PluginDatabase::queryPlugins(const PluginFilter& filter, QLatin1StringView sortColumn,
                                          bool sortAscending, int limit, int offset) const
{
    const WhereClause where = whereClause(filter, KeyFilter::use);
    QByteArray sql("SELECT id, name, manufacturer, format, originalPath, currentPath, isEnabled, version, "
                   "bundleIdentifier, lastUsed\nFROM plugins\n");
    sql += where.sql();
    sql += "\nORDER BY " + QByteArrayView(sortColumn).toByteArray() + " COLLATE NOCASE ";
    sql += sortAscending ? "ASC" : "DESC";
    sql += "\nLIMIT ? OFFSET ?";

    Statement statement(m_connection, sql);
    const int next = where.bindTo(statement);
    statement.bindInteger(next, limit);
    statement.bindInteger(next + 1, offset);
    AudioPlugins plugins;
    // Only a hint: callers may pass any limit, and SQLite takes a negative one as no limit.
    plugins.reserve(static_cast<std::size_t>(std::clamp(limit, 0, kUsualPage)));
    while (statement.step()) {
        if (auto plugin = pluginFromRow(statement))
            plugins.push_back(std::move(*plugin));
    }
    return plugins;
}

int PluginDatabase::totalCount(const PluginFilter& filter) const
{
    const WhereClause where = whereClause(filter, KeyFilter::use);
    Statement statement(m_connection, "SELECT COUNT(*) FROM plugins " + where.sql());
    where.bindTo(statement);
    return statement.step() ? statement.integer(0) : 0;
}

QSet<QUuid> PluginDatabase::getAllFilteredPluginIds(const PluginFilter& filter) const
{
    const WhereClause where = whereClause(filter, KeyFilter::leaveOut);
    Statement statement(m_connection, "SELECT id FROM plugins " + where.sql());
    where.bindTo(statement);
    QSet<QUuid> ids;
    while (statement.step()) {
        if (const auto id = parseUuid(statement.text(0)))
            ids.insert(*id);
    }
    return ids;
}

QSet<QString> PluginDatabase::getAllPluginKeys() const
{
    Statement statement(m_connection, "SELECT name, format FROM plugins");
    QSet<QString> keys;
    std::string key; // joined as bytes, so that each key is converted once
    while (statement.step()) {
        const QByteArrayView name = statement.text(0);
        const QByteArrayView format = statement.text(1);
        if (name.isNull() || format.isNull())
            continue;
        key.assign(name.begin(), name.end()).append(1, '|').append(format.begin(), format.end());
        keys.insert(platform::fromUtf8(key));
    }
    return keys;
}

QStringList PluginDatabase::getDistinctManufacturers() const
{
    Statement statement(m_connection,
                        "SELECT DISTINCT manufacturer FROM plugins ORDER BY manufacturer COLLATE NOCASE");
    QStringList manufacturers;
    while (statement.step()) {
        if (const QByteArrayView manufacturer = statement.text(0); !manufacturer.isEmpty())
            manufacturers << platform::fromUtf8(manufacturer);
    }
    return manufacturers;
}

AudioPlugins PluginDatabase::getPluginsByIds(const QSet<QUuid>& ids) const
{
    if (ids.isEmpty())
        return {};
    QByteArrayList texts;
    texts.reserve(ids.size());
    for (const QUuid& id : ids)
        texts << uuidBytes(id);
    std::sort(texts.begin(), texts.end());

    Statement statement(m_connection, "SELECT * FROM plugins WHERE id IN (" +
                                          WhereClause::placeholders(texts.size()) + ')');
    int parameter = 1;
    for (const QByteArray& text : texts)
        statement.bindCopy(parameter++, text);
    AudioPlugins plugins;
    while (statement.step()) {
        if (auto plugin = pluginFromRow(statement))
            plugins.push_back(std::move(*plugin));
    }
    return plugins;
}

int PluginDatabase::countPlugins(bool enabled) const
{
    Statement statement(m_connection, enabled ? "SELECT COUNT(*) FROM plugins WHERE isEnabled = 1"
                                              : "SELECT COUNT(*) FROM plugins WHERE isEnabled = 0");
    return statement.step() ? statement.integer(0) : 0;
}

} // namespace orvanlite
