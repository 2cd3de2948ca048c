#pragma once

#include <QString>

#include <algorithm>

/// Paths as text: separated by "/", never resolved against the file system.
namespace orvanlite::platform {

/// The parent folder, without a trailing slash; empty for an entry of the root and for a bare name.
[[nodiscard]] inline QString parentFolder(const QString& path)
{
    return path.first(std::max<qsizetype>(path.lastIndexOf(u'/'), 0));
}

/// The last component.
[[nodiscard]] inline QString fileName(const QString& path) { return path.sliced(path.lastIndexOf(u'/') + 1); }

[[nodiscard]] inline QString join(const QString& folder, const QString& name) { return folder + u'/' + name; }

/// Position of the dot before the extension of a file name; -1 without an extension. A leading dot (hidden
/// name) or a trailing dot does not start an extension.
[[nodiscard]] inline qsizetype extensionDot(QStringView name)
{
    const qsizetype dot = name.lastIndexOf(u'.');
    return dot > 0 && dot < name.size() - 1 ? dot : -1;
}

/// The extension of a file name, without the dot; empty if there is none.
[[nodiscard]] inline QStringView extension(QStringView name)
{
    const qsizetype dot = extensionDot(name);
    return dot > 0 ? name.sliced(dot + 1) : QStringView();
}

/// A file name without its extension.
[[nodiscard]] inline QString baseName(const QString& name)
{
    const qsizetype dot = extensionDot(name);
    return dot > 0 ? name.first(dot) : name;
}

} // namespace orvanlite::platform
