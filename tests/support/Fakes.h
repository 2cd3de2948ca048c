#pragma once

#include "platform/Appearance.h"
#include "platform/Clock.h"
#include "platform/Defaults.h"
#include "platform/LoginItemService.h"
#include "platform/MainBundle.h"
#include "platform/NotificationCenter.h"
#include "platform/Platform.h"
#include "platform/ProcessLauncher.h"
#include "platform/ScriptRunner.h"
#include "platform/UserNotifications.h"
#include "platform/Workspace.h"
#include "platform/freedesktop/FreedesktopFileManager.h"
#include "support/TempRoot.h"

#include <QHash>
#include <QObject>
#include <QPointer>

#include <deque>
#include <vector>

namespace orvanlite::test {

/// Stands for the password prompt: records every source; gives scripted answers first, and otherwise runs the
/// script through `runner` as if the password had been given.
class FakeScriptRunner final : public platform::ScriptRunner {
public:
    platform::ScriptRunner* runner = nullptr;
    QStringList sources;
    /// Called before a script is answered, e.g. to look at what the application does meanwhile.
    std::function<void()> whileRunning;

    void answerNext(platform::ScriptOutcome outcome) { m_answers.push_back(std::move(outcome)); }
    /// The next script ends with an error dictionary of this message.
    void failNext(const QString& message);

    QCoro::Task<platform::ScriptOutcome> execute(QString source) override;

private:
    std::deque<platform::ScriptOutcome> m_answers;
};

/// Records what would have been started.
class RecordingLauncher final : public platform::ProcessLauncher {
public:
    struct Start {
        QString program;
        QStringList arguments;
        bool operator==(const Start&) const = default;
    };
    std::vector<Start> starts;
    bool fails = false;

    void start(const QString& program, const QStringList& arguments) override;
};

class MemoryDefaults final : public platform::Defaults {
public:
    QHash<QString, QVariant> values;
    [[nodiscard]] QVariant value(const QString& key) const override { return values.value(key); }
    void setValue(const QString& key, const QVariant& value) override { values.insert(key, value); }
};

class MemoryDefaultsStore final : public platform::DefaultsStore {
public:
    MemoryDefaults standardDefaults;
    MemoryDefaults suiteDefaults;
    QStringList openedSuites;
    bool suiteFails = false;
    [[nodiscard]] platform::Defaults& standard() override { return standardDefaults; }
    [[nodiscard]] platform::Defaults* suite(const QString& name) override;
};

/// Keeps the posted notifications and passes them on to observers in this process.
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
    void observe(const QString& name, QObject* context, Handler handler) override;

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

/// Records what would have been opened.
class RecordingWorkspace final : public platform::Workspace {
public:
    std::vector<QUrl> opened;
    bool open(const QUrl& url) override;
    [[nodiscard]] std::vector<platform::RunningApplication> runningApplications() const override
    {
        return {};
    }
    void openApplication(const QString&) override {}
    void terminate(const platform::RunningApplication&) override {}
};

/// The user's look, set by hand.
class FakeAppearance final : public platform::Appearance {
public:
    std::optional<bool> dark;
    std::optional<platform::Rgb> accent;
    bool reduced = false;
    void notify();
    [[nodiscard]] std::optional<bool> isDark() const override { return dark; }
    [[nodiscard]] std::optional<platform::Rgb> accentColour() const override { return accent; }
    [[nodiscard]] bool reducesMotion() const override { return reduced; }
    void observe(QObject* context, std::function<void()> handler) override;

private:
    std::vector<std::pair<QPointer<QObject>, std::function<void()>>> m_observers;
};

class RecordingUserNotifications final : public platform::UserNotifications {
public:
    std::vector<std::pair<QString, QString>> shown;
    void show(const QString& title, const QString& body) override { shown.emplace_back(title, body); }
};

class WakeUp;

/// A clock that stands still until it is moved.
class FakeClock final : public platform::Clock {
public:
    FakeClock();
    ~FakeClock() override;
    [[nodiscard]] double now() const override { return m_now; }
    QCoro::Task<> sleepFor(std::chrono::milliseconds duration) override;

    void setNow(double secondsSince1970) { m_now = secondsSince1970; }
    /// Moves time on and wakes every sleeper whose time has come, in the order of their times.
    void advance(std::chrono::milliseconds duration);
    [[nodiscard]] int sleepers() const;

private:
    double m_now = 1'700'000'000.0;
    std::vector<std::pair<double, std::shared_ptr<WakeUp>>> m_sleepers;
};

/// A platform on a temporary root: real files, and fakes for all that crosses the process boundary.
class TestPlatform {
public:
    TestPlatform();

    TempRoot root;
    platform::SystemLayout layout = root.layout();
    platform::FreedesktopFileManager files;
    FakeScriptRunner scripts;
    RecordingLauncher processes;
    MemoryDefaultsStore defaults;
    LocalNotificationCenter notifications;
    FakeLoginItems loginItems;
    RecordingWorkspace workspace;
    platform::MainBundle mainBundle{files,
                                    root.at(u"/Applications/Orvanlite.app/Contents/MacOS/plugin-manager")};
    FakeAppearance appearance;
    RecordingUserNotifications userNotifications;
    FakeClock clock;

    platform::Platform platform{layout,     files,         scripts,           processes,
                                defaults,   notifications, loginItems,        workspace,
                                mainBundle, appearance,    userNotifications, clock};
};

/// Starts the task and turns the event loop until it has ended; fails the test after `limit`. An exception of the
/// task reaches the caller.
void runTask(QCoro::Task<> task, std::chrono::milliseconds limit = std::chrono::seconds(20));

/// Gives the event loop a turn, with all that is due at once.
void turnEventLoop();

} // namespace orvanlite::test
