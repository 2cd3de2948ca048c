#include "demo/BinaryInfoPlist.h"

#include "support/PropertyListWriter.h"

namespace orvanlite::demo {

using namespace Qt::StringLiterals;

namespace {

QByteArray header(int kind, qsizetype count)
{
    const auto marker = [](qsizetype upper, qsizetype lower) {
        return static_cast<char>(upper << 4 | lower);
    };
    if (count < 15)
        return QByteArray(1, marker(kind, count));
    return QByteArray(1, marker(kind, 15)) + marker(1, 2) + test::bigEndian(static_cast<quint64>(count), 4);
}

QByteArray coded(const QString& text)
{
    if (const QByteArray bytes = text.toUtf8(); bytes.size() == text.size()) // ASCII
        return header(0x5, bytes.size()) + bytes;
    QByteArray units;
    for (const QChar unit : text)
        units += test::bigEndian(unit.unicode(), 2);
    return header(0x6, text.size()) + units;
}

} // namespace

QByteArray binaryInfoPlist(const QList<std::pair<QString, QString>>& members, const QString& componentName)
{
    QByteArrayList objects;
    QByteArray keys;
    QByteArray values;
    const auto add = [&objects](const QByteArray& object) {
        objects.append(object);
        return static_cast<char>(objects.size() - 1);
    };
    const auto addMember = [&](const QString& key, char value) {
        keys += add(coded(key));
        values += value;
    };
    for (const auto& [key, text] : members)
        addMember(key, add(coded(text)));
    if (!componentName.isEmpty()) {
        const char name = add(coded(u"name"_s));
        const char component = add(header(0xD, 1) + name + add(coded(componentName)));
        addMember(u"AudioComponents"_s, add(header(0xA, 1) + component));
    }
    add(header(0xD, keys.size()) + keys + values);
    return test::binaryPropertyList(objects);
}

} // namespace orvanlite::demo
