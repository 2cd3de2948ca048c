#include "model/Uuid.h"

#include <QRandomGenerator>

#include <array>

namespace orvanlite {

namespace {

constexpr qsizetype kTextLength = 36;

bool hyphenStandsAt(qsizetype position)
{
    return position == 8 || position == 13 || position == 18 || position == 23;
}

int hexValue(char c)
{
    if (c >= '0' && c <= '9')
        return c - '0';
    if (c >= 'A' && c <= 'F')
        return c - 'A' + 10;
    if (c >= 'a' && c <= 'f')
        return c - 'a' + 10;
    return -1;
}

/// Random words from the system, refilled 4 KiB at a time.
class RandomWords {
public:
    quint32 next()
    {
        if (m_next == m_words.size()) {
            QRandomGenerator::system()->fillRange(m_words.data(), static_cast<qsizetype>(m_words.size()));
            m_next = 0;
        }
        return m_words[m_next++];
    }

private:
    std::array<quint32, 1024> m_words{};
    std::size_t m_next = m_words.size();
};

} // namespace

QUuid makeUuid()
{
    static RandomWords words;
    const quint32 first = words.next();
    const quint32 second = words.next();
    const quint32 third = words.next();
    const quint32 fourth = words.next();
    const auto byte = [](quint32 word, int index) { return static_cast<uchar>(word >> (8 * index)); };
    // Version 4 in the third field, the variant in the two upper bits of the fourth.
    return QUuid(first, static_cast<ushort>(second), static_cast<ushort>((second >> 16 & 0x0FFF) | 0x4000),
                 static_cast<uchar>((byte(third, 0) & 0x3F) | 0x80), byte(third, 1), byte(third, 2),
                 byte(third, 3), byte(fourth, 0), byte(fourth, 1), byte(fourth, 2), byte(fourth, 3));
}

QByteArray uuidBytes(const QUuid& id)
{
    static constexpr char kDigits[] = "0123456789ABCDEF";
    QByteArray text(kTextLength, '-');
    char* out = text.data();
    qsizetype position = 0;
    const auto put = [&](quint32 value, int digits) {
        for (int shift = 4 * (digits - 1); shift >= 0; shift -= 4) {
            if (hyphenStandsAt(position))
                ++position;
            out[position++] = kDigits[value >> shift & 0xF];
        }
    };
    put(id.data1, 8);
    put(id.data2, 4);
    put(id.data3, 4);
    for (const uchar byte : id.data4)
        put(byte, 2);
    return text;
}

QString uuidText(const QUuid& id)
{
    return QString::fromLatin1(uuidBytes(id));
}

std::optional<QUuid> parseUuid(QByteArrayView text)
{
    if (text.size() != kTextLength)
        return std::nullopt;
    std::array<uchar, 16> bytes{};
    std::size_t digit = 0;
    for (qsizetype i = 0; i < kTextLength; ++i) {
        if (hyphenStandsAt(i)) {
            if (text[i] != '-')
                return std::nullopt;
            continue;
        }
        const int value = hexValue(text[i]);
        if (value < 0)
            return std::nullopt;
        bytes[digit / 2] = static_cast<uchar>(bytes[digit / 2] << 4 | value);
        ++digit;
    }
    return QUuid::fromRfc4122(QByteArrayView(bytes.data(), static_cast<qsizetype>(bytes.size())));
}

} // namespace orvanlite
