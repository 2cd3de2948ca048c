#include "records/PDFReport.h"

#include "records/PDFText.h"
#include "records/PDFTextMap.h"

#include <QBuffer>
#include <QDateTime>
#include <QLocale>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <QRegularExpression>

namespace orvanlite {

using namespace Qt::StringLiterals;

namespace {

// All in points, from the top left corner of the page.
constexpr int kPointsPerInch = 72;
constexpr double kLeft = 40;
constexpr double kContentWidth = 532;
constexpr double kTitleTop = 20;
constexpr double kSummaryTop = 40;
constexpr double kFirstBandTop = 70;
constexpr double kBandTop = 30;
constexpr double kBandHeight = 20;
constexpr double kHeadingOffset = 4;
constexpr double kRowsBelowBand = 24;
constexpr double kRowHeight = 16;
constexpr double kRowsEnd = 752;
constexpr double kCellOffsetX = 4;
constexpr double kCellOffsetY = 3;

constexpr QColor kBandColour(221, 72, 116);
constexpr QColor kStripeColour(242, 242, 242);
constexpr QColor kSummaryColour(85, 85, 85);

constexpr QStringView kTitle = u"Orvanlite — Plugin Export";

/// Long date without the weekday, which Qt's long format starts or ends with, and short time without the
/// seconds, which Qt's short format has in the C locale.
QString longDateShortTime(Date date)
{
    static const QRegularExpression weekday(
        u"^dddd[,،]?\\s*(?:'[^']*'\\s*)?|[,،]?\\s*\\(?dddd\\)?$"_s); // Danish has a word after it
    static const QRegularExpression seconds(u"[:.]ss?"_s);
    const QLocale locale;
    const QDateTime moment = QDateTime::fromMSecsSinceEpoch(static_cast<qint64>(date.unixTime() * 1000));
    const QString format = locale.dateFormat(QLocale::LongFormat).remove(weekday);
    return u"%1, %2"_s.arg(
        locale.toString(moment.date(), format),
        locale.toString(moment.time(), locale.timeFormat(QLocale::ShortFormat).remove(seconds)));
}

class Report {
public:
    Report(QPdfWriter& writer, QPainter& painter, const ExportColumns& columns)
        : m_writer(writer)
        , m_painter(painter)
        , m_columns(columns)
        , m_widths(calculateColumnWidths(columns, kContentWidth))
    {}

    void drawHead(const QString& summary);
    void drawTable(const ExportRows& rows, Date now);
    [[nodiscard]] TextCorrections corrections() const;

private:
    void fill(const QRectF& rect, const QColor& colour);
    void drawBand(double top);
    void drawCells(const AudioPlugin& plugin, double top, Date now);

    QPdfWriter& m_writer;
    QPainter& m_painter;
    const ExportColumns& m_columns;
    const std::array<double, kExportColumnCount> m_widths;
    PDFText m_title{16, QFont::Bold};
    PDFText m_summary{10, QFont::Normal};
    PDFText m_headings{9, QFont::Bold};
    PDFText m_cells{8, QFont::Normal};
};

void Report::drawHead(const QString& summary)
{
    m_title.add(kTitle.toString(), {kLeft, kTitleTop});
    m_title.draw(m_painter, Qt::black);
    m_summary.add(summary, {kLeft, kSummaryTop});
    m_summary.draw(m_painter, kSummaryColour);
}

void Report::fill(const QRectF& rect, const QColor& colour)
{
    constexpr int kUnits = PDFText::kUnits;
    m_painter.fillRect(QRectF(rect.topLeft() * kUnits, rect.size() * kUnits), colour);
}

void Report::drawBand(double top)
{
    double x = kLeft;
    for (std::size_t i = 0; i < m_columns.size(); ++i) {
        m_headings.add(rawValue(m_columns[i].option), {x + kCellOffsetX, top + kHeadingOffset});
        x += m_widths[i];
    }
    fill(QRectF(kLeft, top, x - kLeft, kBandHeight), kBandColour);
    m_headings.draw(m_painter, Qt::white);
}

void Report::drawCells(const AudioPlugin& plugin, double top, Date now)
{
    double x = kLeft;
    for (std::size_t i = 0; i < m_columns.size(); ++i) {
        m_cells.add(m_columns[i].cellText(plugin, now), {x + kCellOffsetX, top + kCellOffsetY},
                    m_widths[i] - 2 * kCellOffsetX);
        x += m_widths[i];
    }
}

void Report::drawTable(const ExportRows& rows, Date now)
{
    drawBand(kFirstBandTop);
    double y = kFirstBandTop + kRowsBelowBand;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        if (y + kRowHeight >= kRowsEnd) {
            m_cells.draw(m_painter, Qt::black);
            m_writer.newPage();
            drawBand(kBandTop);
            y = kBandTop + kRowsBelowBand;
        }
        // Striping continues across pages.
        if (i % 2 == 0)
            fill(QRectF(kLeft, y, kContentWidth, kRowHeight), kStripeColour);
        drawCells(*rows[i], y, now);
        y += kRowHeight;
    }
    m_cells.draw(m_painter, Qt::black);
}

TextCorrections Report::corrections() const
{
    TextCorrections all;
    for (const PDFText* text : {&m_title, &m_summary, &m_headings, &m_cells})
        all.insert(text->corrections());
    return all;
}

} // namespace

QByteArray generatePDF(const ExportRows& rows, const ExportColumns& columns, ExportSortOption sortBy,
                       Date now)
{
    QByteArray pdf;
    TextCorrections corrections;
    {
        QBuffer buffer(&pdf);
        buffer.open(QIODevice::WriteOnly);
        QPdfWriter writer(&buffer);
        writer.setTitle(kTitle.toString());
        writer.setCreator(u"Orvanlite"_s);
        writer.setResolution(kPointsPerInch * PDFText::kUnits);
        writer.setPageSize(QPageSize(QPageSize::Letter));
        writer.setPageMargins(QMarginsF());
        QPainter painter;
        if (!painter.begin(&writer))
            return {};
        painter.setPen(Qt::NoPen);
        Report report(writer, painter, columns);
        report.drawHead(u"Sorted by: %1 • %2 plugins • %3"_s.arg(rawValue(sortBy))
                            .arg(rows.size())
                            .arg(longDateShortTime(now)));
        report.drawTable(rows, now);
        corrections = report.corrections();
    }
    correctTextMaps(pdf, corrections);
    return pdf;
}

} // namespace orvanlite
