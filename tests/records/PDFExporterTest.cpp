#include "records/PDFExporter.h"

#include "records/ExportTable.h"
#include "records/PDFTextMap.h"
#include "records/SavePanel.h"
#include "support/Fakes.h"

#include <QFile>
#include <QImage>
#include <QLocale>
#include <QProcess>
#include <QRegularExpression>

#include <cmath>
#include <filesystem>
#include <map>

namespace orvanlite::test {

namespace {

struct AnsweringPanel final : SavePanel {
    std::optional<QString> answer;
    SaveRequest asked;
    void ask(const SaveRequest& request, std::function<void(const QString&)> chosen) override
    {
        asked = request;
        if (answer)
            chosen(*answer);
    }
};

struct Word {
    QString text;
    QRectF box;
};
using Page = std::vector<Word>;

AudioPlugin plugin(const QString& name, const QString& manufacturer = u"Maker"_s)
{
    return {{}, name, manufacturer, PluginFormat::vst3, {}, {}, true, {}, {}, {}};
}

} // namespace

class PDFExporterTest : public testing::Test {
protected:
    PDFExporterTest() { m_panel.answer = m_system.root.at(u"/Report.pdf"); }

    QByteArray exportPDF(const AudioPlugins& plugins, ExportSortOption sort = ExportSortOption::name)
    {
        PDFExporter::exportPlugins(plugins, ExportFormat::pdf, sort, m_panel, m_system.platform);
        return m_system.root.content(u"/Report.pdf");
    }
    QByteArray ask(const QString& program, QStringList arguments, const QStringList& more = {})
    {
        QProcess process;
        process.start(program, arguments << m_system.root.at(u"/Report.pdf") << more);
        EXPECT_TRUE(process.waitForFinished()) << qPrintable(program) << " is not installed";
        EXPECT_EQ(process.exitCode(), 0) << process.readAllStandardError().constData();
        return process.readAllStandardOutput();
    }
    std::vector<Page> pages()
    {
        static const QRegularExpression item(
            u"<page width=\"612.0+\" height=\"792.0+\">|"
            "<word xMin=\"(.+)\" yMin=\"(.+)\" xMax=\"(.+)\" yMax=\"(.+)\">(.*)</word>"_s);
        std::vector<Page> found;
        for (const auto& match :
             item.globalMatch(QString::fromUtf8(ask(u"pdftotext"_s, {u"-bbox"_s}, {u"-"_s})))) {
            const auto corner = [&match](int first) {
                return QPointF(match.captured(first).toDouble(), match.captured(first + 1).toDouble());
            };
            if (match.lastCapturedIndex() == 0)
                found.emplace_back();
            else
                found.back().push_back({match.captured(5), QRectF(corner(1), corner(3))});
        }
        return found;
    }
    QImage picture(int page)
    {
        const QString file = m_system.root.at(u"/page");
        const QString number = QString::number(page);
        ask(u"pdftoppm"_s, {u"-r"_s, u"72"_s, u"-png"_s, u"-singlefile"_s, u"-f"_s, number}, {file});
        return QImage(file + u".png"_s);
    }

    TestPlatform m_system;
    AnsweringPanel m_panel;
};

TEST_F(PDFExporterTest, LaysOutRowsAndStripes)
{
    AudioPlugins plugins;
    for (int i = 84; i >= 0; --i)
        plugins.push_back(plugin(u"N%1"_s.arg(i, 3, 10, QChar(u'0'))));
    const QLocale before;
    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
    exportPDF(plugins);
    QLocale::setDefault(before);
    const std::vector<Page> found = pages();
    ASSERT_EQ(found.size(), 3U);

    int row = 0;
    for (std::size_t page = 0; page < 3; ++page) {
        SCOPED_TRACE(page);
        const double band = page == 0 ? 70 : 30;
        double y = band + 24;
        QString titles;
        for (const Word& word : found[page]) {
            if (word.box.top() > band - 2 && word.box.bottom() < band + 22)
                titles += word.text + u' ' + QString::number(qRound(word.box.left())) + u' ';
            if (word.text != u"N%1"_s.arg(row, 3, 10, QChar(u'0')))
                continue;
            EXPECT_NEAR(word.box.left(), 44, 0.1);
            EXPECT_NEAR(word.box.center().y(), y + 8.4, 1.2); // the line of an 8 point font is 9 to 12 high
            y += 16;
            ++row;
        }
        EXPECT_TRUE(
            titles.startsWith(u"Name 44 Status 182 Manufacturer 236 Format 353 Version 416 Last 491 "_s))
            << qPrintable(titles);
        EXPECT_EQ(row, page == 0 ? 41 : page == 1 ? 84 : 85);

        const QImage image = picture(static_cast<int>(page) + 1);
        const auto isAt = [&](int below, QRgb colour) {
            return image.pixel(570, static_cast<int>(band) + below) == colour;
        };
        const QRgb white = qRgb(255, 255, 255);
        const QRgb stripe = qRgb(242, 242, 242);
        EXPECT_TRUE(isAt(0, qRgb(221, 72, 116)) && isAt(19, qRgb(221, 72, 116)) && isAt(21, white));
        // Rows 0 and 84 are even, row 41 is not.
        EXPECT_TRUE(isAt(24, page == 1 ? white : stripe) && isAt(40, page == 1 ? stripe : white));
    }
    EXPECT_EQ(found[0].front().text, u"Orvanlite"_s);
    EXPECT_NEAR(found[0].front().box.center().y(), 20 + 10.9, 2);
    const auto summary = [](const Page& page) {
        QString text;
        for (const Word& word : page)
            text += word.box.top() > 36 && word.box.bottom() < 60 ? word.text + u' ' : QString();
        return text;
    };
    EXPECT_EQ(summary(found[0]), u"Sorted by: Name • 85 plugins • November 14, 2023, 10:13 PM "_s);
    exportPDF({});
    ASSERT_EQ(pages().size(), 1U);
    EXPECT_EQ(summary(pages()[0]), u"Sorted by: Name • 0 plugins • 14 November 2023, 22:13 "_s) << "C locale";
}

TEST_F(PDFExporterTest, TextCanBeCopied)
{
    const QStringList names{
        u"Office ﬁ ffl fj 3x4 ->"_s, u"Ιδέα κιθάρας"_s, u"Привет Ёж"_s, u"Cafe\u0301 Zoe\u0308"_s,
        u"音源 office 長青"_s,       u"عربي"_s,         u"two\nlines"_s};
    AudioPlugins plugins{plugin(u"A \uE123\U0010FFFD B"_s)};
    for (const QString& name : names)
        plugins.push_back(plugin(name));
    plugins.push_back(plugin(u"Zz "_s + QString(20, u'W'), QString(20, u'音') + u"fi"_s));
    const QByteArray pdf = exportPDF(plugins, ExportSortOption::status);
    const QString text = QString::fromUtf8(ask(u"pdftotext"_s, {u"-layout"_s}, {u"-"_s}));
    for (const QString& name : names)
        EXPECT_TRUE(text.contains(name.simplified().normalized(QString::NormalizationForm_C)))
            << qPrintable(name);
    // Characters without a glyph neither end the page nor shift later cells.
    EXPECT_EQ(text.count(u"VST3"), plugins.size());
    const std::vector<Page> found = pages();
    for (const Word& word : found.front()) {
        const double column = 40 + 532 * 0.58;
        EXPECT_TRUE(word.text != u"VST3" || std::abs(word.box.left() - column - 4) < 0.1) << word.box.left();
        if (word.text.startsWith(u"WWW")) {
            EXPECT_TRUE(word.text.endsWith(u"…"));
            EXPECT_LE(word.box.right(), column - 4);
            EXPECT_GT(word.box.right(), column - 4 - 8);
        }
        if (word.text.startsWith(u"音音")) {
            EXPECT_TRUE(word.text.endsWith(u"…")) << qPrintable(word.text);
            EXPECT_LE(word.box.right(), 40 + 532 * 0.32 - 4);
        }
    }
    EXPECT_TRUE(ask(u"qpdf"_s, {u"--check"_s}).contains("No syntax or stream encoding errors"));
    EXPECT_TRUE(ask(u"pdfinfo"_s, {}).contains("Orvanlite — Plugin Export"));
    const QByteArrayList fonts = ask(u"pdffonts"_s, {}).trimmed().split('\n').mid(2);
    EXPECT_GE(fonts.size(), 3); // regular, bold, and one for the other scripts
    for (const QByteArray& font : fonts)
        EXPECT_TRUE(QRegularExpression(u" yes +\\w+ +yes "_s).match(QString::fromUtf8(font)).hasMatch())
            << font.constData();
    // A space must map to a space: viewers display a tab alike, but copy it as a tab.
    const QRegularExpression space(u"\\[<[^\\]]*<(0009|0020)>"_s);
    EXPECT_EQ(space.match(QString::fromLatin1(pdf)).captured(1), u"0020"_s);
}

TEST_F(PDFExporterTest, CorrectsOnlyCharacterMaps)
{
    QByteArray pdf =
        "<0009> <0009> <0009>\nbeginbfrange\n<0009> <0009> <0009>\n"
        "<0001> <0005> [<004F> <0009> <0269> <FECB> <FEFB> ]\nendbfrange\n<0001> <0002> <0009>\n";
    correctTextMaps(pdf, {{u'\t', u' '}, {u'\x0269', u'ι'}});
    EXPECT_EQ(pdf, "<0009> <0009> <0009>\nbeginbfrange\n<0009> <0009> <0020>\n"
                   "<0001> <0005> [<004F> <0020> <03B9> <0639> <FEFB> ]\nendbfrange\n<0001> <0002> <0009>\n");
}

TEST_F(PDFExporterTest, SortsByNameAfterEachKey)
{
    const auto made = [](const QString& name, const QString& maker, PluginFormat format, bool isEnabled,
                         const std::optional<QString>& version, std::optional<Date> used) {
        return AudioPlugin{{}, name, maker, format, {}, {}, isEnabled, version, {}, used};
    };
    const AudioPlugins plugins{
        made(u"delta"_s, u"Zeta"_s, PluginFormat::wavesBundle, false, u"9.0"_s, Date{100}),
        made(u"Alpha"_s, u"zeta"_s, PluginFormat::vst3, true, std::nullopt, Date{300}),
        made(u"charlie"_s, u"Beta"_s, PluginFormat::vst2, false, u"10.0"_s, std::nullopt),
        made(u"Bravo"_s, u"Beta"_s, PluginFormat::au, true, u""_s, Date{100}),
        made(u"alpha"_s, u"beta"_s, PluginFormat::vst3, true, u"10.0"_s, Date{-5e9})};
    const std::map<ExportSortOption, QString> wanted{
        {ExportSortOption::name, u"Alpha alpha Bravo charlie delta"_s},
        {ExportSortOption::manufacturer, u"alpha Bravo charlie Alpha delta"_s},
        {ExportSortOption::format, u"Bravo charlie Alpha alpha delta"_s},
        {ExportSortOption::status, u"Alpha alpha Bravo charlie delta"_s},
        {ExportSortOption::version, u"Alpha Bravo alpha charlie delta"_s},
        {ExportSortOption::lastUsed, u"Alpha Bravo delta alpha charlie"_s},
    };
    for (const auto& [option, names] : wanted) {
        QStringList sorted;
        for (const AudioPlugin* each : sortPlugins(plugins, option))
            sorted.append(each->name);
        EXPECT_EQ(sorted.join(u' '), names) << qPrintable(rawValue(option));
    }
}

TEST_F(PDFExporterTest, WritesTheCSVByteForByteAndOpensIt)
{
    AudioPlugin odd = plugin(u"The \"Big\", one\nin two"_s, {});
    odd.isEnabled = false;
    AudioPlugin fresh = plugin(u"Ünïcode"_s);
    fresh.version = u"1.0"_s;
    fresh.lastUsed = Date::fromUnix(m_system.clock.now() - 8 * 86400.0);
    m_panel.answer = m_system.root.at(u"/List.csv");
    // A reader of the old file keeps its content.
    m_system.root.addFile(u"/List.csv", "old");
    std::filesystem::create_hard_link(m_panel.answer->toStdString(),
                                      m_system.root.at(u"/Reader").toStdString());
    QFile::setPermissions(*m_panel.answer, QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup);
    const auto permissions = QFile::permissions(*m_panel.answer);
    PDFExporter::exportPlugins({odd, fresh}, ExportFormat::csv, ExportSortOption::status, m_panel,
                               m_system.platform);
    EXPECT_EQ(QFile::permissions(*m_panel.answer), permissions);
    EXPECT_EQ(m_system.root.content(u"/List.csv"),
              "\"Status\",\"Manufacturer\",\"Name\",\"Format\",\"Version\",\"Last Used(Est.)\"\n"
              "\"Enabled\",\"Maker\",\"Ünïcode\",\"VST3\",\"1.0\",\"1 weeks ago\"\n"
              "\"Disabled\",\"\",\"The \"\"Big\"\", one\nin two\",\"VST3\",\"—\",\"Unknown\"");
    EXPECT_EQ(m_system.root.content(u"/Reader"), "old");
    EXPECT_EQ(m_system.workspace.opened, std::vector<QUrl>{QUrl::fromLocalFile(*m_panel.answer)});

    // Neither a cancelled panel nor a failed write is reported; the latter is opened all the same.
    m_panel.answer.reset();
    exportPDF({fresh});
    EXPECT_EQ(m_panel.asked.title, u"Export Plugins as PDF"_s);
    EXPECT_EQ(m_panel.asked.fileName, u"Orvanlite_Plugins.pdf"_s);
    EXPECT_EQ(m_system.workspace.opened.size(), 1U);
    m_system.root.addFolder(u"/Report.pdf");
    m_panel.answer = m_system.root.at(u"/Report.pdf");
    PDFExporter::exportPlugins({fresh}, ExportFormat::pdf, ExportSortOption::name, m_panel,
                               m_system.platform);
    EXPECT_EQ(m_system.workspace.opened.size(), 2U);
}

} // namespace orvanlite::test
