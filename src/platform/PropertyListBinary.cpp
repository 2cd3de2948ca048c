#include "platform/PropertyList.h"

#include <QtEndian>

namespace orvanlite::platform {

namespace {

constexpr qsizetype kHeaderSize = 8;
constexpr qsizetype kTrailerSize = 32;

/// A count, reference or offset is out of range.
struct Malformed {};

enum class Kind { ascii, utf16, list, dictionary, other };

/// An object in the data. `count` is the number of characters, members or pairs from `start` on, already
/// checked to be inside the data.
struct Object {
    Kind kind = Kind::other;
    quint64 start = 0;
    quint64 count = 0;

    [[nodiscard]] bool isText() const { return kind == Kind::ascii || kind == Kind::utf16; }
};

/// Access to the objects of a binary list by their number. Objects are decoded only on request and references
/// are not followed automatically, so shared references and cycles cost nothing.
class BinaryReader {
public:
    /// Throws Malformed unless the trailer and the offset table account for every byte of the data. Also
    /// checks the references in arrays and dictionaries, see checkReferences().
    explicit BinaryReader(QByteArrayView data)
        : m_data(data)
    {
        if (data.size() < kHeaderSize + kTrailerSize)
            throw Malformed();
        const auto trailer = static_cast<quint64>(data.size() - kTrailerSize);
        m_offsetSize = number(trailer + 6, 1);
        m_referenceSize = number(trailer + 7, 1);
        m_objects = number(trailer + 8, 8);
        m_root = number(trailer + 16, 8);
        m_table = number(trailer + 24, 8);
        if (m_offsetSize < 1 || m_offsetSize > 8 || m_referenceSize < 1 || m_referenceSize > 8 ||
            m_table < kHeaderSize || m_table > trailer || (trailer - m_table) % m_offsetSize != 0 ||
            (trailer - m_table) / m_offsetSize != m_objects)
            throw Malformed();
        for (quint64 i = 0; i < m_objects; ++i) {
            const quint64 offset = offsetOf(i);
            if (offset < kHeaderSize || offset >= m_table)
                throw Malformed();
        }
        checkReferences();
    }

    [[nodiscard]] Object root() const { return object(m_root); }

    /// A member of an array, or of a dictionary, which has all keys first and then all values.
    [[nodiscard]] Object member(const Object& container, quint64 index) const
    {
        return object(number(container.start + index * m_referenceSize, m_referenceSize));
    }

    [[nodiscard]] bool isEqual(const Object& text, QLatin1StringView wanted) const
    {
        if (text.count != static_cast<quint64>(wanted.size()))
            return false;
        if (text.kind == Kind::ascii)
            return QLatin1StringView(bytes(text.start), wanted.size()) == wanted;
        return decoded(text) == wanted;
    }

    /// Empty for an object that is not a string.
    [[nodiscard]] std::optional<QString> text(const Object& object) const
    {
        if (!object.isText())
            return std::nullopt;
        return decoded(object);
    }

private:
    /// Throws Malformed for any count or reference out of range. Objects that share their bytes could make
    /// this take hours; as no tool writes them, the check stops at more members than the data has bytes.
    void checkReferences() const
    {
        quint64 left = m_table;
        for (quint64 i = 0; i < m_objects; ++i) {
            const Object each = object(i);
            if (each.kind != Kind::list && each.kind != Kind::dictionary)
                continue;
            const quint64 members = each.kind == Kind::dictionary ? 2 * each.count : each.count;
            if (members > left)
                return;
            left -= members;
            for (quint64 index = 0; index < members; ++index) {
                if (number(each.start + index * m_referenceSize, m_referenceSize) >= m_objects)
                    throw Malformed();
            }
        }
    }

    [[nodiscard]] const char* bytes(quint64 position) const { return m_data.data() + position; }

    [[nodiscard]] quint64 number(quint64 position, quint64 size) const
    {
        quint64 value = 0;
        for (quint64 i = 0; i < size; ++i)
            value = value << 8 | static_cast<quint8>(*bytes(position + i));
        return value;
    }

    [[nodiscard]] quint64 offsetOf(quint64 reference) const
    {
        return number(m_table + reference * m_offsetSize, m_offsetSize);
    }

    [[nodiscard]] Object object(quint64 reference) const
    {
        if (reference >= m_objects)
            throw Malformed();
        const quint64 position = offsetOf(reference);
        const quint64 marker = number(position, 1);
        switch (marker >> 4) {
        case 0x5:
            return counted(Kind::ascii, position, marker, 1);
        case 0x6:
            return counted(Kind::utf16, position, marker, 2);
        case 0xA:
            return counted(Kind::list, position, marker, m_referenceSize);
        case 0xD:
            return counted(Kind::dictionary, position, marker, 2 * m_referenceSize);
        default:
            return {};
        }
    }

    /// The count is in the lower four bits of the marker or, if all of them are set, in an integer after it.
    [[nodiscard]] Object counted(Kind kind, quint64 position, quint64 marker, quint64 unit) const
    {
        Object found{kind, position + 1, marker & 0xF};
        if (found.count == 0xF) {
            const quint64 sizeMarker = found.start < m_table ? number(found.start, 1) : 0;
            const quint64 size = quint64(1) << (sizeMarker & 0xF);
            if (sizeMarker >> 4 != 0x1 || size > 8 || size >= m_table - found.start)
                throw Malformed();
            found.count = number(found.start + 1, size);
            found.start += 1 + size;
        }
        if (found.count > (m_table - found.start) / unit)
            throw Malformed();
        return found;
    }

    [[nodiscard]] QString decoded(const Object& text) const
    {
        const auto count = static_cast<qsizetype>(text.count);
        if (text.kind == Kind::ascii)
            return QString::fromLatin1(bytes(text.start), count);
        QString units(count, Qt::Uninitialized);
        qFromBigEndian<char16_t>(bytes(text.start), count, units.data());
        return units;
    }

    QByteArrayView m_data;
    quint64 m_offsetSize = 0;
    quint64 m_referenceSize = 0;
    quint64 m_objects = 0;
    quint64 m_root = 0;
    quint64 m_table = 0; ///< start of the offset table, which is the end of the objects
};

std::optional<QString> textInFirstDictionary(const BinaryReader& reader, const Object& list,
                                             QLatin1StringView wanted)
{
    if (list.kind != Kind::list)
        return std::nullopt;
    for (quint64 i = 0; i < list.count; ++i) {
        if (reader.member(list, i).kind != Kind::dictionary)
            return std::nullopt;
    }
    Object value; // the last one of equal keys; decoded once, as many may share one long string
    const Object first = list.count == 0 ? Object() : reader.member(list, 0);
    for (quint64 i = 0; i < first.count; ++i) {
        const Object key = reader.member(first, i);
        if (!key.isText())
            return std::nullopt;
        if (reader.isEqual(key, wanted))
            value = reader.member(first, first.count + i);
    }
    return reader.text(value);
}

} // namespace

std::optional<PropertyListTexts> readBinaryPropertyList(QByteArrayView data,
                                                        std::span<const PropertyListField> wanted)
try {
    const BinaryReader reader(data);
    const Object root = reader.root();
    if (root.kind != Kind::dictionary)
        return std::nullopt;
    // Find the last value of equal keys before decoding: many equal keys could refer to the same long array.
    std::vector<Object> values(wanted.size());
    for (quint64 i = 0; i < root.count; ++i) {
        const Object key = reader.member(root, i);
        const Object value = reader.member(root, root.count + i);
        if (!key.isText())
            return std::nullopt;
        for (std::size_t field = 0; field < wanted.size(); ++field) {
            if (reader.isEqual(key, wanted[field].key))
                values[field] = value;
        }
    }
    PropertyListTexts answers(wanted.size());
    for (std::size_t field = 0; field < wanted.size(); ++field) {
        const QLatin1StringView inner = wanted[field].keyInFirstDictionary;
        answers[field] = inner.isEmpty() ? reader.text(values[field])
                                         : textInFirstDictionary(reader, values[field], inner);
    }
    return answers;
} catch (const Malformed&) {
    return std::nullopt;
}

} // namespace orvanlite::platform
