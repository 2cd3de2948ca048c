#include "support/PropertyListWriter.h"

namespace orvanlite::test {

QByteArray bigEndian(quint64 number, int size)
{
    QByteArray bytes(size, '\0');
    for (int i = size - 1; i >= 0; --i, number >>= 8)
        bytes[i] = static_cast<char>(number & 0xFF);
    return bytes;
}

QByteArray binaryPropertyList(const QByteArrayList& objects, int referenceSize, int offsetSize)
{
    QByteArray file = "bplist00";
    QByteArray offsets;
    for (const QByteArray& object : objects) {
        offsets += bigEndian(static_cast<quint64>(file.size()), offsetSize);
        file += object;
    }
    const auto count = static_cast<quint64>(objects.size());
    const auto table = static_cast<quint64>(file.size());
    file += offsets + bigEndian(0, 6) + static_cast<char>(offsetSize) + static_cast<char>(referenceSize);
    return file + bigEndian(count, 8) + bigEndian(count - 1, 8) + bigEndian(table, 8);
}

} // namespace orvanlite::test
