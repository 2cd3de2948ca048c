#include "platform/MainBundle.h"

#include "platform/FileManager.h"
#include "platform/Path.h"
#include "platform/PropertyList.h"

#include <array>

namespace orvanlite::platform {

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 kLargestInfoPlist = 1 << 20;
constexpr QStringView kExecutableFolder = u"/Contents/MacOS";

} // namespace

MainBundle::MainBundle(const FileManager& files, const QString& executablePath)
    : m_files(files)
    , m_bundlePath(parentFolder(executablePath))
{
    if (m_bundlePath.endsWith(kExecutableFolder))
        m_bundlePath.chop(kExecutableFolder.size());
}

std::optional<QString> MainBundle::infoText(const QString& key) const
{
    const auto content = m_files.read(m_bundlePath + u"/Contents/Info.plist"_s, kLargestInfoPlist);
    if (!content)
        return std::nullopt;
    const QByteArray wanted = key.toUtf8();
    const std::array fields{PropertyListField{QLatin1StringView(wanted), {}}};
    const auto texts = readPropertyList(*content, fields);
    return texts ? texts->front() : std::nullopt;
}

std::optional<QString> MainBundle::resource(const QString& name, const QString& extension) const
{
    const QString path = m_bundlePath + u"/Contents/Resources/"_s + name + u'.' + extension;
    if (!m_files.exists(path))
        return std::nullopt;
    return path;
}

} // namespace orvanlite::platform
