#include "shell/app/CheatCode.h"

#include "UiSteps.h"

#include <QLineEdit>
#include <QWindow>

namespace orvanlite::test {

using namespace std::chrono_literals;

class CheatCodeTest : public testing::Test {
protected:
    void SetUp() override
    {
        m_field.show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&m_field));
        m_field.setFocus();
    }
    void TearDown() override { m_clock.advance(20s); } // no timer outlives its test

    void type(const QString& text)
    {
        for (const QChar letter : text)
            QTest::keyClick(m_field.windowHandle(), letter.toLatin1(),
                            letter.isUpper() ? Qt::ShiftModifier : Qt::NoModifier);
    }

    FakeClock m_clock;
    QLineEdit m_field;
    int m_matches = 0;
    bool m_wasArmed = true;
    CheatCode m_code{m_clock,
                     [this] {
                         ++m_matches;
                         m_wasArmed = m_code.cheatCodeArmed();
                     },
                     nullptr};
};

TEST_F(CheatCodeTest, MatchesTheLastLettersAndDigits)
{
    const std::tuple<QString, int, QString> rows[] = {
        {u"xy1QEqeQEqE"_s, 1, u"xy1QEqeQEq"_s},
        {u"qeqe-. qeqe"_s, 1, u"qeqe-. qeq"_s}, // neither letters nor digits: as if they were not there
        {u"qeqe7qeqe"_s, 0, u"qeqe7qeqe"_s},
        {u"qeqeqeqqeqeqeqe"_s, 1, u"qeqeqeqqeqeqeq"_s}, // a wrong key does not clear the buffer
        {u"qeqeqeqeqe"_s, 1, u"qeqeqeqqe"_s},           // disarmed after the match
    };
    for (const auto& [typed, matches, field] : rows) {
        SCOPED_TRACE(qPrintable(typed));
        m_matches = 0;
        m_field.clear();
        m_code.armCheatCode();
        type(typed);
        EXPECT_EQ(m_matches, matches);
        EXPECT_EQ(m_field.text(), field);
        EXPECT_EQ(m_code.cheatCodeArmed(), matches == 0);
        EXPECT_EQ(m_code.cheatCodeBuffer().isEmpty(), matches == 1);
        m_code.disarmCheatCode();
    }
    EXPECT_FALSE(m_wasArmed);
    m_field.clear();
    type(u"qeqeqeqe"_s);
    EXPECT_EQ(m_field.text(), u"qeqeqeqe"_s) << "no filter is left";
}

TEST_F(CheatCodeTest, TakesKeysByTheirText)
{
    m_code.armCheatCode();
    // No text, Ctrl+E, two characters, a letter of two units, one of two in lower case, a digit with an
    // accent.
    for (const QString& text :
         {u"q"_s, u""_s, u"\u0005"_s, u"ab"_s, u"\U0001D5D4"_s, u"\u0130"_s, u"\u0664\u0301"_s})
        QTest::sendKeyEvent(QTest::Press, m_field.windowHandle(), Qt::Key_unknown, text, Qt::AltModifier);
    EXPECT_EQ(m_code.cheatCodeBuffer(), u"q\U0001D5D4i\u0307\u0664\u0301"_s);
    type(u"qeqeqe"_s);
    EXPECT_TRUE(m_code.cheatCodeBuffer().startsWith(u"i\u0307"_s)) << "counts characters, not units";
    m_code.disarmCheatCode();
}

TEST_F(CheatCodeTest, ListensForTenSeconds)
{
    m_code.armCheatCode();
    m_clock.advance(9s);
    type(u"qeqeqeq"_s);
    m_code.armCheatCode(); // its own ten seconds are cut short by the first ones
    EXPECT_TRUE(m_code.cheatCodeArmed());
    m_clock.advance(2s);
    EXPECT_FALSE(m_code.cheatCodeArmed());
    type(u"qeqeqeqe"_s);
    EXPECT_EQ(m_matches, 0);
    m_code.armCheatCode();
    m_clock.advance(9s);
    EXPECT_FALSE(m_code.cheatCodeArmed()) << "the second timer is due";
}

TEST_F(CheatCodeTest, MayBeDestroyedWhileArmed)
{
    CheatCode(
        m_clock, [this] { ++m_matches; }, nullptr)
        .armCheatCode();
    type(u"qeqeqeqe"_s);
    m_clock.advance(11s);
    EXPECT_EQ(m_matches, 0);
}

} // namespace orvanlite::test
