#pragma once

#include <QByteArray>
#include <QStringList>

namespace orvanlite {

/// A list of plugin keys in transferable form, e.g. for drag and drop.
struct PluginKeyTransfer {
    QStringList keys;

    /// Source: the media type of RFC 8259.
    static constexpr char kMimeType[] = "application/json";

    /// One object with the single member "keys", even for an empty list.
    [[nodiscard]] QByteArray encoded() const;
    /// Errors: JsonError for anything but an object with a list of strings under "keys".
    [[nodiscard]] static PluginKeyTransfer decoded(QByteArrayView json);

    bool operator==(const PluginKeyTransfer&) const = default;
};

} // namespace orvanlite
