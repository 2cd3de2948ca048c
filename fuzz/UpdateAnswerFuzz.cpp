#include "Fuzz.h"

#include "shell/updates/UpdateAnswer.h"

#include <QUrl>

using namespace orvanlite;
using namespace Qt::StringLiterals;

/// A URL that is trusted leads to a trusted host, also for a program that parses it less strictly.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const auto answer = decodeUpdateAnswer(bytesOf(data, size));
    const QString url = answer ? answer->downloadUrl : platform::fromUtf8(bytesOf(data, size));
    if (hasTrustedHost(url, {u"download.test"_s})) {
        require(QUrl(url, QUrl::TolerantMode).host() == u"download.test"_s);
        require(QUrl::fromUserInput(url).host() == u"download.test"_s);
    }
    return 0;
}
