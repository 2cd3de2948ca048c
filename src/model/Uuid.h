#pragma once

#include <QUuid>

#include <optional>

namespace orvanlite {

/// A new random UUID (version 4). The random bytes are fetched from the system in bulk: a scan makes tens of
/// thousands of ids, and a call each would be most of their cost.
[[nodiscard]] QUuid makeUuid();

/// The canonical text form: upper-case with hyphens, without braces.
[[nodiscard]] QString uuidText(const QUuid& id);
/// The same as ASCII bytes.
[[nodiscard]] QByteArray uuidBytes(const QUuid& id);

/// Reads the canonical form of 36 characters, in either letter case.
[[nodiscard]] std::optional<QUuid> parseUuid(QByteArrayView text);

} // namespace orvanlite
