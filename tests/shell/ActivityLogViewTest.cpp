#include "ShellFixture.h"

#include "shell/sidebar/ActivityLogList.h"
#include "shell/sidebar/ActivityLogView.h"
#include "shell/toolkit/QuestionBox.h"

#include <QAbstractItemModelTester>
#include <QScrollBar>

namespace orvanlite::test {

TEST(ActivityLogViewTest, ShowsTheLogAndClearsItWhenTheUserConfirms)
{
    TestPlatform system;
    ActivityLogManager log(system.platform);
    ActivityLogView view(log, system.clock, nullptr);
    view.resize(230, 400);
    view.show();
    auto& list = named<ActivityLogList>(view, u"activityLogList"_s);
    auto& clear = named(view, u"clearActivityButton"_s);
    const auto& empty = named<QLabel>(view, u"noActivityLabel"_s);
    const QAbstractItemModelTester tester(list.model(),
                                          QAbstractItemModelTester::FailureReportingMode::Fatal);
    const auto spoken = [&list](int row) {
        return QAccessible::queryAccessibleInterface(&list)->child(row)->text(QAccessible::Name);
    };
    EXPECT_TRUE(empty.isVisible() && !clear.isVisible() && !list.isVisible());

    log.logBatch({{u"Alpha"_s, u"VST3"_s}, {u"Beta"_s, u"AU"_s}}, ActivityAction::disabled);
    system.clock.setNow(system.clock.now() + 300);
    log.log(u"Gamma"_s, u"CLAP"_s, ActivityAction::deleted);
    turnEventLoop();
    EXPECT_TRUE(!empty.isVisible() && clear.isVisible() && list.isVisible());
    EXPECT_EQ(spoken(0), u"Gamma, CLAP, Deleted, just now"_s);
    EXPECT_EQ(spoken(1), u"Alpha, VST3, Disabled, 5m ago"_s);
    EXPECT_EQ(list.verticalScrollBar()->maximum(), 0) << "as high as its rows";
    system.clock.setNow(system.clock.now() + 86400);
    EXPECT_EQ(spoken(0), u"Gamma, CLAP, Deleted, yesterday"_s);

    std::vector<LoggedPlugin> many;
    for (int i = 0; i < 150; ++i)
        many.push_back({u"Plugin %1"_s.arg(i), u"VST3"_s});
    log.logBatch(many, ActivityAction::enabled);
    turnEventLoop();
    EXPECT_EQ(view.height(), 280);
    list.scrollTo(list.model()->index(30, 0), QAbstractItemView::PositionAtTop);
    list.setCurrentIndex(list.model()->index(31, 0));
    const QString atTop = list.indexAt({10, 2}).data().toString();
    log.logBatch(many, ActivityAction::disabled); // the oldest fall off
    turnEventLoop();
    EXPECT_EQ(list.model()->rowCount(), 200);
    EXPECT_EQ(list.indexAt({10, 2}).data().toString(), atTop);
    EXPECT_EQ(list.currentIndex().row(), 181);

    for (const bool isConfirmed : {false, true}) {
        click(clear);
        auto& box = named<QuestionBox>(view, u"clearActivityDialog"_s);
        EXPECT_EQ(box.heading(), u"Clear activity log?"_s);
        click(box, isConfirmed ? u"confirmButton"_s : u"cancelButton"_s);
        EXPECT_EQ(log.entries->empty(), isConfirmed);
    }
    EXPECT_TRUE(empty.isVisible() && !clear.isVisible() && !list.isVisible());
}

} // namespace orvanlite::test
