#include "platform/ScriptAnswer.h"

#include <QJsonDocument>
#include <QJsonObject>

namespace orvanlite::platform {

using namespace Qt::StringLiterals;

namespace {

const QString kResult = u"result"_s;
const QString kError = u"error"_s;

} // namespace

QByteArray encodeScriptAnswer(const ScriptOutcome& outcome)
{
    QJsonObject answer;
    if (outcome.result)
        answer.insert(kResult, *outcome.result);
    if (outcome.error) {
        QJsonObject error;
        for (auto each = outcome.error->cbegin(); each != outcome.error->cend(); ++each)
            error.insert(each.key(), each.value());
        answer.insert(kError, error);
    }
    return QJsonDocument(answer).toJson(QJsonDocument::Compact);
}

ScriptOutcome decodeScriptAnswer(const QByteArray& answer)
{
    const QJsonObject object = QJsonDocument::fromJson(answer).object();
    ScriptOutcome outcome;
    if (const QJsonValue result = object.value(kResult); result.isString())
        outcome.result = result.toString();
    if (const QJsonValue error = object.value(kError); error.isObject()) {
        outcome.error.emplace();
        const QJsonObject members = error.toObject();
        for (auto each = members.begin(); each != members.end(); ++each) {
            if (each->isString())
                outcome.error->insert(each.key(), each->toString());
        }
    }
    return outcome;
}

} // namespace orvanlite::platform
