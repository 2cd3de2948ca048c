#pragma once

#include <QString>

namespace orvanlite {

/// Where the dot before the extension stands in the last component of a path; -1 without an extension. A
/// leading dot makes a hidden name and no extension, and neither does a dot at the end.
[[nodiscard]] inline qsizetype extensionDot(QStringView name)
{
    const qsizetype dot = name.lastIndexOf(u'.');
    return dot > 0 && dot < name.size() - 1 ? dot : -1;
}

/// Whether the name has exactly this extension, letter case included.
[[nodiscard]] inline bool hasExtension(QStringView name, QStringView extension)
{
    const qsizetype dot = extensionDot(name);
    return dot > 0 && name.sliced(dot + 1) == extension;
}

/// The name without its extension.
[[nodiscard]] inline QString baseName(const QString& name)
{
    const qsizetype dot = extensionDot(name);
    return dot > 0 ? name.first(dot) : name;
}

} // namespace orvanlite
