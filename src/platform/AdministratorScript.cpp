#include "platform/AdministratorScript.h"

namespace orvanlite::platform {

using namespace Qt::StringLiterals;

namespace {

constexpr QStringView kOpening = u"do shell script \"";
constexpr QStringView kClosing = u" with administrator privileges";
constexpr int kSyntaxError = -2741; // Source: AppleScript's error numbers

} // namespace

std::variant<QString, ScriptErrorDictionary, OtherScript> parseAdministratorScript(QStringView source)
{
    const QStringView sentence = source.trimmed();
    if (!sentence.startsWith(kOpening))
        return OtherScript();
    const QStringView text = sentence.sliced(kOpening.size());
    const qsizetype quote = text.indexOf(u'"');
    if (quote < 0)
        return scriptError(u"Expected “\"” but found end of script."_s, kSyntaxError);
    const QStringView command = text.first(quote);
    if (command.contains(u'\\') || command.contains(QChar::Null))
        return scriptError(u"Expected “\"” but found unknown token."_s, kSyntaxError);
    const QStringView rest = text.sliced(quote + 1);
    if (rest.empty())
        return OtherScript();
    if (rest != kClosing)
        return scriptError(u"Expected end of line but found “"_s + rest.first(1).toString() + u"”."_s,
                           kSyntaxError);
    return command.toString();
}

} // namespace orvanlite::platform
