#include "shell/toolkit/ToolTips.h"

#include <QTextDocument>

namespace orvanlite {

using namespace Qt::StringLiterals;

QString plainToolTip(const QString& text)
{
    if (!Qt::mightBeRichText(text))
        return text;
    return u"<span>"_s + text.toHtmlEscaped().replace(u'\n', u"<br>"_s) + u"</span>"_s;
}

} // namespace orvanlite
