#pragma once

#include "model/Date.h"
#include "model/RawValue.h"

#include <QByteArray>
#include <QUuid>

#include <vector>

namespace orvanlite {

/// A user's action on a plugin. The raw values are stored and shown.
enum class ActivityAction { enabled, disabled, deleted };

template <>
struct RawValueTable<ActivityAction> {
    static constexpr std::array<RawValueRow<ActivityAction>, 3> rows{{
        {ActivityAction::enabled, u"Enabled"},
        {ActivityAction::disabled, u"Disabled"},
        {ActivityAction::deleted, u"Deleted"},
    }};
};

/// One entry of the activity log.
struct ActivityLogEntry {
    QUuid id;
    Date timestamp;
    QString pluginName; ///< at the time of the action
    QString format;     ///< the format's raw value
    ActivityAction action = ActivityAction::enabled;

    /// The age at `now`, e.g. "just now" (also for a future date), "5m ago", "yesterday", "3d ago".
    [[nodiscard]] QString timeAgo(Date now) const;

    bool operator==(const ActivityLogEntry&) const = default;
};

/// A compact list of objects with the fields in declared order.
[[nodiscard]] QByteArray encodeActivityLog(const std::vector<ActivityLogEntry>& entries);
/// Errors: empty for anything but a list of entries. A missing key, a wrong type, an invalid UUID or an
///         unknown action in one entry invalidates the whole list.
[[nodiscard]] std::vector<ActivityLogEntry> decodeActivityLog(QByteArrayView json);

} // namespace orvanlite
