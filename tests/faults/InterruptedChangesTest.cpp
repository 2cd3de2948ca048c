#include "FaultySystem.h"
#include "operations/OperationsFixture.h"
#include "platform/posix/PrivateFolder.h"

#include <cerrno>

namespace orvanlite::test {

namespace {

const QString kVst3 = u"/Library/Audio/Plug-Ins/VST3/"_s;

/// Defaults that cannot be opened: Qt would wait for the lock of their file after every failed call.
struct NoDefaults final : platform::DefaultsStore {
    platform::Defaults& standard() override { qFatal("not used"); }
    platform::Defaults* suite(const QString& /*name*/) override { return nullptr; }
};

/// One start of the product.
struct Product {
    explicit Product(TestPlatform& system)
        : services{system.layout,
                   system.platform.files,
                   system.platform.scripts,
                   system.platform.processes,
                   noDefaults,
                   system.platform.notifications,
                   system.platform.loginItems,
                   system.platform.workspace,
                   system.platform.mainBundle,
                   system.platform.appearance,
                   system.platform.userNotifications,
                   system.platform.clock}
        , runner(system.layout, platform::Elevation::none)
        , database(services, system.layout.applicationFolder() + u"/plugins.db"_s)
        , log(services)
        , model(services, database, log)
    {
        system.scripts.runner = &runner;
    }
    void scan()
    {
        testing::internal::CaptureStdout();
        runTask(model.scanForPlugins());
        testing::internal::GetCapturedStdout();
    }
    AudioPlugins named(const QStringList& names) const
    {
        AudioPlugins found = database.queryPlugins({}, "name"_L1, true, 1000, 0);
        std::erase_if(found, [&names](const AudioPlugin& each) { return !names.contains(each.name); });
        return found;
    }

    NoDefaults noDefaults;
    platform::Platform services;
    platform::FreedesktopScriptRunner runner;
    PluginDatabase database;
    ActivityLogManager log;
    PluginManagerViewModel model;
};

class InterruptedChangesTest : public testing::Test {
protected:
    struct Change {
        const char* name;
        std::function<void(Product&)> make;
    };

    void restore()
    {
        for (const QString& each : {u"/Library"_s, m_home, m_application}) {
            if (m_system.root.exists(each))
                m_system.files.remove(m_system.root.at(each));
        }
        for (const QString& name : {u"A"_s, u"B"_s, u"Gone"_s})
            m_system.root.addBundle(kVst3 + name + u".vst3"_s, infoPlist({{u"CFBundleName"_s, name}}));
        m_system.root.addBundle(u"/Library/Audio/Plug-Ins/Disabled/VST3/Off.vst3");
        m_system.root.addBundle(m_home + u"/Library/Audio/Plug-Ins/VST3/User.vst3"_s);
        platform::makePrivateFolder(m_system.layout.temporary);
        const QString catalogue = m_application + u"/plugins.db"_s;
        if (m_scanned.isEmpty()) {
            EXPECT_EQ(runWith({}, [this] { Product(m_system).scan(); }), End::finished);
            m_scanned = m_system.root.content(catalogue);
        }
        m_system.root.addFile(catalogue, m_scanned);
    }
    /// Everything is there once, and after a start with its scan the list agrees with the disk.
    void expectAgreement(bool mayLackGone)
    {
        const auto start = [&] {
            Product product(m_system);
            product.scan();
            QStringList names;
            for (const AudioPlugin& each : product.named(m_names)) {
                names.append(each.name);
                EXPECT_TRUE(m_system.files.exists(each.currentPath)) << qPrintable(each.currentPath);
                EXPECT_EQ(each.isEnabled, !each.currentPath.contains(u"/Disabled/"_s));
            }
            if (mayLackGone)
                names.removeAll(u"Gone"_s);
            EXPECT_EQ(names.join(u' '), mayLackGone ? u"A B Off User"_s : u"A B Gone Off User"_s);
            EXPECT_EQ(product.database.totalCount({}),
                      names.size() + (product.named({u"Gone"_s}).size() && mayLackGone));
            EXPECT_EQ(*product.model.unsavedReason, QString());
        };
        EXPECT_EQ(runWith({}, start), End::finished);
    }
    static void toggle(Product& product, const QStringList& names)
    {
        runTask(product.model.toggleMultiplePlugins(product.named(names)));
    }

    TestPlatform m_system;
    QByteArray m_scanned; ///< the catalogue of the restored files
    const QStringList m_names{u"A"_s, u"B"_s, u"Gone"_s, u"Off"_s, u"User"_s};
    const QString m_home = m_system.layout.home.sliced(m_system.root.path().size());
    const QString m_application = m_system.layout.applicationFolder().sliced(m_system.root.path().size());
    const std::vector<Change> m_changes{
        {"a scan", [](Product& product) { product.scan(); }},
        {"a batch",
         [](Product& product) {
             toggle(product, {u"A"_s, u"B"_s, u"Off"_s});
         }},
        {"a switch",
         [](Product& product) {
             for (const AudioPlugin& each : product.named({u"User"_s}))
                 runTask(product.model.togglePlugin(each));
         }},
        {"a deletion",
         [](Product& product) { runTask(product.model.deletePlugins(product.named({u"Gone"_s}))); }},
    };
};

} // namespace

TEST_F(InterruptedChangesTest, AgreeWithTheDiskAfterTheNextStart)
{
    for (const Change& change : m_changes) {
        restore();
        const auto succeed = [&] {
            Product product(m_system);
            const AudioPlugins before = product.named(m_names);
            change.make(product);
            EXPECT_FALSE(product.model.error->has_value());
            EXPECT_TRUE(&change == &m_changes.front() || product.named(m_names) != before);
        };
        EXPECT_EQ(runWith({}, succeed), End::finished) << change.name;
        for (const auto& [error, isRead] : {std::pair(0, false), {ENOSPC, false}, {EIO, true}}) {
            const int tried = forEachCall([&, error = error, isRead = isRead](int n) {
                const int call = error == 0 ? n : 3 * n; // failing calls change less than missing ones
                SCOPED_TRACE(testing::Message() << change.name << ", errno " << error << " at call " << call);
                restore();
                bool isReached = false;
                const auto work = [&] {
                    Product product(m_system);
                    change.make(product);
                };
                const Fault fault{m_system.root.path().toStdString(), call, error, false, isRead};
                EXPECT_NE(runWith(fault, work, &isReached), End::failed);
                expectAgreement(change.name == std::string("a deletion"));
                return isReached && !HasFailure();
            });
            EXPECT_GT(tried, 1) << change.name;
        }
    }
}

TEST_F(InterruptedChangesTest, AFullDiskIsReported)
{
    restore();
    const std::string wal = m_system.layout.applicationFolder().toStdString() + "/plugins.db-wal";
    const auto work = [this] {
        Product product(m_system);
        EXPECT_EQ(*product.model.unsavedReason, QString());
        toggle(product, {u"A"_s});
        EXPECT_EQ(*product.model.unsavedReason, u"The list could not be saved: no space left"_s);
    };
    EXPECT_EQ(runWith({wal, 1, ENOSPC}, work), End::finished);
    expectAgreement(false);
}

} // namespace orvanlite::test
