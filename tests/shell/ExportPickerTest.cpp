#include "ShellFixture.h"

#include <QDialog>
#include <QFileDialog>

namespace orvanlite::test {

class ExportPickerTest : public ShellTest {
protected:
    ExportPickerTest()
    {
        m_root.addFolder(u"/Users/tester/Documents");
        addPlugins({u"VST3/Alpha.vst3"_s, u"VST3/Beta.vst3"_s, u"Disabled/CLAP/Gamma.clap"_s});
    }
    [[nodiscard]] QAbstractButton& button(const QString& name) { return named(window(), name); }
    void press(const QString& name, Qt::Key key = Qt::Key_Space) { test::press(window(), name, key); }
    [[nodiscard]] QString caption() { return named<QLabel>(window(), u"exportCaption"_s).text(); }
    [[nodiscard]] QFileDialog& panel() { return named<QFileDialog>(window(), u"savePanel"_s); }
    void save()
    {
        QTest::keyClick(&named<QLineEdit>(panel(), u"fileNameEdit"_s), Qt::Key_Return);
        settle();
    }
    [[nodiscard]] QByteArray saved(const char* suffix)
    {
        return m_root.content(QString::fromLatin1("/Users/tester/Documents/Orvanlite_Plugins.%1")
                                  .arg(QString::fromLatin1(suffix)));
    }
};

TEST_F(ExportPickerTest, ExportsAllPluginsByKeyboard)
{
    launch();
    search(u"Alpha"_s);
    ASSERT_EQ(shownNames(), QStringList(u"Alpha"_s));
    press(u"exportButton"_s);
    auto& picker = named<QDialog>(window(), u"exportPicker"_s);
    EXPECT_TRUE(picker.isVisible() && picker.windowModality() == Qt::WindowModal && picker.width() >= 380);
    EXPECT_EQ(caption(), u"The selected sort column will appear first in the PDF."_s);
    for (const QWidget* each : expectNamedControls(picker))
        EXPECT_GE(each->width(), each->sizeHint().width()) << qPrintable(each->objectName());
    press(u"exportFormatPDF"_s, Qt::Key_Right);
    EXPECT_EQ(button(u"exportConfirmButton"_s).text(), u"Export as CSV"_s);
    EXPECT_EQ(caption(), u"Columns will be ordered with the selected sort column first."_s);
    press(u"exportSort Name"_s, Qt::Key_Down);
    EXPECT_TRUE(button(u"exportSort Manufacturer"_s).isChecked());
    press(u"exportSort Format"_s);
    press(u"exportSort Format"_s, Qt::Key_Return);
    EXPECT_FALSE(window().findChild<QDialog*>(u"exportPicker"_s));
    EXPECT_EQ(panel().windowTitle(), u"Export Plugins as CSV"_s);
    save();
    const QByteArray report = saved("csv");
    EXPECT_TRUE(report.startsWith("\"Format\",\"Status\",")) << report.constData();
    EXPECT_TRUE(report.contains("\"Alpha\"") && report.contains("\"Beta\"")) << "ignores the search";
    const QUrl url = QUrl::fromLocalFile(m_root.at(u"/Users/tester/Documents/Orvanlite_Plugins.csv"));
    EXPECT_EQ(m_system.workspace.opened, std::vector{url});
}

TEST_F(ExportPickerTest, KeepsItsPicksAndAsksBeforeReplacing)
{
    const QString path = u"/Users/tester/Documents/Orvanlite_Plugins.pdf"_s;
    m_root.addFile(path, "a letter");
    launch();
    press(u"exportButton"_s);
    press(u"exportSort Version"_s);
    press(u"exportFormatPDF"_s, Qt::Key_Escape);
    EXPECT_FALSE(window().findChild<QDialog*>(u"savePanel"_s));
    press(u"exportButton"_s);
    EXPECT_TRUE(button(u"exportSort Version"_s).isChecked()) << "kept, although it was cancelled";
    press(u"exportCancelButton"_s);
    EXPECT_FALSE(window().findChild<QDialog*>(u"exportPicker"_s));

    press(u"exportButton"_s);
    click(window(), u"exportConfirmButton"_s);
    QTest::keyClick(&panel(), Qt::Key_Escape);
    settle();
    EXPECT_FALSE(window().findChild<QDialog*>(u"savePanel"_s));
    EXPECT_TRUE(m_system.workspace.opened.empty());

    press(u"exportButton"_s);
    press(u"exportConfirmButton"_s);
    save();
    press(u"cancelButton"_s);
    EXPECT_EQ(saved("pdf"), "a letter");
    save(); // in the panel, which is back with its name
    press(u"confirmButton"_s);
    EXPECT_TRUE(saved("pdf").startsWith("%PDF-"));
    EXPECT_EQ(m_system.workspace.opened, std::vector{QUrl::fromLocalFile(m_root.at(path))});
}

} // namespace orvanlite::test
