#pragma once

#include "records/PDFTextMap.h"

#include <QCache>
#include <QColor>
#include <QFont>
#include <QGlyphRun>
#include <QRawFont>

#include <limits>
#include <vector>

class QPainter;

namespace orvanlite {

/// Lines of text in one size and weight of the system font, collected and then drawn at once.
///
/// Latin, Greek and Cyrillic letters are set glyph by glyph: shaping would create ligatures, which are copied
/// from the document as one character. All other text is shaped, which is slower, with fallback fonts for
/// missing glyphs.
/// Units: points in the interface; the painter has kUnits per point.
class PDFText final {
public:
    PDFText(int points, QFont::Weight weight);

    /// Fine enough for integer glyph positions, which keep files small and fast to write.
    static constexpr int kUnits = 20;
    static constexpr double kUnlimited = std::numeric_limits<float>::max();

    /// Adds a line; one wider than `width` is elided at the end.
    void add(const QString& text, QPointF topLeft, double width = kUnlimited);

    /// Draws the lines added since the last call, in order.
    void draw(QPainter& painter, const QColor& colour);

    /// Corrections for drawn glyphs that the document would map to the wrong character.
    [[nodiscard]] TextCorrections corrections() const;

private:
    struct GlyphInfo {
        quint32 glyph = 0;
        bool isPlain = false; ///< set without shaping
        double advance = -1;  ///< determined on first use
    };
    /// A left-to-right sequence of glyphs or a shaped piece, with its baseline starting at the origin.
    struct Line {
        QList<QGlyphRun> runs;
        double width = 0;
    };

    [[nodiscard]] bool isPlain(QStringView text) const;
    const GlyphInfo& use(QChar letter);
    void addPlain(QStringView text, QPointF base, double width);
    void addEllipsis(QPointF base);
    [[nodiscard]] Line plainPiece(QStringView text);
    [[nodiscard]] Line shapedPiece(const QString& text);
    void noteRadical(const QGlyphRun& run, QChar letter);
    [[nodiscard]] Line mixedLine(const QString& text);
    [[nodiscard]] Line elidedLine(const QString& text, double width);
    void endPlainRun();

    QFont m_font;
    QRawFont m_rawFont;
    std::vector<GlyphInfo> m_glyphInfo; ///< by code point, below kPlainEnd
    QString m_ellipsis;
    double m_ellipsisWidth = 0;
    QList<quint32> m_glyphs; ///< of the current plain run, not in m_runs yet
    QList<QPointF> m_positions;
    QList<QGlyphRun> m_runs;
    QCache<QString, Line> m_shapedPieces;
    QHash<QString, QHash<quint32, char16_t>> m_radicals; ///< by font family and glyph
    TextCorrections m_radicalsMeant;
};

} // namespace orvanlite
