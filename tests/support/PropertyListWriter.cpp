#include "support/PropertyListWriter.h"

#include <algorithm>

namespace orvanlite::test {

using namespace Qt::StringLiterals;

QByteArray bigEndian(quint64 number, int size)
{
    QByteArray bytes(size, '\0');
    for (int i = size - 1; i >= 0; --i, number >>= 8)
        bytes[i] = static_cast<char>(number & 0xFF);
    return bytes;
}

QByteArray BinaryPropertyList::header(int kind, qsizetype count) const
{
    const auto marker = [](qsizetype upper, qsizetype lower) {
        return static_cast<char>(upper << 4 | lower);
    };
    if (count < 15)
        return QByteArray(1, marker(kind, count));
    return QByteArray(1, marker(kind, 15)) + marker(1, 2) + bigEndian(static_cast<quint64>(count), 4);
}

QByteArray BinaryPropertyList::reference(int number) const
{
    return bigEndian(static_cast<quint64>(number), m_referenceSize);
}

int BinaryPropertyList::addRaw(const QByteArray& object)
{
    m_offsets.push_back(m_objects.size());
    m_objects += object;
    return nextNumber() - 1;
}

int BinaryPropertyList::addText(const QString& text)
{
    if (std::all_of(text.begin(), text.end(), [](QChar c) { return c.unicode() < 0x80; }))
        return addRaw(header(0x5, text.size()) + text.toLatin1());
    return addUtf16(text);
}

int BinaryPropertyList::addUtf16(const QString& text)
{
    QByteArray units;
    for (const QChar unit : text)
        units += bigEndian(unit.unicode(), 2);
    return addRaw(header(0x6, text.size()) + units);
}

int BinaryPropertyList::addList(const std::vector<int>& members)
{
    QByteArray object = header(0xA, static_cast<qsizetype>(members.size()));
    for (const int member : members)
        object += reference(member);
    return addRaw(object);
}

int BinaryPropertyList::addDictionary(const std::vector<std::pair<int, int>>& members)
{
    QByteArray object = header(0xD, static_cast<qsizetype>(members.size()));
    for (const auto& member : members)
        object += reference(member.first);
    for (const auto& member : members)
        object += reference(member.second);
    return addRaw(object);
}

QByteArray BinaryPropertyList::finished(int root, int offsetSize) const
{
    QByteArray file = m_objects;
    for (const qsizetype offset : m_offsets)
        file += bigEndian(static_cast<quint64>(offset), offsetSize);
    file += QByteArray(6, '\0') + static_cast<char>(offsetSize) + static_cast<char>(m_referenceSize);
    file += bigEndian(m_offsets.size(), 8) + bigEndian(static_cast<quint64>(root), 8);
    return file + bigEndian(static_cast<quint64>(m_objects.size()), 8);
}

QByteArray binaryInfoPlist(const QList<std::pair<QString, QString>>& members, const QString& componentName)
{
    BinaryPropertyList list;
    std::vector<std::pair<int, int>> root;
    const auto addMember = [&](const QString& key, int value) {
        root.emplace_back(list.addText(key), value);
    };
    for (const auto& [key, text] : members)
        addMember(key, list.addText(text));
    if (!componentName.isEmpty()) {
        const int component = list.addDictionary({{list.addText(u"name"_s), list.addText(componentName)}});
        addMember(u"AudioComponents"_s, list.addList({component}));
    }
    return list.finished(list.addDictionary(root));
}

} // namespace orvanlite::test
