#include "demo/Walk.h"

#include "demo/DemoAppearance.h"
#include "model/Console.h"
#include "operations/PluginManagerViewModel.h"
#include "platform/SystemLayout.h"
#include "shell/ContentView.h"
#include "shell/MainWindow.h"
#include "shell/PluginTableDelegate.h"
#include "shell/PluginTableHeader.h"
#include "shell/PluginTableModel.h"
#include "shell/PluginTableView.h"

#include <QFile>
#include <QLineEdit>
#include <QScreen>
#include <QScrollBar>
#include <QTest>
#include <QWindow>

#include <algorithm>

namespace orvanlite::demo {

using namespace Qt::StringLiterals;

Walk::Walk(MainWindow& window, DemoAppearance& appearance, const platform::SystemLayout& layout,
           QString outputFolder)
    : m_window(window)
    , m_appearance(appearance)
    , m_layout(layout)
    , m_outputFolder(std::move(outputFolder))
    , m_viewModel(qobject_cast<ContentView*>(window.centralWidget())->pluginManager())
    , m_table(named<PluginTableView>(u"pluginTable"_s))
{}

bool Walk::run()
{
    m_appearance.setDark(false);
    firstScan();
    search();
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
    looks();
    printLine(m_allSucceeded ? u"All steps came out right."_s : u"Some steps FAILED."_s);
    return m_allSucceeded;
}

void Walk::firstScan()
{
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
    QTest::mouseClick(&named<QWidget>(u"clearSearchButton"_s), Qt::LeftButton);
    const bool isBack =
        waitFor([this] { return *m_viewModel.totalPluginCount == *m_viewModel.dbTotalCount; });
    step(u"\"Clear\" brings everything back"_s, isBack);
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
    QTest::mouseClick(&named<QWidget>(u"loadAllButton"_s), Qt::LeftButton);
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

void Walk::looks()
{
    m_appearance.setDark(true);
    QTest::qWait(100);
    screenshot(u"main-window-dark"_s);
    m_appearance.setDark(false);
}

void Walk::step(const QString& title, bool succeeded, const QString& detail)
{
    m_allSucceeded = m_allSucceeded && succeeded;
    const QString result = succeeded ? u"ok      "_s : u"FAILED  "_s;
    printLine(result + title + (detail.isEmpty() ? QString() : u": "_s + detail));
}

void Walk::screenshot(const QString& name)
{
    QTest::qWait(150);
    const QPixmap image = m_window.screen()->grabWindow(m_window.winId());
    const QString file = m_outputFolder + u'/' + name + u".png"_s;
    step(u"Screenshot"_s, !image.isNull() && image.save(file), file);
}

void Walk::typeSearch(const QString& text)
{
    auto& field = named<QLineEdit>(u"searchField"_s);
    field.setFocus();
    QTest::keyClick(&field, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(&field, Qt::Key_Backspace);
    QTest::keyClicks(&field, text);
    QTest::qWait(150); // the list follows 50 ms behind the last letter
}

void Walk::clickSwitch(int row)
{
    const QRect cell = m_table.visualRect(m_table.model()->index(row, 0));
    QTest::mouseClick(m_table.viewport(), Qt::LeftButton, {}, PluginTableDelegate::switchRect(cell).center());
}

bool Walk::waitFor(const std::function<bool()>& condition) { return QTest::qWaitFor(condition, 10'000); }

template <typename Widget>
Widget& Walk::named(const QString& objectName)
{
    auto* widget = m_window.findChild<Widget*>(objectName);
    if (!widget)
        qFatal("no control is named %s", qPrintable(objectName));
    return *widget;
}

} // namespace orvanlite::demo
