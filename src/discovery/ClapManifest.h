#pragma once

#include <QByteArrayView>
#include <QString>

#include <optional>

namespace orvanlite {

/// The text "vendor" of the object "plugin" in "clap.json", the description of a CLAP plugin. Of equal keys
/// the last one counts. Nothing is kept of the rest, so neither its size nor its depth matters.
///
/// Errors: nothing for a text that is no JSON as a whole, and where one of the two is missing or of another
///         type.
[[nodiscard]] std::optional<QString> vendorInClapManifest(QByteArrayView text);

} // namespace orvanlite
