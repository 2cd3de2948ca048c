#pragma once

#include <QByteArrayView>
#include <QString>

#include <optional>

namespace orvanlite {

/// The string "vendor" of the object "plugin" in a CLAP plugin's "clap.json". The last of duplicate keys
/// wins. Nothing else is stored, so that the size and depth of the file do not matter.
///
/// Errors: nothing for invalid JSON, or when either member is missing or has the wrong type.
[[nodiscard]] std::optional<QString> vendorInClapManifest(QByteArrayView text);

} // namespace orvanlite
