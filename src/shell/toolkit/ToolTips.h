#pragma once

#include <QString>

namespace orvanlite {

/// The text as a tooltip shows it letter by letter: names that people gave to things may look like markup.
[[nodiscard]] QString plainToolTip(const QString& text);

} // namespace orvanlite
