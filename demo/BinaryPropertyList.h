#pragma once

#include <QByteArray>
#include <QString>

#include <utility>
#include <vector>

namespace orvanlite::demo {

/// Writes small property lists in their binary form: texts, lists and dictionaries, up to 255 values in all.
/// Source: the form "bplist00" as described in the comments of Core Foundation's CFBinaryPList.
class BinaryPropertyListWriter {
public:
    /// The number of a value within the list.
    using Reference = quint8;

    Reference addText(const QString& text);
    Reference addList(const std::vector<Reference>& items);
    /// Keys and values, both added before.
    Reference addDictionary(const std::vector<std::pair<Reference, Reference>>& members);

    /// The whole file with this value as its root.
    [[nodiscard]] QByteArray finished(Reference root) const;

private:
    Reference startObject();
    void putMarker(quint8 kind, qsizetype count);

    QByteArray m_objects;
    std::vector<qsizetype> m_starts;
};

} // namespace orvanlite::demo
