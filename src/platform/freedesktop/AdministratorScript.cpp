#include "platform/freedesktop/AdministratorScript.h"

#include <optional>

namespace orvanlite::platform {

using namespace Qt::StringLiterals;

namespace {

constexpr QStringView kOpening = u"do shell script \"";
constexpr QStringView kClosing = u" with administrator privileges";
constexpr int kSyntaxError = -2741;
constexpr int kNotHandled = -1708;

std::optional<QChar> escaped(QChar character)
{
    switch (character.unicode()) {
    case u'"':
    case u'\\':
        return character;
    case u'n':
        return u'\n';
    case u'r':
        return u'\r';
    case u't':
        return u'\t';
    default:
        return std::nullopt;
    }
}

ScriptErrorDictionary notHandled()
{
    return scriptError(u"Only shell scripts with administrator privileges can be run on this system."_s,
                       kNotHandled);
}

} // namespace

std::variant<QString, ScriptErrorDictionary> parseAdministratorScript(QStringView source)
{
    QStringView left = source.trimmed();
    if (!left.startsWith(kOpening))
        return notHandled();
    left = left.sliced(kOpening.size());
    QString command;
    while (!left.empty() && left.front() != u'"') {
        QChar character = left.front();
        left = left.sliced(1);
        if (character == u'\\') {
            const auto meant = left.empty() ? std::nullopt : escaped(left.front());
            if (!meant)
                return scriptError(u"Expected “\"” but found unknown token."_s, kSyntaxError);
            character = *meant;
            left = left.sliced(1);
        } else if (character.isNull()) {
            // The shell would take what stands before it for the whole command.
            return scriptError(u"Expected “\"” but found unknown token."_s, kSyntaxError);
        }
        command += character;
    }
    if (left.empty())
        return scriptError(u"Expected “\"” but found end of script."_s, kSyntaxError);
    left = left.sliced(1);
    if (left.empty())
        return notHandled();
    if (left != kClosing)
        return scriptError(u"Expected end of line but found “"_s + left.first(1).toString() + u"”."_s,
                           kSyntaxError);
    return command;
}

} // namespace orvanlite::platform
