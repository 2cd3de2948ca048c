#include "records/PDFText.h"

#include <QFontDatabase>
#include <QPainter>
#include <QTextBoundaryFinder>
#include <QTextLayout>

#include <algorithm>
#include <cmath>
#include <numeric>

namespace orvanlite {

using namespace Qt::StringLiterals;

namespace {

/// Latin, Greek, Cyrillic and the usual punctuation and currency symbols are below this code point.
constexpr char16_t kPlainEnd = 0x2200;
constexpr char16_t kFirstMark = 0x300;
constexpr char16_t kFirstRadical = 0x2E80;
constexpr char16_t kRadicalsEnd = 0x2FE0;
constexpr int kKeptPieces = 5000;

bool isRightToLeft(QChar letter)
{
    const QChar::Direction direction = letter.direction();
    return direction == QChar::DirR || direction == QChar::DirAL || direction == QChar::DirAN;
}

/// Whether the letter can be set without shaping: its glyph does not depend on its neighbours.
bool needsNoShaping(QChar letter)
{
    const QChar::Script script = letter.script();
    const bool isScript = script == QChar::Script_Latin || script == QChar::Script_Greek ||
                          script == QChar::Script_Cyrillic || script == QChar::Script_Common;
    return isScript && letter.isPrint() && !letter.isMark() && !isRightToLeft(letter);
}

/// Scripts whose characters are set in separate squares. They are shaped one at a time: noteRadical() needs
/// single characters, and cached ones serve many names.
bool isEastAsian(QStringView letter)
{
    const QChar::Script script = letter.front().script();
    return script == QChar::Script_Han || script == QChar::Script_Hiragana ||
           script == QChar::Script_Katakana || script == QChar::Script_Hangul ||
           script == QChar::Script_Bopomofo;
}

QString everyCode()
{
    QString codes(kPlainEnd, Qt::Uninitialized);
    std::iota(codes.begin(), codes.end(), char16_t(0));
    return codes;
}

/// The text on one line, with letters and accents composed where possible.
QString inOneLine(QString text)
{
    const auto breaks = [](QChar letter) {
        return letter.category() == QChar::Other_Control || letter == QChar::LineSeparator ||
               letter == QChar::ParagraphSeparator;
    };
    std::replace_if(text.begin(), text.end(), breaks, QChar(u' '));
    const bool mayCompose =
        std::any_of(text.cbegin(), text.cend(), [](QChar letter) { return letter >= kFirstMark; });
    return mayCompose ? text.normalized(QString::NormalizationForm_C) : text;
}

/// All grapheme boundaries, including the start and the end.
std::vector<qsizetype> graphemeEnds(const QString& text)
{
    std::vector<qsizetype> ends{0};
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text);
    while (finder.toNextBoundary() > 0)
        ends.push_back(finder.position());
    return ends;
}

QList<QGlyphRun> moved(QList<QGlyphRun> runs, QPointF by)
{
    for (QGlyphRun& run : runs) {
        QList<QPointF> positions = run.positions();
        for (QPointF& position : positions)
            position += by;
        run.setPositions(positions);
    }
    return runs;
}

/// Appends runs, merging left-to-right ones with the last run of the same font.
void appendRuns(QList<QGlyphRun>& runs, const QList<QGlyphRun>& added)
{
    for (const QGlyphRun& run : added) {
        if (runs.isEmpty() || runs.back().rawFont() != run.rawFont() || run.isRightToLeft()) {
            runs.append(run);
            continue;
        }
        runs.back().setGlyphIndexes(runs.back().glyphIndexes() + run.glyphIndexes());
        runs.back().setPositions(runs.back().positions() + run.positions());
    }
}

} // namespace

PDFText::PDFText(int points, QFont::Weight weight)
    : m_font(QFontDatabase::systemFont(QFontDatabase::GeneralFont))
    , m_glyphInfo(kPlainEnd)
    , m_shapedPieces(kKeptPieces)
{
    m_font.setPixelSize(points * kUnits);
    m_font.setWeight(weight);
    m_font.setHintingPreference(QFont::PreferNoHinting);
    m_rawFont = QRawFont::fromFont(m_font);
    static const QString codes = everyCode();
    const QList<quint32> glyphs = m_rawFont.glyphIndexesForString(codes);
    for (char16_t code = 0; code < std::min<qsizetype>(kPlainEnd, glyphs.size()); ++code)
        m_glyphInfo[code] = {glyphs[code], glyphs[code] != 0 && needsNoShaping(code)};
    m_ellipsis = isPlain(u"…") ? u"…"_s : u"..."_s;
    for (const QChar letter : m_ellipsis)
        m_ellipsisWidth += use(letter).advance;
}

bool PDFText::isPlain(QStringView text) const
{
    return std::all_of(text.begin(), text.end(), [this](QChar letter) {
        return letter < kPlainEnd && m_glyphInfo[letter.unicode()].isPlain;
    });
}

const PDFText::GlyphInfo& PDFText::use(QChar letter)
{
    GlyphInfo& info = m_glyphInfo[letter.unicode()];
    if (info.advance < 0) {
        const QList<QPointF> advances = m_rawFont.advancesForGlyphIndexes(
            {info.glyph}, QRawFont::SeparateAdvances | QRawFont::UseDesignMetrics);
        info.advance = advances.isEmpty() ? 0 : std::round(advances.front().x());
    }
    return info;
}

void PDFText::add(const QString& text, QPointF topLeft, double width)
{
    const QPointF base = (topLeft * kUnits + QPointF(0, m_rawFont.ascent())).toPoint();
    width *= kUnits;
    const QString line = inOneLine(text);
    if (isPlain(line)) {
        addPlain(line, base, width);
        return;
    }
    endPlainRun();
    m_runs += moved(elidedLine(line, width).runs, base);
}

void PDFText::addPlain(QStringView text, QPointF base, double width)
{
    const qsizetype start = m_glyphs.size();
    qsizetype fitting = start; // longest part that leaves room for the ellipsis
    QPointF fittingEnd = base;
    double used = 0;
    for (const QChar letter : text) {
        if (used + m_ellipsisWidth <= width) {
            fitting = m_glyphs.size();
            fittingEnd = base + QPointF(used, 0);
        }
        const GlyphInfo& info = use(letter);
        m_glyphs.append(info.glyph);
        m_positions.append(base + QPointF(used, 0));
        used += info.advance;
        if (used > width) {
            m_glyphs.resize(fitting);
            m_positions.resize(fitting);
            addEllipsis(fittingEnd);
            return;
        }
    }
}

void PDFText::addEllipsis(QPointF base)
{
    for (const QChar letter : std::as_const(m_ellipsis)) {
        const GlyphInfo& info = use(letter);
        m_glyphs.append(info.glyph);
        m_positions.append(base);
        base.rx() += info.advance;
    }
}

PDFText::Line PDFText::plainPiece(QStringView text)
{
    QList<quint32> glyphs;
    QList<QPointF> positions;
    Line line;
    for (const QChar letter : text) {
        const GlyphInfo& info = use(letter);
        glyphs.append(info.glyph);
        positions.append({line.width, 0});
        line.width += info.advance;
    }
    QGlyphRun run;
    run.setRawFont(m_rawFont);
    run.setGlyphIndexes(glyphs);
    run.setPositions(positions);
    line.runs.append(run);
    return line;
}

PDFText::Line PDFText::shapedPiece(const QString& text)
{
    if (const Line* kept = m_shapedPieces.object(text))
        return *kept;
    QTextLayout layout(text, m_font);
    QTextOption option;
    option.setWrapMode(QTextOption::NoWrap);
    option.setUseDesignMetrics(true);
    layout.setTextOption(option);
    layout.beginLayout();
    const QTextLine set = layout.createLine();
    layout.endLayout();
    Line line;
    line.width = set.naturalTextWidth();
    const QPointF base(set.naturalTextRect().x(), set.ascent());
    line.runs = moved(layout.glyphRuns(), -base);
    if (text.size() == 1 && line.runs.size() == 1)
        noteRadical(line.runs.front(), text.front());
    m_shapedPieces.insert(text, new Line(line));
    return line;
}

/// Fonts use one glyph for a CJK radical and for the ideograph that looks like it. Notes that the ideograph
/// is meant.
void PDFText::noteRadical(const QGlyphRun& run, QChar letter)
{
    const QRawFont font = run.rawFont();
    auto codesByGlyph = m_radicals.find(font.familyName());
    if (codesByGlyph == m_radicals.end()) {
        codesByGlyph = m_radicals.insert(font.familyName(), {});
        for (char16_t code = kFirstRadical; code < kRadicalsEnd; ++code) {
            const QList<quint32> glyphs = font.glyphIndexesForString(QString(QChar(code)));
            if (!glyphs.isEmpty() && glyphs.front() != 0 && !codesByGlyph->contains(glyphs.front()))
                codesByGlyph->insert(glyphs.front(), code);
        }
    }
    const auto radical = codesByGlyph->constFind(run.glyphIndexes().value(0));
    if (letter >= kRadicalsEnd && radical != codesByGlyph->cend())
        m_radicalsMeant.insert(*radical, letter.unicode());
}

PDFText::Line PDFText::mixedLine(const QString& text)
{
    // In bidirectional text, visual order differs from logical order: shape it as a whole.
    if (std::any_of(text.begin(), text.end(), isRightToLeft))
        return shapedPiece(text);
    Line line;
    const std::vector<qsizetype> ends = graphemeEnds(text);
    const auto letter = [&](std::size_t index) {
        return QStringView(text).mid(ends[index], ends[index + 1] - ends[index]);
    };
    for (std::size_t start = 0; start + 1 < ends.size();) {
        std::size_t end = start + 1;
        const bool plain = isPlain(letter(start));
        if (!isEastAsian(letter(start))) {
            while (end + 1 < ends.size() && isPlain(letter(end)) == plain && !isEastAsian(letter(end)))
                ++end;
        }
        const QString words = text.mid(ends[start], ends[end] - ends[start]);
        const Line piece = plain ? plainPiece(words) : shapedPiece(words);
        appendRuns(line.runs, moved(piece.runs, {line.width, 0}));
        line.width += piece.width;
        start = end;
    }
    return line;
}

PDFText::Line PDFText::elidedLine(const QString& text, double width)
{
    Line whole = mixedLine(text);
    if (whole.width <= width)
        return whole;
    const std::vector<qsizetype> ends = graphemeEnds(text);
    const auto tooWide = std::partition_point(ends.begin() + 1, ends.end(), [&](qsizetype end) {
        return mixedLine(text.left(end) + m_ellipsis).width <= width;
    });
    return mixedLine(text.left(*(tooWide - 1)) + m_ellipsis);
}

void PDFText::endPlainRun()
{
    if (m_glyphs.isEmpty())
        return;
    QGlyphRun run;
    run.setRawFont(m_rawFont);
    run.setGlyphIndexes(m_glyphs);
    run.setPositions(m_positions);
    m_runs.append(run);
    m_glyphs.clear();
    m_positions.clear();
}

void PDFText::draw(QPainter& painter, const QColor& colour)
{
    endPlainRun();
    painter.setPen(colour);
    for (const QGlyphRun& run : std::as_const(m_runs))
        painter.drawGlyphRun({}, run);
    painter.setPen(Qt::NoPen);
    m_runs.clear();
}

TextCorrections PDFText::corrections() const
{
    QHash<quint32, char16_t> firstCodes;
    TextCorrections corrections = m_radicalsMeant;
    for (char16_t code = 0; code < kPlainEnd; ++code) {
        const GlyphInfo& info = m_glyphInfo[code];
        if (info.glyph == 0)
            continue;
        const auto first = firstCodes.constFind(info.glyph);
        if (first == firstCodes.constEnd())
            firstCodes.insert(info.glyph, code);
        else if (info.advance >= 0 && m_glyphInfo[*first].advance < 0 && !corrections.contains(*first))
            corrections.insert(*first, code);
    }
    return corrections;
}

} // namespace orvanlite
