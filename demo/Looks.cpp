#include "demo/Looks.h"

#include "demo/DemoAppearance.h"
#include "demo/MacLook.h"
#include "operations/PluginManagerViewModel.h"
#include "platform/FullDiskAccess.h"
#include "shell/app/MainWindow.h"
#include "shell/onboarding/OnboardingView.h"
#include "shell/table/PluginTableView.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDialog>
#include <QLineEdit>
#include <QTest>
#include <QWindow>

namespace orvanlite::demo {

using namespace Qt::StringLiterals;

namespace {

/// Milliseconds. Longer than every animation of the window.
constexpr int kRest = 450;
constexpr QSize kWindowSize(1200, 800);

/// The permission that the last onboarding page waits for.
class DiskAccess final : public platform::FullDiskAccess {
public:
    bool granted = false;
    [[nodiscard]] bool isGranted() const override { return granted; }
    [[nodiscard]] QUrl settings() const override { return {}; }
};

} // namespace

Looks::Looks(MainWindow& window, const platform::Platform& platform, DemoAppearance& appearance,
             const QString& outputFolder, bool isMac)
    : Stage(window, outputFolder)
    , m_platform(platform)
    , m_appearance(appearance)
    , m_isMac(isMac)
{}

void Looks::setDark(bool isDark)
{
    m_look = isDark ? u"dark-"_s : u"light-"_s;
    m_appearance.setDark(isDark);
    if (m_isMac)
        takeOverMacTheme(isDark); // in either order on a Mac
    QTest::qWait(kRest);
}

bool Looks::run()
{
    waitFor([this] { return *m_viewModel.dbTotalCount > 0 && !*m_viewModel.isLoading; });
    m_window.resize(kWindowSize);
    updateBanner();
    makeHistory();
    for (const bool isDark : {false, true}) {
        setDark(isDark);
        regions();
    }
    highContrast();
    changesUnderQuestion();
    setDark(false);
    return allSucceeded();
}

void Looks::updateBanner()
{
    const bool isThere = waitFor([this] { return named<QWidget>(u"updateBanner"_s).isVisible(); });
    step(u"The banner tells of a newer version"_s, isThere);
    for (const bool isDark : {false, true}) {
        setDark(isDark);
        picture(u"update-banner"_s);
    }
    click(u"updateBannerDismiss"_s);
}

void Looks::makeHistory()
{
    open(u"profiles"_s);
    saveProfile(u"Mixing"_s);
    saveProfile(u"Mastering"_s);
    click(u"allPluginsButton"_s);
    auto& table = named<PluginTableView>(u"pluginTable"_s);
    for (int row = 2; row < 6; ++row) {
        QTest::qWait(50);
        const AudioPlugin plugin = m_viewModel.filteredPlugins()[static_cast<std::size_t>(row)];
        table.setFocus();
        table.setCurrentIndex(table.model()->index(row, 1));
        QTest::keyClick(&table, Qt::Key_Space);
        waitFor([&] {
            return !*m_viewModel.isRunningScript &&
                   m_viewModel.filteredPlugins()[static_cast<std::size_t>(row)].isEnabled != plugin.isEnabled;
        });
    }
    leave();
}

void Looks::regions()
{
    leave();
    picture(u"empty-state"_s);
    sidebar();
    dialogs();
    bulkPane();
    profiles();
    smallestWindow();
    cleanUp();
    onboarding();
}

void Looks::sidebar()
{
    click(u"allPluginsButton"_s);
    picture(u"all-plugins"_s);
    open(u"statistics"_s);
    open(u"recent"_s);
    picture(u"recent-activity"_s);
    leave();
    open(u"formats"_s);
    click(u"formatRowVST3"_s);
    click(u"formatRowCLAP"_s);
    picture(u"formats"_s);
    leave();
    open(u"manufacturers"_s);
    auto& table = named<QWidget>(u"manufacturerTable"_s);
    table.setFocus();
    for (int row = 0; row < 3; ++row) {
        QTest::keyClick(&table, Qt::Key_Down);
        QTest::keyClick(&table, Qt::Key_Space);
    }
    QTest::keyClicks(&named<QLineEdit>(u"manufacturerSearchField"_s), u"a"_s);
    picture(u"manufacturers"_s);
    leave();
}

void Looks::dialogs()
{
    click(u"allPluginsButton"_s);
    QTest::qWait(kRest);
    click(u"disableFilteredButton"_s);
    picture(u"sidebar-question"_s);
    leave();
    open(u"recent"_s);
    click(u"clearActivityButton"_s);
    picture(u"clear-activity-question"_s);
    leave();
    click(u"exportButton"_s);
    picture(u"export-picker"_s);
    leave();
}

void Looks::bulkPane()
{
    click(u"allPluginsButton"_s);
    QTest::qWait(kRest);
    auto& table = named<PluginTableView>(u"pluginTable"_s);
    table.setFocus();
    table.setCurrentIndex(table.model()->index(0, 1));
    for (int row = 0; row < 14; ++row)
        QTest::keyClick(&table, Qt::Key_Down, Qt::ShiftModifier);
    picture(u"bulk-pane"_s);
    click(u"disableSelectedButton"_s);
    picture(u"bulk-question"_s);
    leave();
}

void Looks::profiles()
{
    open(u"profiles"_s);
    picture(u"profiles"_s);
    click(u"saveProfileButton"_s);
    picture(u"profile-name"_s);
    leave();
    open(u"profiles"_s);
    click(u"profileRow0"_s);
    picture(u"profile-changes"_s);
    click(u"previewTabAll"_s);
    picture(u"profile-all"_s);
    click(u"profileRow0Apply"_s);
    picture(u"profile-question"_s);
    leave();
}

void Looks::smallestWindow()
{
    click(u"allPluginsButton"_s);
    typeSearch(u"waves"_s);
    m_window.resize(m_window.minimumSize());
    auto& table = named<PluginTableView>(u"pluginTable"_s);
    table.setFocus();
    table.selectAll();
    picture(u"smallest-window"_s);
    m_window.resize(kWindowSize);
    leave();
}

void Looks::cleanUp()
{
    // Each "Reset" listens for the hidden keys for ten seconds; an earlier timeout would end this one's.
    QTest::qWait(10'500);
    click(u"resetButton"_s);
    for (const Qt::Key key :
         {Qt::Key_Q, Qt::Key_E, Qt::Key_Q, Qt::Key_E, Qt::Key_Q, Qt::Key_E, Qt::Key_Q, Qt::Key_E})
        QTest::keyClick(m_window.windowHandle(), key);
    step(u"The hidden keys open the clean-up"_s, named<QDialog>(u"uadCleanupSheet"_s).isVisible());
    picture(u"clean-up-problem"_s);
    click(u"cleanupTryAgainButton"_s);
    picture(u"clean-up"_s);
    leave();
}

void Looks::onboarding()
{
    DiskAccess access;
    OnboardingView sheet(m_platform, access, &m_window);
    sheet.open();
    for (int page = 0; page < OnboardingView::pageCount; ++page) {
        QTest::qWait(4 * kRest); // the illustrations are animated
        picture(u"onboarding-%1"_s.arg(page));
        QTest::keyClick(&sheet, Qt::Key_Right);
    }
    access.granted = true;
    QTest::qWait(2'200);
    picture(u"onboarding-granted"_s);
    sheet.reject();
}

void Looks::highContrast()
{
    m_appearance.setIncreasesContrast(true);
    for (const bool isDark : {false, true}) {
        setDark(isDark);
        m_look = u"contrast-"_s + m_look;
        dialogs();
        bulkPane();
        profiles();
    }
    m_appearance.setIncreasesContrast(false);
}

void Looks::changesUnderQuestion()
{
    const QFont before = QApplication::font();
    for (const bool isDark : {false, true}) {
        setDark(!isDark);
        click(u"allPluginsButton"_s);
        QTest::qWait(kRest);
        click(u"deleteFilteredButton"_s);
        setDark(isDark);
        picture(u"question-after-change"_s);
        QFont large = before;
        large.setPointSizeF(before.pointSizeF() * 1.6);
        QApplication::setFont(large);
        picture(u"question-with-large-font"_s);
        leave();
        picture(u"large-font"_s);
        QApplication::setFont(before);
    }
}

void Looks::open(const QString& section)
{
    auto& header = named<QAbstractButton>(section + u"Header"_s);
    if (!header.isChecked())
        header.click();
    QTest::qWait(kRest);
}

void Looks::leave()
{
    for (QDialog* dialog : m_window.findChildren<QDialog*>()) {
        if (dialog->isVisible())
            dialog->reject();
    }
    typeSearch({});
    click(u"resetButton"_s);
    QTest::qWait(kRest);
}

void Looks::picture(const QString& name)
{
    QTest::qWait(kRest);
    screenshot(m_look + name, Area::screen);
}

} // namespace orvanlite::demo
