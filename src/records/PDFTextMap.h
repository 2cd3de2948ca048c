#pragma once

#include <QByteArray>
#include <QHash>

namespace orvanlite {

/// The code that the document gives for a sign, and the one that was meant.
using TextCorrections = QHash<char16_t, char16_t>;

/// Puts the maps from signs to text in a document of Qt's writer right, so that its texts are searched and copied
/// letter for letter. The writer takes the lowest code of each sign: every blank reads as a tab stop, and a letter
/// that shares its sign with another one may read as that. Joined Arabic letters become the letters themselves.
/// Shape: nothing changes its place in the document.
void correctTextMaps(QByteArray& pdf, const TextCorrections& corrections);

} // namespace orvanlite
