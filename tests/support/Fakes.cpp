#include "support/Fakes.h"

#include "platform/posix/PrivateFolder.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTest>

#include <qcorosignal.h>

#include <algorithm>
#include <exception>

namespace orvanlite::test {

void FakeScriptRunner::failNext(const QString& message)
{
    platform::ScriptOutcome outcome;
    outcome.error = platform::ScriptErrorDictionary{
        {platform::kScriptErrorMessageKey.toString(), message},
        {platform::kScriptErrorNumberKey.toString(), u"-128"_s},
    };
    answerNext(std::move(outcome));
}

QCoro::Task<platform::ScriptOutcome> FakeScriptRunner::execute(QString source, std::function<void()> started)
{
    sources.append(source);
    if (whileRunning)
        whileRunning();
    if (!m_answers.empty()) {
        platform::ScriptOutcome answer = std::move(m_answers.front());
        m_answers.pop_front();
        co_return answer;
    }
    if (!runner)
        co_return platform::ScriptOutcome{};
    co_return co_await runner->execute(source, std::move(started));
}

int LocalNotificationCenter::count(QStringView name) const
{
    return static_cast<int>(
        std::count_if(posted.begin(), posted.end(), [&](const Posted& each) { return each.name == name; }));
}

void LocalNotificationCenter::post(const QString& name, const QVariantMap& userInfo)
{
    posted.push_back({name, userInfo});
    for (const Observer& observer : m_observers) {
        if (observer.name == name && observer.context)
            observer.handler(userInfo);
    }
}

void FakeAppearance::notify()
{
    for (const auto& [context, handler] : m_observers) {
        if (context)
            handler();
    }
}

class WakeUp final : public QObject {
    Q_OBJECT

Q_SIGNALS:
    void due();
};

FakeClock::FakeClock() = default;
FakeClock::~FakeClock() = default;

QCoro::Task<> FakeClock::sleepFor(std::chrono::milliseconds duration)
{
    const auto wakeUp = std::make_shared<WakeUp>();
    m_sleepers.emplace_back(m_now + std::chrono::duration<double>(duration).count(), wakeUp);
    co_await qCoro(wakeUp.get(), &WakeUp::due);
}

void FakeClock::advance(std::chrono::milliseconds duration)
{
    const double end = m_now + std::chrono::duration<double>(duration).count();
    while (true) {
        const auto next = std::min_element(m_sleepers.begin(), m_sleepers.end(),
                                           [](const auto& a, const auto& b) { return a.first < b.first; });
        if (next == m_sleepers.end() || next->first > end)
            break;
        m_now = std::max(m_now, next->first);
        const std::shared_ptr<WakeUp> wakeUp = next->second;
        m_sleepers.erase(next);
        Q_EMIT wakeUp->due();
        turnEventLoop(); // the waiting coroutine continues then
    }
    m_now = end;
}

int FakeClock::sleepers() const { return static_cast<int>(m_sleepers.size()); }

TestPlatform::TestPlatform() { platform::makePrivateFolder(layout.temporary); }

void runTask(QCoro::Task<> task, std::chrono::milliseconds limit)
{
    struct State {
        bool ended = false;
        std::exception_ptr failure;
    };
    const auto state = std::make_shared<State>();
    const auto watch = [](QCoro::Task<> watched, std::shared_ptr<State> into) -> QCoro::Task<> {
        try {
            co_await std::move(watched);
        } catch (...) {
            into->failure = std::current_exception();
        }
        into->ended = true;
    };
    watch(std::move(task), state);
    QElapsedTimer timer;
    timer.start();
    while (!state->ended && timer.elapsed() < limit.count())
        QTest::qWait(1);
    ASSERT_TRUE(state->ended) << "the task did not end in time";
    if (state->failure)
        std::rethrow_exception(state->failure);
}

void turnEventLoop()
{
    QCoreApplication::sendPostedEvents();
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

bool waitFor(const std::function<bool()>& condition) { return QTest::qWaitFor(condition, 20'000); }

} // namespace orvanlite::test

#include "Fakes.moc"
