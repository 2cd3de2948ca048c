#include "discovery/BundleMetadata.h"

#include "discovery/ClapManifest.h"
#include "platform/FileManager.h"
#include "platform/PropertyList.h"

#include <QStringList>

#include <array>

namespace orvanlite {

using namespace Qt::StringLiterals;

namespace {

/// Bytes. Far above any real description, so that a scan never loads an oversized file from a foreign bundle.
constexpr qint64 kLargestDescription = 4 << 20;

constexpr QStringView kWaves = u"Waves Audio";

constexpr std::array kWantedInfo{
    platform::PropertyListField{"CFBundleShortVersionString"_L1},
    platform::PropertyListField{"CFBundleIdentifier"_L1},
    platform::PropertyListField{"AudioComponents"_L1, "name"_L1},
};

QStringView withoutOuterSpaces(QStringView text)
{
    const auto isSpace = [](QChar c) { return c == u' ' || c == u'\t'; };
    while (!text.isEmpty() && isSpace(text.front()))
        text = text.sliced(1);
    while (!text.isEmpty() && isSpace(text.back()))
        text.chop(1);
    return text;
}

QString withUpperInitial(QStringView text)
{
    const qsizetype initial = text.front().isHighSurrogate() && text.size() > 1 ? 2 : 1;
    return text.first(initial).toString().toUpper().append(text.sliced(initial));
}

std::optional<Date> accessDate(const std::optional<platform::FileStatus>& status)
{
    if (!status)
        return std::nullopt;
    return Date::fromUnix(static_cast<double>(status->accessTime));
}

} // namespace

BundleMetadata::BundleMetadata(const platform::FileManager& files, QString path)
    : m_files(files)
    , m_path(std::move(path))
{
    const auto content = files.read(m_path + u"/Contents/Info.plist"_s, kLargestDescription);
    if (!content)
        return;
    auto texts = platform::readPropertyList(*content, kWantedInfo);
    if (!texts)
        return;
    m_version = std::move((*texts)[0]);
    m_identifier = std::move((*texts)[1]);
    m_componentName = std::move((*texts)[2]);
}

QString BundleMetadata::extractManufacturer() const
{
    if (const auto manufacturer = extractManufacturerFromAudioComponents())
        return *manufacturer;
    if (const auto manufacturer = manufacturerFromIdentifier())
        return *manufacturer;
    if (m_path.endsWith(u".clap"))
        return extractManufacturerFromCLAP().value_or(QString());
    return {};
}

std::optional<QString> BundleMetadata::extractManufacturerFromAudioComponents() const
{
    if (!m_componentName)
        return std::nullopt;
    const qsizetype colon = m_componentName->indexOf(u':');
    // Both sides of the colon need text, even if it is only a space.
    if (colon <= 0 || colon == m_componentName->size() - 1)
        return std::nullopt;
    const QStringView manufacturer = withoutOuterSpaces(QStringView(*m_componentName).first(colon));
    return (manufacturer == u"Waves" ? kWaves : manufacturer).toString();
}

std::optional<QString> BundleMetadata::manufacturerFromIdentifier() const
{
    struct Row {
        QStringView piece;
        QStringView manufacturer;
    };
    static constexpr Row rows[] = {
        {u"wizoo", u"AIR Music Technology"},
        {u"waves", kWaves},
        {u"wavesaudio", kWaves},
        {u"u-he", u"u-he"},
    };
    if (!m_identifier)
        return std::nullopt;
    const auto pieces = QStringView(*m_identifier).split(u'.', Qt::SkipEmptyParts);
    if (pieces.size() < 2)
        return std::nullopt;
    const QString lowered = pieces[1].toString().toLower();
    for (const Row& row : rows) {
        if (lowered == row.piece)
            return row.manufacturer.toString();
    }
    return withUpperInitial(pieces[1]);
}

std::optional<QString> BundleMetadata::extractManufacturerFromCLAP() const
{
    const auto content = m_files.read(m_path + u"/clap.json"_s, kLargestDescription);
    return content ? vendorInClapManifest(*content) : std::nullopt;
}

std::optional<Date> BundleMetadata::extractLastUsed(const QString& name) const
{
    const QString folder = m_path + u"/Contents/MacOS"_s;
    if (const auto status = m_files.status(folder + u'/' + name))
        return accessDate(status);
    try {
        const auto entries = m_files.list(folder, platform::HiddenEntries::include);
        if (entries.empty())
            return std::nullopt;
        return accessDate(m_files.status(folder + u'/' + entries.front().name));
    } catch (const platform::FileError&) {
        return std::nullopt; // no such folder: last use unknown
    }
}

} // namespace orvanlite
