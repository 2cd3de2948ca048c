#include "uad/UADProfile.h"

#include "model/Uuid.h"
#include "platform/FileManager.h"
#include "uad/UADText.h"

#include <QStringDecoder>

#include <algorithm>
#include <cerrno>
#include <limits>
#include <tuple>

namespace orvanlite {

using namespace Qt::StringLiterals;

namespace {

using State = UADPluginAuth::UADAuthState;
using Status = UADPluginAuth::UADAuthStatus;

constexpr qint64 kLargestProfile = qint64{256} * 1024 * 1024;

bool isNewline(QChar c)
{
    const char16_t unit = c.unicode();
    return (unit >= u'\n' && unit <= u'\r') || unit == u'\x85' || unit == u'\u2028' || unit == u'\u2029';
}

/// The first decimal number in the text, in digits of any script; 0 on overflow.
std::optional<qint64> firstNumber(QStringView text)
{
    std::optional<qint64> number;
    for (qsizetype i = 0; i < text.size();) {
        const char32_t c = takeCodePoint(text, i);
        if (QChar::category(c) != QChar::Number_DecimalDigit) {
            if (number)
                break;
            continue;
        }
        const int digit = QChar::digitValue(c);
        const qint64 before = number.value_or(0);
        if (before > (std::numeric_limits<qint64>::max() - digit) / 10)
            return 0;
        number = before * 10 + digit;
    }
    return number;
}

/// Nothing for an unknown status. `text` is in lower case.
std::optional<Status> parseStatus(QStringView text)
{
    // On purpose in this order: a text that contains "authorized", even within a longer word, counts as
    // authorised, so that no plugin that the user may own is disabled.
    if (text.contains(u"authorized"_s))
        return Status{State::authorized};
    if (text.contains(u"not started"_s))
        return Status{State::demoNotStarted};
    if (text.contains(u"expired"_s))
        return Status{State::expired};
    if (!text.contains(u"demo"_s))
        return std::nullopt;
    const std::optional<qint64> days = firstNumber(text);
    return days ? Status{State::demo, *days} : Status{State::demoNotStarted};
}

void parseLine(QStringView line, UADPluginAuths& found)
{
    const qsizetype colon = line.indexOf(u": "_s);
    if (colon < 0)
        return;
    const std::optional<Status> status = parseStatus(line.sliced(colon + 2).toString().toLower());
    if (status)
        found.push_back({makeUuid(), line.first(colon).toString(), *status});
}

platform::FileError readError(const platform::FileManager& files, const QString& path)
{
    const auto status = files.status(path);
    if (!status)
        return {ENOENT, path};
    if (status->isDirectory)
        return {EISDIR, path};
    return {status->size > kLargestProfile ? EFBIG : EACCES, path};
}

} // namespace

UADPluginAuths parsePluginAuthorizations(QStringView text)
{
    UADPluginAuths found;
    bool isInSection = false;
    for (qsizetype begin = 0; begin < text.size();) {
        const auto* const end = std::find_if(text.begin() + begin, text.end(), isNewline);
        const qsizetype length = end - (text.begin() + begin);
        const QStringView line = withoutBlanks(text.sliced(begin, length));
        begin += length + 1;
        // On some systems the heading begins with the card's model ("UAD-2 ").
        if (line.contains(u"Plug-in Authorizations"_s))
            isInSection = true;
        else if (isInSection && line.startsWith(u"---"_s))
            break;
        else if (isInSection)
            parseLine(line, found);
    }
    return found;
}

std::optional<QString> findProfileFile(const platform::FileManager& files, const QString& directory)
{
    std::vector<platform::DirectoryEntry> entries;
    try {
        entries = files.list(directory, platform::HiddenEntries::include);
    } catch (const platform::FileError&) {
        return std::nullopt;
    }
    std::optional<QString> newest;
    std::tuple<qint64, qint64> newestTime;
    for (const platform::DirectoryEntry& entry : entries) {
        if (!entry.name.contains(u"UADSystemProfile"_s) ||
            !entry.name.endsWith(u".txt"_s, Qt::CaseInsensitive))
            continue;
        const QString path = directory + u'/' + entry.name;
        std::tuple<qint64, qint64> time(std::numeric_limits<qint64>::min(), 0);
        if (const auto status = files.status(path))
            time = {status->modificationTime, status->modificationNanoseconds};
        if (!newest || time > newestTime) {
            newest = path;
            newestTime = time;
        }
    }
    return newest;
}

QString readProfile(const platform::FileManager& files, const QString& path)
{
    const auto content = files.read(path, kLargestProfile);
    if (!content)
        throw readError(files, path);
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    QString text = decoder.decode(*content);
    if (decoder.hasError())
        throw platform::FileError(EILSEQ, path, u"The text is not encoded in UTF-8: "_s + path);
    return text;
}

} // namespace orvanlite
