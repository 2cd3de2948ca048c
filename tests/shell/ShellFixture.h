#pragma once

#include "UiSteps.h"
#include "catalogue/PluginDatabase.h"
#include "operations/PluginManagerViewModel.h"
#include "platform/FullDiskAccess.h"
#include "platform/freedesktop/FreedesktopScriptRunner.h"
#include "records/ActivityLogManager.h"
#include "shell/app/AppDelegate.h"
#include "shell/app/ContentView.h"
#include "shell/app/MainWindow.h"
#include "shell/progress/ProgressWindowManager.h"
#include "shell/table/PluginTableDelegate.h"
#include "shell/table/PluginTableHeader.h"
#include "shell/table/PluginTableModel.h"
#include "shell/table/PluginTableView.h"
#include "shell/updates/UpdateChecker.h"
#include "support/Fakes.h"
#include "uad/UADCleanupManager.h"

#include <QLabel>
#include <QLineEdit>

namespace orvanlite::test {

class FakeDiskAccess final : public platform::FullDiskAccess {
public:
    bool granted = false;
    [[nodiscard]] bool isGranted() const override { return granted; }
    [[nodiscard]] QUrl settings() const override { return QUrl(u"settings:privacy"_s); }
};

/// The whole application on a temporary root, with real files, a real catalogue and a real shell.
class ShellTest : public testing::Test {
protected:
    ShellTest()
    {
        m_system.scripts.runner = &m_runner;
        m_system.defaults.standard().setValue(u"onboardingComplete"_s, true);
    }

    /// Ends pending sleeps while their objects are alive.
    void TearDown() override { m_system.clock.advance(std::chrono::seconds(11)); }

    /// Returns the console output.
    template <typename Run>
    static QString quietly(Run run)
    {
        return QString::fromStdString(printedBy([&run] {
            run();
            settle();
        }));
    }
    /// Opens the window with all plugins in its table and waits for the first scan.
    void launch()
    {
        quietly([this] {
            m_delegate.applicationDidFinishLaunching();
            ASSERT_TRUE(QTest::qWaitForWindowExposed(&window()));
            viewModel().showAllPlugins = true; // as by a click on "All Plugins"
        });
    }
    [[nodiscard]] MainWindow& window() { return *m_delegate.window(); }
    [[nodiscard]] PluginManagerViewModel& viewModel()
    {
        return static_cast<ContentView*>(window().centralWidget())->pluginManager();
    }
    [[nodiscard]] PluginTableView& table() { return named<PluginTableView>(window(), u"pluginTable"_s); }
    [[nodiscard]] QString footer() { return named<QLabel>(window(), u"shownLabel"_s).text(); }
    [[nodiscard]] QStringList shownNames()
    {
        QStringList names;
        for (int row = 0; row < table().model()->rowCount(); ++row)
            names.append(table().model()->index(row, 1).data().toString());
        return names;
    }
    void addPlugins(const QStringList& files)
    {
        for (const QString& file : files)
            m_root.addFile(u"/Library/Audio/Plug-Ins/"_s + file, "code");
    }
    void addPlugins(int count)
    {
        for (int i = 0; i < count; ++i)
            m_root.addFile(u"/Library/Audio/Plug-Ins/VST3/Plugin %1.vst3"_s.arg(i, 4, 10, QChar(u'0')));
    }
    void search(const QString& text)
    {
        QTest::keyClicks(&named<QLineEdit>(window(), u"searchField"_s), text);
        endSearchPause();
    }
    void endSearchPause()
    {
        m_system.clock.advance(std::chrono::milliseconds(60));
        settle();
    }
    void clickSwitch(int row)
    {
        const QRect cell = table().visualRect(table().model()->index(row, 0));
        QTest::mouseClick(table().viewport(), Qt::LeftButton, {},
                          PluginTableDelegate::switchRect(cell).center());
    }
    void clickHeader(int column)
    {
        PluginTableHeader& header = *table().header();
        click(*header.viewport(), {header.sectionViewportPosition(column) + 20, header.height() / 2});
    }

    TestPlatform m_system;
    const TempRoot& m_root = m_system.root;
    platform::FreedesktopScriptRunner m_runner{m_system.layout, platform::Elevation::none};
    PluginDatabase m_database{m_system.platform, m_system.layout.applicationFolder() + u"/plugins.db"_s};
    ActivityLogManager m_log{m_system.platform};
    ProgressWindowManager m_progress{m_system.platform};
    FakeDiskAccess m_diskAccess;
    UADCleanupManager m_uadCleanup{m_system.platform, m_database};
    UpdateChecker m_updateChecker{m_system.platform, {}}; // nobody to ask
    SharedObjects m_shared{m_database, m_log, m_progress, m_uadCleanup, m_updateChecker, m_diskAccess};
    AppDelegate m_delegate{m_system.platform, m_shared};
};

} // namespace orvanlite::test
