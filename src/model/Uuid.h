#pragma once

#include <QUuid>

#include <optional>

namespace orvanlite {

/// A new random UUID (version 4). Random bytes are fetched from the system in bulk: a scan creates tens of
/// thousands of ids, and one system call each would dominate their cost.
[[nodiscard]] QUuid makeUuid();

/// Canonical text form: upper case with hyphens, without braces.
[[nodiscard]] QString uuidText(const QUuid& id);
/// The same as ASCII bytes.
[[nodiscard]] QByteArray uuidBytes(const QUuid& id);

/// Parses the canonical form of 36 characters, case-insensitively.
[[nodiscard]] std::optional<QUuid> parseUuid(QByteArrayView text);

} // namespace orvanlite
