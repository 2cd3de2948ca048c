#include "platform/freedesktop/ApplicationBundle.h"

#include "platform/FileManager.h"
#include "platform/PropertyList.h"

#include <array>

namespace orvanlite::platform {

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 kLargestInfoPlist = 1 << 20;

std::optional<QString> infoText(const FileManager& files, const QString& bundlePath, QLatin1StringView key)
{
    const auto content = files.read(bundlePath + u"/Contents/Info.plist"_s, kLargestInfoPlist);
    if (!content)
        return std::nullopt;
    const std::array fields{PropertyListField{key}};
    const auto texts = readPropertyList(*content, fields);
    return texts ? texts->front() : std::nullopt;
}

std::optional<QString> onlyFile(const FileManager& files, const QString& folder)
{
    std::optional<QString> found;
    try {
        for (const DirectoryEntry& entry : files.list(folder, HiddenEntries::skip)) {
            if (entry.kind == EntryKind::directory)
                continue;
            if (found)
                return std::nullopt;
            found = folder + entry.name;
        }
    } catch (const FileError&) {
        return std::nullopt; // no bundle with an executable
    }
    return found;
}

} // namespace

std::optional<QString> bundleIdentifier(const FileManager& files, const QString& bundlePath)
{
    return infoText(files, bundlePath, "CFBundleIdentifier"_L1);
}

std::optional<QString> bundleExecutable(const FileManager& files, const QString& bundlePath)
{
    const QString folder = bundlePath + u"/Contents/MacOS/"_s;
    const auto name = infoText(files, bundlePath, "CFBundleExecutable"_L1);
    if (!name)
        return onlyFile(files, folder);
    if (name->isEmpty() || name->contains(u'/') || !files.exists(folder + *name))
        return std::nullopt;
    return folder + *name;
}

} // namespace orvanlite::platform
