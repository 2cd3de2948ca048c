#pragma once

#include <QByteArrayView>
#include <QString>

namespace orvanlite::platform {

/// Decodes UTF-8 and keeps a leading U+FEFF. QString::fromUtf8() drops it as a byte order mark, but in a file
/// name it is part of the name.
[[nodiscard]] inline QString fromUtf8(QByteArrayView bytes)
{
    QString text = QString::fromUtf8(bytes);
    if (bytes.startsWith("\xEF\xBB\xBF"))
        text.prepend(QChar(QChar::ByteOrderMark));
    return text;
}

} // namespace orvanlite::platform
