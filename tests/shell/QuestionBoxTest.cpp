#include "ShellFixture.h"

#include "shell/toolkit/Dialogs.h"
#include "shell/toolkit/QuestionBox.h"

#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>

namespace orvanlite::test {

TEST(QuestionBoxTest, KeepsItsButtonsOnTheScreen)
{
    const FontScale large(1.6);
    const QString word(400, u'w');
    QStringList names{word};
    for (int i = 0; i < 300; ++i)
        names.append(u"Manufacturer %1"_s.arg(i));
    const QString message = names.join(u", "_s);
    QWidget window;
    window.show();
    Question question{u"q"_s, u"Replace “%1”?"_s.arg(word), message, u"Delete All"_s, true};
    auto& box = static_cast<QuestionBox&>(*ask(&window, question, [] {}));
    settle();
    EXPECT_TRUE(window.screen()->availableSize().height() > box.height() &&
                window.screen()->availableSize().width() > box.width());
    for (const QString& name : {u"cancelButton"_s, u"confirmButton"_s}) {
        const auto& button = named<QPushButton>(box, name);
        EXPECT_TRUE(box.rect().contains(QRect(button.mapTo(&box, QPoint()), button.size())));
        EXPECT_EQ(button.isDefault(), name == u"cancelButton"_s);
    }
    auto& area = named<QScrollArea>(box, u"questionScrollArea"_s);
    EXPECT_EQ(area.focusPolicy(), Qt::StrongFocus);
    press(box, u"cancelButton"_s, Qt::Key_PageDown);
    EXPECT_GT(area.verticalScrollBar()->value(), 0);
    for (const auto& [name, text] :
         {std::pair{u"questionHeading"_s, box.heading()}, {u"questionMessage"_s, message}}) {
        auto& label = named<QLabel>(box, name);
        EXPECT_EQ(label.toolTip() + u'|' + spokenName(label), text + u'|' + text);
        const QString start = label.text().section(u'…', 0, 0);
        EXPECT_TRUE(text.startsWith(start) && start.size() < word.size()) << qPrintable(start);
        EXPECT_EQ(label.text().last(9), text.last(9)) << "elided in the middle";
    }
    EXPECT_EQ(spoken(box).role(), QAccessible::AlertMessage);
}

} // namespace orvanlite::test
