#include "platform/ScriptRunner.h"

#include <algorithm>

namespace orvanlite::platform {

using namespace Qt::StringLiterals;

namespace {

bool needsNoQuotes(QChar character)
{
    return (character >= u'a' && character <= u'z') || (character >= u'A' && character <= u'Z') ||
           (character >= u'0' && character <= u'9') || character == u'_';
}

/// The string as NSDictionary's description prints it: bare if it is a word or an unsigned number, otherwise
/// in double quotes.
QString described(const QString& text)
{
    if (!text.isEmpty() && std::all_of(text.begin(), text.end(), needsNoQuotes))
        return text;
    QString quoted = text;
    quoted.replace(u'\\', u"\\\\"_s).replace(u'"', u"\\\""_s).replace(u'\n', u"\\n"_s);
    return u'"' + quoted + u'"';
}

} // namespace

ScriptErrorDictionary scriptError(const QString& message, int number)
{
    return {{kScriptErrorMessageKey.toString(), message},
            {kScriptErrorNumberKey.toString(), QString::number(number)}};
}

QString description(const ScriptErrorDictionary& dictionary)
{
    QString text = u"{\n"_s;
    for (auto each = dictionary.cbegin(); each != dictionary.cend(); ++each)
        text += u"    "_s + described(each.key()) + u" = "_s + described(each.value()) + u";\n"_s;
    return text + u'}';
}

} // namespace orvanlite::platform
