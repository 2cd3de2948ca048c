#pragma once

#include <QByteArray>
#include <QHash>

namespace orvanlite {

/// From the code that the document gives for a glyph to the intended one.
using TextCorrections = QHash<char16_t, char16_t>;

/// Corrects the ToUnicode maps in a document written by QPdfWriter, so that its text can be searched and
/// copied. The writer maps each glyph to its lowest code: a space becomes a tab, and a letter may become
/// another one that shares its glyph. Arabic presentation forms are replaced by the base letters.
/// Shape: no byte offset in the document changes.
void correctTextMaps(QByteArray& pdf, const TextCorrections& corrections);

} // namespace orvanlite
