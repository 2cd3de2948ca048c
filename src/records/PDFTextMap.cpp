#include "records/PDFTextMap.h"

#include <QString>

#include <algorithm>

namespace orvanlite {

namespace {

constexpr char16_t kFirstJoinedForm = 0xFB50;
constexpr char16_t kLastJoinedForm = 0xFEFF;
constexpr qsizetype kCodeLength = 4; // "0041"

char16_t corrected(char16_t code, const TextCorrections& corrections)
{
    if (const auto found = corrections.constFind(code); found != corrections.constEnd())
        return *found;
    if (code < kFirstJoinedForm || code > kLastJoinedForm)
        return code;
    const QString letters = QString(QChar(code)).normalized(QString::NormalizationForm_KC);
    // The map has room for one code only: ligatures of several letters stay.
    return letters.size() == 1 ? letters.front().unicode() : code;
}

/// One line of a bfrange: first and last glyph number, then the character codes.
void correctRange(char* begin, char* end, const TextCorrections& corrections)
{
    int index = 0;
    for (char* open = std::find(begin, end, '<'); end - open > kCodeLength;
         open = std::find(open + 1, end, '<'), ++index) {
        if (index < 2)
            continue;
        const QByteArray old(open + 1, kCodeLength);
        const char16_t code = corrected(static_cast<char16_t>(old.toUShort(nullptr, 16)), corrections);
        const QByteArray hex = QByteArray::number(code, 16).toUpper().rightJustified(kCodeLength, '0');
        std::copy(hex.begin(), hex.end(), open + 1);
    }
}

} // namespace

void correctTextMaps(QByteArray& pdf, const TextCorrections& corrections)
{
    constexpr QByteArrayView kBegin("beginbfrange\n");
    for (qsizetype begin = pdf.indexOf(kBegin); begin >= 0; begin = pdf.indexOf(kBegin, begin)) {
        begin += kBegin.size();
        const qsizetype end = pdf.indexOf("endbfrange", begin);
        if (end < 0)
            return;
        while (begin < end) {
            const qsizetype next = pdf.indexOf('\n', begin) + 1;
            correctRange(pdf.data() + begin, pdf.data() + next, corrections);
            begin = next;
        }
    }
}

} // namespace orvanlite
