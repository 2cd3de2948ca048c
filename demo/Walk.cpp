#include "demo/Walk.h"

#include "demo/DemoAppearance.h"
#include "model/Console.h"
#include "operations/PluginManagerViewModel.h"
#include "platform/SystemLayout.h"
#include "records/ActivityLogManager.h"
#include "shell/app/ContentView.h"
#include "shell/app/MainWindow.h"
#include "shell/progress/ProgressHUDModel.h"
#include "shell/progress/ProgressWindowManager.h"
#include "shell/table/PluginTableDelegate.h"
#include "shell/table/PluginTableHeader.h"
#include "shell/table/PluginTableModel.h"
#include "shell/table/PluginTableView.h"
#include "uad/UADCleanupManager.h"

#include <QAbstractButton>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QScreen>
#include <QScrollBar>
#include <QTest>
#include <QWindow>

#include <algorithm>

namespace orvanlite::demo {

using namespace Qt::StringLiterals;

Walk::Walk(MainWindow& window, ProgressWindowManager& progress, const ActivityLogManager& activityLog,
           UADCleanupManager& uadCleanup, DemoAppearance& appearance, const platform::SystemLayout& layout,
           QString outputFolder)
    : Stage(window, std::move(outputFolder))
    , m_progress(progress)
    , m_activityLog(activityLog)
    , m_uadCleanup(uadCleanup)
    , m_appearance(appearance)
    , m_layout(layout)
    , m_table(named<PluginTableView>(u"pluginTable"_s))
{}

bool Walk::run()
{
    m_appearance.setDark(false);
    firstScan();
    search();
    visitManufacturer();
    sortByEachColumn();
    page();
    disableAndEnable(u"system plugin"_s, [this](const AudioPlugin& plugin) {
        return plugin.format == PluginFormat::vst3 && m_layout.isInSystemLibrary(plugin.currentPath);
    });
    disableAndEnable(u"user plugin"_s, [this](const AudioPlugin& plugin) {
        return plugin.currentPath.startsWith(m_layout.home);
    });
    disableAndEnable(u"Waves plugin"_s,
                     [](const AudioPlugin& plugin) { return plugin.format == PluginFormat::wavesBundle; });
    wavesVersions();
    pickAcrossSearches();
    bulk();
    deleteThree();
    cleanUpDemos();
    profiles();
    exportReports();
    looks();
    return allSucceeded();
}

void Walk::firstScan()
{
    screenshot(u"empty-state"_s);
    click(u"allPluginsButton"_s);
    const bool scanned = waitFor([this] { return *m_viewModel.dbTotalCount > 0 && !*m_viewModel.isLoading; });
    step(u"The first scan fills the catalogue"_s, scanned && *m_viewModel.dbTotalCount >= 1500,
         u"%1 plugins, %2 of them enabled"_s.arg(*m_viewModel.dbTotalCount).arg(*m_viewModel.dbEnabledCount));
    screenshot(u"main-window"_s);
}

void Walk::search()
{
    const AudioPlugin sample = m_viewModel.filteredPlugins().front();
    const QString text = sample.manufacturer.isEmpty() ? sample.name : sample.manufacturer;
    typeSearch(text);
    const bool allMatch = std::all_of(m_viewModel.filteredPlugins().begin(),
                                      m_viewModel.filteredPlugins().end(), [&text](const AudioPlugin& each) {
                                          return each.name.contains(text, Qt::CaseInsensitive) ||
                                                 each.manufacturer.contains(text, Qt::CaseInsensitive);
                                      });
    step(u"Typing \"%1\" narrows the list"_s.arg(text), allMatch && *m_viewModel.totalPluginCount > 0,
         u"%1 plugins"_s.arg(*m_viewModel.totalPluginCount));
    screenshot(u"search"_s);
    click(u"clearSearchButton"_s);
    const bool isBack =
        waitFor([this] { return *m_viewModel.totalPluginCount == *m_viewModel.dbTotalCount; });
    step(u"\"Clear\" brings everything back"_s, isBack);
}

QString Walk::openedLog() const { return m_layout.openTool().section(u'/', 0, -2) + u"/opened.log"_s; }

void Walk::visitManufacturer()
{
    QFile::remove(openedLog());
    m_table.setFocus();
    m_table.setCurrentIndex(m_table.model()->index(0, static_cast<int>(PluginColumn::manufacturer)));
    QTest::keyClick(&m_table, Qt::Key_Return);
    QFile log(openedLog());
    const bool isOpen = log.open(QIODevice::ReadOnly);
    const QString page = QString::fromUtf8(log.readAll().trimmed());
    step(u"Return on a maker opens its website"_s, isOpen && page.startsWith(u"https://"_s), page);
    click(u"resetButton"_s);
    click(u"allPluginsButton"_s);
}

void Walk::sortByEachColumn()
{
    PluginTableHeader& header = *m_table.header();
    for (int column = kPluginColumnCount - 1; column >= 0; --column) {
        const QPoint title(header.sectionViewportPosition(column) + 20, header.height() / 2);
        QTest::mouseClick(header.viewport(), Qt::LeftButton, {}, title);
        QTest::qWait(50);
        step(u"A click on \"%1\" sorts by it"_s.arg(
                 m_table.model()->headerData(column, Qt::Horizontal).toString()),
             header.sortIndicatorSection() == column, m_viewModel.filteredPlugins().front().name);
    }
    screenshot(u"sorted-by-status"_s);
    const QPoint name(header.sectionViewportPosition(1) + 20, header.height() / 2);
    QTest::mouseClick(header.viewport(), Qt::LeftButton, {}, name);
    QTest::qWait(50);
}

void Walk::page()
{
    m_table.setFocus();
    const auto loaded = m_viewModel.filteredPlugins().size();
    QTest::keyClick(&m_table, Qt::Key_Down, Qt::ControlModifier);
    const bool hasMore = waitFor([&] { return m_viewModel.filteredPlugins().size() > loaded; });
    step(u"The last row brings the next page"_s, hasMore,
         u"%1 rows"_s.arg(m_viewModel.filteredPlugins().size()));
    click(u"loadAllButton"_s);
    const bool hasAll = waitFor([this] {
        return static_cast<int>(m_viewModel.filteredPlugins().size()) == *m_viewModel.totalPluginCount;
    });
    step(u"\"Load All\" brings the rest"_s, hasAll, u"%1 rows"_s.arg(m_viewModel.filteredPlugins().size()));
    QTest::keyClick(&m_table, Qt::Key_Up, Qt::ControlModifier);
    screenshot(u"all-loaded"_s);
}

void Walk::disableAndEnable(const QString& title, const std::function<bool(const AudioPlugin&)>& isWanted)
{
    const AudioPlugins all = *m_viewModel.plugins;
    const auto found = std::find_if(all.begin(), all.end(), [&](const AudioPlugin& each) {
        const auto sameName = [&each](const AudioPlugin& other) { return other.name == each.name; };
        return each.isEnabled && isWanted(each) && std::count_if(all.begin(), all.end(), sameName) == 1 &&
               !each.name.contains(u'\'') && QFile::exists(each.currentPath);
    });
    if (found == all.end()) {
        step(u"There is a %1 to disable"_s.arg(title), false);
        return;
    }
    const AudioPlugin plugin = *found;
    typeSearch(plugin.name);
    clickSwitch(0);
    const auto now = [this]() -> const AudioPlugin& { return m_viewModel.filteredPlugins().front(); };
    bool succeeded = waitFor([&] { return !now().isEnabled; }) && !QFile::exists(plugin.originalPath) &&
                     QFile::exists(now().currentPath);
    step(u"A click on its switch disables a %1"_s.arg(title), succeeded,
         plugin.name + u" → "_s + now().currentPath);
    QTest::qWait(300);
    screenshot(u"disabled-"_s + title.section(u' ', 0, 0));

    m_table.setFocus();
    m_table.setCurrentIndex(m_table.model()->index(0, 1));
    QTest::keyClick(&m_table, Qt::Key_Space);
    succeeded = waitFor([&] { return now().isEnabled; }) && QFile::exists(plugin.originalPath);
    step(u"The space bar enables it again"_s, succeeded, plugin.originalPath);
    typeSearch({});
}

bool Walk::logSays(int count, ActivityAction action) const
{
    const std::vector<ActivityLogEntry>& entries = *m_activityLog.entries;
    return std::ssize(entries) >= count &&
           std::all_of(entries.begin(), entries.begin() + count,
                       [action](const ActivityLogEntry& each) { return each.action == action; });
}

void Walk::wavesVersions()
{
    // A Waves plugin in two version folders whose name no other plugin has.
    QString name;
    for (const AudioPlugin& each : *m_viewModel.plugins) {
        const AudioPlugins versions = m_viewModel.allWavesPluginsMatchingName(each.name);
        const bool areOn = std::all_of(versions.begin(), versions.end(),
                                       [](const AudioPlugin& version) { return version.isEnabled; });
        const auto sameName = [&each](const AudioPlugin& other) { return other.name == each.name; };
        const auto rows = std::count_if(m_viewModel.plugins->begin(), m_viewModel.plugins->end(), sameName);
        if (versions.size() == 2 && areOn && rows == 2)
            name = each.name;
    }
    const AudioPlugins versions = m_viewModel.allWavesPluginsMatchingName(name);
    QFile::remove(openedLog());
    typeSearch(name);
    // Other names may contain this one.
    const auto rowOfName = [&] {
        const AudioPlugins& shown = m_viewModel.filteredPlugins();
        return static_cast<int>(std::find_if(shown.begin(), shown.end(),
                                             [&](const AudioPlugin& each) { return each.name == name; }) -
                                shown.begin());
    };
    clickSwitch(rowOfName());
    const bool areOff = waitFor([&] { return countOnDisk(versions, false) == 2; }) &&
                        waitFor([this] { return !*m_viewModel.isRunningScript; });
    step(u"Both versions of a Waves plugin go together"_s,
         versions.size() == 2 && areOff && !QFile::exists(openedLog()),
         u"%1, %2 moved"_s.arg(name).arg(countOnDisk(versions, false)));
    clickSwitch(rowOfName());
    const bool areBack =
        waitFor([&] { return countOnDisk(versions, true) == 2 && QFile::exists(openedLog()); });
    step(u"They come back together, and only then are they registered"_s, areBack);
    waitFor([this] { return !*m_viewModel.isRunningScript; });
    typeSearch({});
}

qsizetype Walk::pickAll(const QString& text)
{
    typeSearch(text);
    m_table.setFocus();
    QTest::keyClick(&m_table, Qt::Key_A, Qt::ControlModifier);
    QTest::qWait(100);
    return m_viewModel.persistedSelections.size();
}

void Walk::pickAcrossSearches()
{
    // Two manufacturers with enough plugins for the progress panel.
    std::vector<std::pair<int, QString>> manufacturers;
    for (const QString& manufacturer : *m_viewModel.allManufacturers) {
        const auto isTheirs = [&manufacturer](const AudioPlugin& each) {
            return each.manufacturer == manufacturer;
        };
        const auto count = std::count_if(m_viewModel.plugins->begin(), m_viewModel.plugins->end(), isTheirs);
        manufacturers.emplace_back(static_cast<int>(count), manufacturer);
    }
    std::sort(manufacturers.rbegin(), manufacturers.rend());
    const qsizetype first = pickAll(manufacturers[1].second);
    const qsizetype both = pickAll(manufacturers[2].second);
    step(u"Two searches collect one selection"_s, first > 0 && both > first && both >= 90,
         u"%1 plugins, then %2"_s.arg(first).arg(both));
    screenshot(u"bulk-pane"_s);
}

int Walk::countOnDisk(const AudioPlugins& plugins, bool atOriginalPath) const
{
    const auto isThere = [atOriginalPath](const AudioPlugin& each) {
        return QFile::exists(each.originalPath) == atOriginalPath;
    };
    return static_cast<int>(std::count_if(plugins.begin(), plugins.end(), isThere));
}

void Walk::act(const QString& button, const QString& midRunScreenshot)
{
    click(button);
    QTest::qWait(100);
    if (auto* confirm = m_window.findChild<QWidget*>(u"confirmButton"_s)) {
        if (!midRunScreenshot.isEmpty())
            screenshot(midRunScreenshot + u"-question"_s, Area::screen);
        QTest::mouseClick(confirm, Qt::LeftButton);
    }
    if (!midRunScreenshot.isEmpty()) {
        const bool isMidRun = waitFor([this] { return *m_progress.hudModel().progress >= 0.3; });
        step(u"The progress panel counts while the script runs"_s, isMidRun && *m_viewModel.isRunningScript,
             u"%1%"_s.arg(static_cast<int>(100 * *m_progress.hudModel().progress)));
        QTest::qWait(150); // until the panel has appeared
        screenshot(midRunScreenshot, Area::screen);
    }
    waitFor([this] { return !*m_viewModel.isRunningScript; });
    QTest::qWait(700); // the panel stays for a moment after the end
}

void Walk::bulk()
{
    click(u"bulkRow0Chip0"_s);
    click(u"formatChipAAX"_s);
    QTest::qWait(400);
    AudioPlugins meant = m_viewModel.bulkActionPlugins();
    std::erase_if(meant, [](const AudioPlugin& each) { return !each.isEnabled; });
    const bool hasNoAAX = std::none_of(
        meant.begin(), meant.end(), [](const AudioPlugin& each) { return each.format == PluginFormat::aax; });
    step(u"One variant and one whole format are switched off"_s,
         hasNoAAX && std::ssize(meant) < m_viewModel.persistedSelections.size() && meant.size() >= 51,
         u"%1 enabled plugins are left"_s.arg(meant.size()));
    screenshot(u"bulk-pane-chips"_s);
    m_appearance.setDark(true);
    screenshot(u"bulk-pane-dark"_s);
    m_appearance.setDark(false);

    const int enabledBefore = *m_viewModel.dbEnabledCount;
    const int count = static_cast<int>(meant.size());
    act(u"disableSelectedButton"_s, u"bulk-progress"_s);
    step(u"\"Disable Selected\" moves all of them with one request"_s,
         countOnDisk(meant, false) == count && logSays(count, ActivityAction::disabled) &&
             *m_viewModel.dbEnabledCount == enabledBefore - count,
         u"%1 moved, %2 enabled in the catalogue"_s.arg(countOnDisk(meant, false))
             .arg(*m_viewModel.dbEnabledCount));
    screenshot(u"bulk-disabled"_s);

    act(u"enableSelectedButton"_s);
    // Plugins that were disabled before the walk are enabled too; the others are back at their original
    // paths.
    step(u"\"Enable Selected\" brings them back"_s,
         countOnDisk(meant, true) == count && logSays(count, ActivityAction::enabled) &&
             *m_viewModel.dbEnabledCount >= enabledBefore,
         u"%1 enabled in the catalogue"_s.arg(*m_viewModel.dbEnabledCount));
    click(u"clearAllButton"_s);
    typeSearch({});
    step(u"\"Clear All\" empties the selection"_s, m_viewModel.persistedSelections.isEmpty());
}

void Walk::deleteThree()
{
    m_table.setFocus();
    m_table.setCurrentIndex(m_table.model()->index(10, 1));
    QTest::keyClick(&m_table, Qt::Key_Down, Qt::ShiftModifier);
    QTest::keyClick(&m_table, Qt::Key_Down, Qt::ShiftModifier);
    QTest::qWait(100);
    const AudioPlugins three = m_viewModel.bulkActionPlugins();
    const int before = *m_viewModel.dbTotalCount;
    act(u"deleteSelectedButton"_s);
    const bool areGone = std::none_of(
        three.begin(), three.end(), [](const AudioPlugin& each) { return QFile::exists(each.currentPath); });
    step(u"\"Delete Selected\" deletes three for good"_s,
         three.size() == 3 && areGone && logSays(3, ActivityAction::deleted) &&
             *m_viewModel.dbTotalCount == before - 3,
         u"%1 plugins are left"_s.arg(*m_viewModel.dbTotalCount));
    m_viewModel.clearSelection();
    testScanAgrees();
}

void Walk::testScanAgrees()
{
    const int total = *m_viewModel.dbTotalCount;
    const int enabled = *m_viewModel.dbEnabledCount;
    click(u"scanButton"_s);
    step(u"A new scan finds just what the catalogue says"_s,
         *m_viewModel.dbTotalCount == total && *m_viewModel.dbEnabledCount == enabled,
         u"%1 plugins, %2 of them enabled"_s.arg(*m_viewModel.dbTotalCount).arg(*m_viewModel.dbEnabledCount));
}

void Walk::cleanUpDemos()
{
    click(u"resetButton"_s);
    for (const Qt::Key key :
         {Qt::Key_Q, Qt::Key_E, Qt::Key_Q, Qt::Key_E, Qt::Key_Q, Qt::Key_E, Qt::Key_Q, Qt::Key_E})
        QTest::keyClick(m_window.windowHandle(), key);
    const bool hasNoPanel =
        waitFor([this] { return *m_uadCleanup.showCleanupSheet && m_uadCleanup.errorMessage->has_value(); });
    step(u"The hidden keys open the clean-up"_s, hasNoPanel, m_uadCleanup.errorMessage->value_or(QString()));
    screenshot(u"clean-up-problem"_s, Area::screen);
    const auto tryAgain = [this] {
        click(u"cleanupTryAgainButton"_s);
        waitFor([this] { return !*m_uadCleanup.isLoading; });
        QTest::qWait(100);
    };
    tryAgain();
    step(u"\"Try Again\" reads the profile on the Desktop"_s,
         m_uadCleanup.demoPlugins->size() == 6 && m_uadCleanup.authorizedPlugins->size() == 2,
         u"%1 demos, %2 chosen"_s.arg(m_uadCleanup.demoPlugins->size()).arg(m_uadCleanup.selectedCount()));
    screenshot(u"clean-up"_s, Area::screen);
    click(u"disableDemosButton"_s);
    const bool isComplete = waitFor([this] { return *m_uadCleanup.cleanupComplete; });
    QTest::qWait(100);
    const AudioPlugins& all = *m_viewModel.plugins;
    const auto ownedAreOn = std::all_of(all.begin(), all.end(), [](const AudioPlugin& each) {
        const bool isOwned =
            each.name.startsWith(u"UAD Ambervale"_s) || each.name.startsWith(u"UAD Elderglass"_s);
        return !each.name.startsWith(u"UAD "_s) || each.isEnabled == isOwned;
    });
    step(u"All demos go off in every format, and what is owned stays"_s,
         isComplete && *m_uadCleanup.disabledCount == 36 && ownedAreOn &&
             logSays(36, ActivityAction::disabled),
         u"%1 files"_s.arg(*m_uadCleanup.disabledCount));
    screenshot(u"clean-up-complete"_s, Area::screen);
    m_uadCleanup.retryWithExistingProfile();
    const bool isOver = waitFor([this] { return m_uadCleanup.errorMessage->has_value(); });
    step(u"A second run has nothing to do"_s, isOver, m_uadCleanup.errorMessage->value_or(QString()));
    click(u"closeCleanupButton"_s);
    click(u"allPluginsButton"_s);
}

void Walk::profiles()
{
    named<QAbstractButton>(u"profilesHeader"_s).click();
    QTest::qWait(300);
    const auto status = [this](int row) { return named<QLabel>(u"profileRow%1Status"_s.arg(row)).text(); };
    const auto apply = [&](int row) {
        click(u"profileRow%1Apply"_s.arg(row));
        QTest::qWait(150);
        screenshot(u"profile-apply-question"_s, Area::screen);
        click(u"confirmButton"_s);
        const bool isDone =
            waitFor([&] { return !*m_viewModel.isRunningScript && status(row) == u"Up to date"_s; });
        QTest::qWait(800); // the panel stays for a moment after the end
        return isDone;
    };
    saveProfile(u"Mixing"_s);
    // A profile has one state for all copies of a plugin: disabled copies of an enabled plugin become
    // enabled.
    const bool isOne = apply(0);
    step(u"Applied, a profile brings all copies of a plugin into one state"_s, isOne, status(0));
    saveProfile(u"Mastering"_s);
    step(u"The state is saved under two names"_s, status(0) == u"Up to date"_s && status(1) == status(0),
         status(0));

    AudioPlugins thirty;
    for (const AudioPlugin& plugin : *m_viewModel.plugins) {
        if (plugin.isEnabled && plugin.format == PluginFormat::vst3 && thirty.size() < 30)
            thirty.push_back(plugin);
    }
    QSet<QUuid> ids;
    for (const AudioPlugin& plugin : thirty)
        ids.insert(plugin.id);
    m_viewModel.collectSelection(ids);
    m_viewModel.refreshFromDatabase();
    QTest::qWait(100);
    act(u"disableSelectedButton"_s);
    click(u"clearAllButton"_s);
    QTest::qWait(100);
    click(u"profileRow0"_s);
    QTest::qWait(200);
    step(u"A preview shows the thirty changes"_s,
         m_viewModel.filteredPlugins().size() == 30 && status(0) == u"30 changes to apply"_s, status(0));
    screenshot(u"profile-preview"_s);
    const bool isDone = apply(0);
    step(u"Applying it brings them back with one request"_s, isDone && countOnDisk(thirty, true) == 30,
         status(0));
    QTest::qWait(800);
    click(u"closePreviewButton"_s);
    click(u"allPluginsButton"_s);
}

bool Walk::exportAs(const QString& format)
{
    click(u"exportButton"_s);
    QTest::qWait(150);
    click(u"exportFormat"_s + format);
    screenshot(u"export-"_s + format.toLower(), Area::screen);
    click(u"exportConfirmButton"_s);
    const QString path = m_layout.documents + u"/Orvanlite_Plugins."_s + format.toLower();
    const bool asks = waitFor([this] { return m_window.findChild<QFileDialog*>(u"savePanel"_s) != nullptr; });
    if (!asks)
        return false;
    auto& panel = named<QFileDialog>(u"savePanel"_s);
    const bool proposes = panel.selectedFiles().value(0) == path;
    QTest::keyClick(&panel, Qt::Key_Return);
    return proposes && waitFor([&] { return QFile::exists(path) && QFile(path).size() > 0; });
}

void Walk::exportReports()
{
    QDir().mkpath(m_layout.documents);
    typeSearch(u"Bralmo"_s);
    step(u"The whole library is exported as PDF, whatever is searched for"_s, exportAs(u"PDF"_s),
         m_layout.documents);
    step(u"And as CSV"_s, exportAs(u"CSV"_s), m_layout.documents);
    QFile csv(m_layout.documents + u"/Orvanlite_Plugins.csv"_s);
    const bool isOpen = csv.open(QIODevice::ReadOnly);
    const auto lines = csv.readAll().trimmed().count('\n');
    step(u"It has a line for each plugin"_s, isOpen && lines >= std::ssize(*m_viewModel.plugins),
         u"%1 lines below the titles"_s.arg(lines));
    typeSearch({});
}

void Walk::looks()
{
    m_appearance.setDark(true);
    screenshot(u"main-window-dark"_s);
    m_appearance.setDark(false);
}

void Walk::clickSwitch(int row)
{
    const QRect cell = m_table.visualRect(m_table.model()->index(row, 0));
    QTest::mouseClick(m_table.viewport(), Qt::LeftButton, {}, PluginTableDelegate::switchRect(cell).center());
}

} // namespace orvanlite::demo
