#pragma once

#include <QString>

namespace orvanlite {

/// The text escaped for use as a tooltip: user-defined names may look like markup.
[[nodiscard]] QString plainToolTip(const QString& text);

} // namespace orvanlite
