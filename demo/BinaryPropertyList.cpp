#include "demo/BinaryPropertyList.h"

#include <algorithm>
#include <stdexcept>

namespace orvanlite::demo {

namespace {

constexpr quint8 kInteger16 = 0x11;
constexpr quint8 kAsciiText = 0x50;
constexpr quint8 kUtf16Text = 0x60;
constexpr quint8 kList = 0xA0;
constexpr quint8 kDictionary = 0xD0;
constexpr char kMagic[] = "bplist00";

void putBigEndian(QByteArray& out, quint64 value, int bytes)
{
    for (int shift = 8 * (bytes - 1); shift >= 0; shift -= 8)
        out.append(static_cast<char>(value >> shift & 0xFF));
}

} // namespace

BinaryPropertyListWriter::Reference BinaryPropertyListWriter::startObject()
{
    if (m_starts.size() >= 255)
        throw std::length_error("too many values for one-byte references");
    m_starts.push_back(static_cast<qsizetype>(sizeof kMagic - 1) + m_objects.size());
    return static_cast<Reference>(m_starts.size() - 1);
}

void BinaryPropertyListWriter::putMarker(quint8 kind, qsizetype count)
{
    if (count > 0xFFFF)
        throw std::length_error("too long for a property list of the demo");
    putBigEndian(m_objects, kind | static_cast<quint64>(std::min<qsizetype>(count, 15)), 1);
    if (count >= 15) {
        putBigEndian(m_objects, kInteger16, 1);
        putBigEndian(m_objects, static_cast<quint64>(count), 2);
    }
}

BinaryPropertyListWriter::Reference BinaryPropertyListWriter::addText(const QString& text)
{
    const Reference reference = startObject();
    if (std::all_of(text.begin(), text.end(), [](QChar c) { return c.unicode() < 0x80; })) {
        putMarker(kAsciiText, text.size());
        m_objects += text.toLatin1();
        return reference;
    }
    putMarker(kUtf16Text, text.size());
    for (const QChar unit : text)
        putBigEndian(m_objects, unit.unicode(), 2);
    return reference;
}

BinaryPropertyListWriter::Reference BinaryPropertyListWriter::addList(const std::vector<Reference>& items)
{
    const Reference reference = startObject();
    putMarker(kList, static_cast<qsizetype>(items.size()));
    for (const Reference item : items)
        putBigEndian(m_objects, item, 1);
    return reference;
}

BinaryPropertyListWriter::Reference
BinaryPropertyListWriter::addDictionary(const std::vector<std::pair<Reference, Reference>>& members)
{
    const Reference reference = startObject();
    putMarker(kDictionary, static_cast<qsizetype>(members.size()));
    for (const auto& [key, value] : members)
        putBigEndian(m_objects, key, 1);
    for (const auto& [key, value] : members)
        putBigEndian(m_objects, value, 1);
    return reference;
}

QByteArray BinaryPropertyListWriter::finished(Reference root) const
{
    constexpr int kOffsetSize = 4;
    QByteArray file = kMagic + m_objects;
    const auto tableStart = static_cast<quint64>(file.size());
    for (const qsizetype start : m_starts)
        putBigEndian(file, static_cast<quint64>(start), kOffsetSize);
    putBigEndian(file, 0, 6); // five unused bytes and the sort version
    putBigEndian(file, kOffsetSize, 1);
    putBigEndian(file, sizeof(Reference), 1);
    putBigEndian(file, m_starts.size(), 8);
    putBigEndian(file, root, 8);
    putBigEndian(file, tableStart, 8);
    return file;
}

} // namespace orvanlite::demo
