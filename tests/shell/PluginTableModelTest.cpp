#include "shell/table/PluginTableModel.h"

#include "model/Uuid.h"
#include "shell/toolkit/TickList.h"
#include "shell/toolkit/ToolTips.h"
#include "support/Fakes.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>

namespace orvanlite::test {

class PluginTableModelTest : public testing::Test {
protected:
    static AudioPlugin plugin(const QString& name)
    {
        const QString path = u"/Applications/Waves/"_s + name;
        return {makeUuid(), name, {}, PluginFormat::wavesBundle, path, path, true, {}, {}, {}};
    }
    QVariant cell(PluginColumn column, int role = Qt::DisplayRole)
    {
        return m_model.index(0, static_cast<int>(column)).data(role);
    }

    FakeClock m_clock;
    PluginTableModel m_model{m_clock};
    QAbstractItemModelTester m_tester{&m_model, QAbstractItemModelTester::FailureReportingMode::Fatal};
};

TEST_F(PluginTableModelTest, TellsWhatChangedInsteadOfResetting)
{
    const AudioPlugins four{plugin(u"a"_s), plugin(u"b"_s), plugin(u"c"_s), plugin(u"d"_s)};
    const AudioPlugins two(four.begin(), four.begin() + 2);
    AudioPlugins switched = two;
    switched[1].isEnabled = false;
    const std::tuple<const char*, AudioPlugins, AudioPlugins, QList<qsizetype>> rows[] = {
        {"the same", two, two, {0, 0, 0, 0, 0}},
        {"one switched", two, switched, {0, 1, 0, 0, 1}},
        {"longer", two, four, {0, 0, 1, 0, 0}},
        {"shorter", four, two, {0, 0, 0, 1, 0}},
        {"other order", two, {four[1], four[0]}, {1, 0, 0, 0, 0}},
        {"emptied", two, {}, {1, 0, 0, 0, 0}},
    };
    for (const auto& [title, from, to, wanted] : rows) {
        SCOPED_TRACE(title);
        m_model.setPlugins(from);
        const QSignalSpy resets(&m_model, &QAbstractItemModel::modelReset);
        const QSignalSpy changes(&m_model, &QAbstractItemModel::dataChanged);
        const QSignalSpy inserts(&m_model, &QAbstractItemModel::rowsInserted);
        const QSignalSpy removals(&m_model, &QAbstractItemModel::rowsRemoved);
        const QSignalSpy switches(&m_model, &PluginTableModel::stateChanged);
        m_model.setPlugins(to);
        EXPECT_EQ(m_model.plugins(), to);
        EXPECT_EQ((QList<qsizetype>{resets.size(), changes.size(), inserts.size(), removals.size(),
                                    switches.size()}),
                  wanted);
    }
}

TEST_F(PluginTableModelTest, SpeaksForEveryCell)
{
    AudioPlugin row = plugin(u"Foo"_s);
    m_model.setPlugins({row});
    const std::tuple<PluginColumn, QString, QString, QString, bool> cells[] = {
        {PluginColumn::status, u"Status"_s, u"Enabled"_s, u"Switch for Foo"_s, false},
        {PluginColumn::name, u"Name"_s, u"Foo"_s, u"/Applications/Waves/Foo"_s, false},
        {PluginColumn::manufacturer, u"Manufacturer"_s, u"Unknown"_s, {}, true},
        {PluginColumn::format, u"Format"_s, u"Waves"_s, {}, false},
        {PluginColumn::version, u"Version"_s, u"Unknown"_s, {}, false},
        {PluginColumn::lastUsed, u"Last Used(Est.)"_s, u"Unknown"_s, {}, true},
    };
    for (const auto& [column, title, accessible, description, isFaded] : cells) {
        SCOPED_TRACE(qPrintable(title));
        EXPECT_EQ(m_model.headerData(static_cast<int>(column), Qt::Horizontal, Qt::DisplayRole), title);
        EXPECT_EQ(cell(column, Qt::AccessibleTextRole), accessible);
        EXPECT_EQ(cell(column, Qt::AccessibleDescriptionRole).toString(), description);
        EXPECT_EQ(cell(column, PluginTableModel::IsFadedRole).toBool(), isFaded);
    }
    row.manufacturer = u"Klang"_s;
    row.version = QString();
    row.lastUsed = Date::fromUnix(m_clock.now() - 3 * 86400);
    m_model.setPlugins({row});
    EXPECT_EQ(cell(PluginColumn::manufacturer, Qt::ToolTipRole), u"Visit Klang website"_s);
    EXPECT_EQ(plainToolTip(u"A & B\n/C"_s), u"A & B\n/C"_s);
    TickListModel list;
    list.setRows({{QUuid(), u"<b>A"_s, {}, {}, false}});
    EXPECT_EQ(list.index(0).data(Qt::ToolTipRole), u"<span>&lt;b&gt;A</span>"_s);
    EXPECT_EQ(plainToolTip(u"<b>A</b> &\n/C"_s), u"<span>&lt;b&gt;A&lt;/b&gt; &amp;<br>/C</span>"_s);
    EXPECT_EQ(cell(PluginColumn::version), QString());
    EXPECT_EQ(cell(PluginColumn::lastUsed), u"3 days ago"_s);
    EXPECT_FALSE(cell(PluginColumn::lastUsed, PluginTableModel::IsFadedRole).toBool());
}

TEST_F(PluginTableModelTest, AsksForAToggleAndKeepsTheRow)
{
    m_model.setPlugins({plugin(u"Foo"_s)});
    const QSignalSpy asked(&m_model, &PluginTableModel::toggleRequested);
    const QModelIndex status = m_model.index(0, 0);
    EXPECT_FALSE(m_model.setData(status, Qt::Checked, Qt::CheckStateRole)) << "it is on already";
    EXPECT_FALSE(m_model.setData(m_model.index(0, 1), Qt::Unchecked, Qt::CheckStateRole));
    EXPECT_TRUE(m_model.setData(status, Qt::Unchecked, Qt::CheckStateRole));
    EXPECT_EQ(asked.size(), 1);
    EXPECT_EQ(status.data(Qt::CheckStateRole), Qt::Checked) << "the file has not moved yet";
}

} // namespace orvanlite::test
