#include "model/Uuid.h"

#include <QRandomGenerator>

#include <array>

namespace orvanlite {

namespace {

constexpr qsizetype kTextLength = 36;

bool isHyphenPosition(qsizetype position)
{
    return position == 8 || position == 13 || position == 18 || position == 23;
}

/// Value of each byte as a hexadecimal digit; -1 for other bytes.
constexpr auto kHexValues = [] {
    std::array<signed char, 256> values{};
    values.fill(-1);
    for (signed char i = 0; i < 10; ++i)
        values[static_cast<std::size_t>('0' + i)] = i;
    for (signed char i = 0; i < 6; ++i) {
        values[static_cast<std::size_t>('A' + i)] = static_cast<signed char>(10 + i);
        values[static_cast<std::size_t>('a' + i)] = static_cast<signed char>(10 + i);
    }
    return values;
}();

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
    // Version 4 in the third field, the variant in the upper two bits of the fourth.
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
            if (isHyphenPosition(position))
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

QString uuidText(const QUuid& id) { return QString::fromLatin1(uuidBytes(id)); }

std::optional<QUuid> parseUuid(QByteArrayView text)
{
    if (text.size() != kTextLength)
        return std::nullopt;
    // Called for every row read: the digits are checked together at the end instead of one by one.
    static constexpr std::array<qsizetype, 16> kPairs{0,  2,  4,  6,  9,  11, 14, 16,
                                                      19, 21, 24, 26, 28, 30, 32, 34};
    const auto digit = [text](qsizetype position) {
        return int(kHexValues[static_cast<uchar>(text[position])]);
    };
    std::array<uchar, 16> bytes{};
    int checked = 0;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        const int high = digit(kPairs[i]);
        const int low = digit(kPairs[i] + 1);
        checked |= high | low; // negative once any digit is invalid
        bytes[i] = static_cast<uchar>(static_cast<unsigned>(high) << 4 | static_cast<unsigned>(low));
    }
    if (checked < 0 || text[8] != '-' || text[13] != '-' || text[18] != '-' || text[23] != '-')
        return std::nullopt;
    return QUuid::fromRfc4122(QByteArrayView(bytes.data(), static_cast<qsizetype>(bytes.size())));
}

} // namespace orvanlite
