#pragma once

#include <QByteArrayView>
#include <QString>

namespace orvanlite::platform {

/// UTF-8 as text, with all its characters: QString::fromUtf8() drops U+FEFF from the beginning, where it may
/// be the mark of a whole file, but is a part of a file's name.
[[nodiscard]] inline QString fromUtf8(QByteArrayView bytes)
{
    QString text = QString::fromUtf8(bytes);
    if (bytes.startsWith("\xEF\xBB\xBF"))
        text.prepend(QChar(QChar::ByteOrderMark));
    return text;
}

} // namespace orvanlite::platform
