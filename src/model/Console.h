#pragma once

#include <QString>

namespace orvanlite {

/// Writes the text and a line end to standard output, in UTF-8.
void printLine(const QString& text);

} // namespace orvanlite
