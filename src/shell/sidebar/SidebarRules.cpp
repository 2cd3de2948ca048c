#include "shell/sidebar/SidebarRules.h"

#include "model/TextOrder.h"

#include <QStringList>

#include <algorithm>

namespace orvanlite {

using namespace Qt::StringLiterals;

namespace {

/// From this number of manufacturers on, only the first is named.
constexpr qsizetype kManyManufacturers = 3;

QString word(BulkAction action)
{
    switch (action) {
    case BulkAction::enable:
        return u"Enable"_s;
    case BulkAction::disable:
        return u"Disable"_s;
    case BulkAction::delete_:
        break;
    }
    return u"Delete"_s;
}

QString sortedNames(const QSet<PluginFormat>& formats)
{
    QStringList names;
    for (const PluginFormat format : formats)
        names.append(rawValue(format));
    return plainSorted(names).join(u", "_s);
}

QString joined(QStringList parts, const QString& separator)
{
    parts.removeAll(QString());
    return parts.join(separator);
}

} // namespace

QString enableDisableButtonLabel(BulkAction action, const PluginFilter& filter)
{
    if (!filter.hasSidebarFilters())
        return word(action) + u" All"_s;
    if (filter.formats.size() == 1 && filter.manufacturers.isEmpty())
        return word(action) + u" All "_s + rawValue(*filter.formats.begin());
    return word(action) + u" Filtered"_s;
}

QString sidebarWarningMessage(BulkAction action, const AudioPlugins& filtered, const PluginFilter& filter)
{
    const auto count = std::count_if(filtered.begin(), filtered.end(), [action](const AudioPlugin& each) {
        return action == BulkAction::delete_ || each.isEnabled == (action == BulkAction::disable);
    });
    const QString filters =
        joined({sortedNames(filter.formats), plainSorted(filter.manufacturers).join(u", "_s)}, u" + "_s);
    if (action == BulkAction::delete_) {
        const QString what =
            filter.hasSidebarFilters() ? u"filtered by: "_s + filters : u"from your system"_s;
        return u"⚠️ This will PERMANENTLY DELETE "_s + QString::number(count) + u" plugins "_s + what +
               u". This cannot be undone!"_s;
    }
    const QString verb = word(action).toLower();
    if (filter.hasSidebarFilters())
        return u"This will "_s + verb + u' ' + QString::number(count) + u" plugins filtered by: "_s +
               filters + u'.';
    return u"This will %1 ALL %2 %3 plugins across every format and manufacturer, regardless of any active filters."_s
        .arg(verb, QString::number(count), action == BulkAction::enable ? u"disabled"_s : u"enabled"_s);
}

QString filterSummary(const PluginFilter& filter)
{
    const QStringList names = plainSorted(filter.manufacturers);
    const QString manufacturers =
        names.size() < kManyManufacturers
            ? names.join(u", "_s)
            : names.first() + u" +"_s + QString::number(names.size() - 1) + u" more"_s;
    return joined({sortedNames(filter.formats), manufacturers}, u" · "_s);
}

} // namespace orvanlite
