#include "profiles/ProfileDocument.h"

#include "model/Console.h"
#include "model/Json.h"
#include "platform/FileManager.h"
#include "profiles/ProfileManager.h"

namespace orvanlite {

using namespace Qt::StringLiterals;

namespace {

void printFailure(const QString& what, const std::exception& failure)
{
    printLine(what + QString::fromUtf8(failure.what()));
}

} // namespace

ProfileDocument ProfileDocument::decoded(const std::optional<QByteArray>& content)
{
    if (!content)
        return {};
    return {decodeProfile(*content)};
}

QByteArray ProfileDocument::encoded() const
{
    if (!profile)
        throw std::runtime_error("The file couldn’t be saved.");
    return encodeProfileIndented(*profile);
}

QString ProfileDocument::defaultFileName() const { return profile ? profile->name : u"profile"_s; }

void exportProfile(platform::FileManager& files, const ProfileDocument& document, const QString& path)
{
    try {
        files.write(path, document.encoded(), platform::WriteMode::inPlace);
    } catch (const std::exception& failure) {
        reportFailedExport(failure);
    }
}

void importProfile(ProfileManager& manager, const QString& path)
{
    try {
        manager.importProfile(path);
    } catch (const std::exception& failure) {
        printFailure(u"Failed to import profile: "_s, failure);
    }
}

void reportFailedExport(const std::exception& failure) { printFailure(u"Export failed: "_s, failure); }

void reportCancelledImport(const std::exception& failure) { printFailure(u"Import cancelled: "_s, failure); }

} // namespace orvanlite
