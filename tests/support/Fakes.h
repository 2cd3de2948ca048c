#pragma once

#include "platform/Appearance.h"
#include "platform/Clock.h"
#include "platform/LoginItemService.h"
#include "platform/MainBundle.h"
#include "platform/NotificationCenter.h"
#include "platform/Platform.h"
#include "platform/ProcessLauncher.h"
#include "platform/ScriptRunner.h"
#include "platform/UserNotifications.h"
#include "platform/Workspace.h"
#include "platform/freedesktop/FreedesktopDefaults.h"
#include "platform/freedesktop/FreedesktopFileManager.h"
#include "support/TempRoot.h"

#include <QObject>
#include <QPointer>

#include <deque>
#include <vector>

namespace orvanlite::test {

/// The password prompt: records every source, gives the queued answers first, and otherwise runs the script
/// through `runner` as if the password had been given.
class FakeScriptRunner final : public platform::ScriptRunner {
public:
    platform::ScriptRunner* runner = nullptr;
    QStringList sources;
    std::function<void()> whileRunning;

    void answerNext(platform::ScriptOutcome outcome) { m_answers.push_back(std::move(outcome)); }
    /// The next script fails with this message.
    void failNext(const QString& message);

    QCoro::Task<platform::ScriptOutcome> execute(QString source, std::function<void()> started) override;

private:
    std::deque<platform::ScriptOutcome> m_answers;
};

class RecordingLauncher final : public platform::ProcessLauncher {
public:
    struct Start {
        QString program;
        QStringList arguments;
        bool operator==(const Start&) const = default;
    };
    std::vector<Start> starts;
    bool fails = false;
    void start(const QString& program, const QStringList& arguments) override
    {
        if (fails)
            throw platform::FileError(ENOENT, program);
        starts.push_back({program, arguments});
    }
};

/// Delivers notifications within this process.
class LocalNotificationCenter final : public platform::NotificationCenter {
public:
    struct Posted {
        QString name;
        QVariantMap userInfo;
        bool operator==(const Posted&) const = default;
    };
    std::vector<Posted> posted;
    [[nodiscard]] int count(QStringView name) const;
    void post(const QString& name, const QVariantMap& userInfo) override;
    void observe(const QString& name, QObject* context, Handler handler) override
    {
        m_observers.push_back({name, context, std::move(handler)});
    }

private:
    struct Observer {
        QString name;
        QPointer<QObject> context;
        Handler handler;
    };
    std::vector<Observer> m_observers;
};

class FakeLoginItems final : public platform::LoginItemService {
public:
    platform::LoginItemStatus state = platform::LoginItemStatus::notRegistered;
    [[nodiscard]] platform::LoginItemStatus status(const QString&) const override { return state; }
    void registerItem(const QString&, const QString&) override { state = platform::LoginItemStatus::enabled; }
    void unregisterItem(const QString&) override { state = platform::LoginItemStatus::notRegistered; }
};

class RecordingWorkspace final : public platform::Workspace {
public:
    std::vector<QUrl> opened;
    bool open(const QUrl& url) override { return opened.push_back(url), true; }
    [[nodiscard]] std::vector<platform::RunningApplication> runningApplications() const override
    {
        return {};
    }
    void openApplication(const QString&) override {}
    void terminate(const platform::RunningApplication&) override {}
};

class FakeAppearance final : public platform::Appearance {
public:
    std::optional<bool> dark;
    std::optional<platform::Rgb> accent;
    bool reduced = false;
    bool contrast = false;
    void notify();
    [[nodiscard]] std::optional<bool> isDark() const override { return dark; }
    [[nodiscard]] std::optional<platform::Rgb> accentColour() const override { return accent; }
    [[nodiscard]] bool reducesMotion() const override { return reduced; }
    [[nodiscard]] bool increasesContrast() const override { return contrast; }
    void observe(QObject* context, std::function<void()> handler) override
    {
        m_observers.emplace_back(context, std::move(handler));
    }

private:
    std::vector<std::pair<QPointer<QObject>, std::function<void()>>> m_observers;
};

class NoUserNotifications final : public platform::UserNotifications {
public:
    void show(const QString&, const QString&) override {}
};

class WakeUp;

/// Stands still until it is advanced.
class FakeClock final : public platform::Clock {
public:
    FakeClock();
    ~FakeClock() override;
    [[nodiscard]] double now() const override { return m_now; }
    QCoro::Task<> sleepFor(std::chrono::milliseconds duration) override;

    void setNow(double secondsSince1970) { m_now = secondsSince1970; }
    /// Wakes each sleeper when its time has come, in the order of their times.
    void advance(std::chrono::milliseconds duration);
    [[nodiscard]] int sleepers() const;

private:
    double m_now = 1'700'000'000.0;
    std::vector<std::pair<double, std::shared_ptr<WakeUp>>> m_sleepers;
};

/// Real files in a temporary root, and fakes for everything beyond the process boundary.
class TestPlatform {
public:
    TestPlatform();

    TempRoot root;
    platform::SystemLayout layout = root.layout();
    platform::FreedesktopFileManager files;
    FakeScriptRunner scripts;
    RecordingLauncher processes;
    platform::FreedesktopDefaultsStore defaults{layout};
    LocalNotificationCenter notifications;
    FakeLoginItems loginItems;
    RecordingWorkspace workspace;
    platform::MainBundle mainBundle{files,
                                    root.at(u"/Applications/Orvanlite.app/Contents/MacOS/plugin-manager")};
    FakeAppearance appearance;
    NoUserNotifications userNotifications;
    FakeClock clock;

    platform::Platform platform{layout,     files,         scripts,           processes,
                                defaults,   notifications, loginItems,        workspace,
                                mainBundle, appearance,    userNotifications, clock};
};

/// Runs the event loop until the task has ended and passes on its exception; fails the test after `limit`.
void runTask(QCoro::Task<> task, std::chrono::milliseconds limit = std::chrono::seconds(20));

template <typename Value>
QCoro::Task<> storeResult(QCoro::Task<Value> task, Value* result)
{
    *result = co_await std::move(task);
}

/// The result of the task, run like runTask().
template <typename Value>
Value resultOf(QCoro::Task<Value> task)
{
    Value result{};
    runTask(storeResult(std::move(task), &result));
    return result;
}

/// Handles all pending events once.
void turnEventLoop();

/// Waits for another process or an animation.
bool waitFor(const std::function<bool()>& condition);

/// The console output of a call.
template <typename Run>
[[nodiscard]] std::string printedBy(Run run)
{
    testing::internal::CaptureStdout();
    run();
    std::fflush(stdout);
    return testing::internal::GetCapturedStdout();
}

} // namespace orvanlite::test
