#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

#include <utility>
#include <vector>

namespace orvanlite::test {

/// Makes property lists in the binary form, sound ones and damaged ones: objects are added one after the
/// other, and refer to each other by the numbers that adding returned.
class BinaryPropertyList {
public:
    explicit BinaryPropertyList(int referenceSize = 1)
        : m_referenceSize(referenceSize)
    {}

    int addText(const QString& text); ///< ASCII when it fits, otherwise UTF-16
    int addUtf16(const QString& text);
    int addList(const std::vector<int>& members);
    int addDictionary(const std::vector<std::pair<int, int>>& members);
    /// An object of any bytes, e.g. one with a false count.
    int addRaw(const QByteArray& object);
    [[nodiscard]] int nextNumber() const { return static_cast<int>(m_offsets.size()); }

    /// The whole file with its table of offsets and its trailer.
    [[nodiscard]] QByteArray finished(int root, int offsetSize = 2) const;

private:
    [[nodiscard]] QByteArray header(int kind, qsizetype count) const;
    [[nodiscard]] QByteArray reference(int number) const;

    int m_referenceSize;
    QByteArray m_objects = "bplist00";
    std::vector<qsizetype> m_offsets;
};

/// The number in this many bytes, the most significant one first.
[[nodiscard]] QByteArray bigEndian(quint64 number, int size);

/// A binary property list with these members in its root dictionary and, unless it is empty, a list of one
/// audio component of this name.
[[nodiscard]] QByteArray binaryInfoPlist(const QList<std::pair<QString, QString>>& members,
                                         const QString& componentName = {});

} // namespace orvanlite::test
