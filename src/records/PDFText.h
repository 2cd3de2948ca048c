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

/// Lines of text in one size and weight of the system's font, collected and then drawn at once.
///
/// Latin, Greek and Cyrillic letters are set sign by sign: shaping would make ligatures, which are copied from the
/// document as one sign. All else goes the slower way of shaping, with other fonts where this one has no sign.
/// Units: points in its functions; the painter counts kUnits of its own to the point.
class PDFText final {
public:
    PDFText(int points, QFont::Weight weight);

    /// Fine enough for the places of letters in whole numbers, which make short files and quick ones.
    static constexpr int kUnits = 20;
    static constexpr double kUnlimited = std::numeric_limits<float>::max();

    /// Adds a line with its top left corner there; one wider than `width` ends in an ellipsis.
    void add(const QString& text, QPointF topLeft, double width = kUnlimited);

    /// Draws what was added since, in the order of adding.
    void draw(QPainter& painter, const QColor& colour);

    /// How the signs that were drawn are to be read back where the document would say otherwise.
    [[nodiscard]] TextCorrections corrections() const;

private:
    struct Sign {
        quint32 glyph = 0;
        bool isPlain = false; ///< to be set without shaping
        double advance = -1;  ///< asked when it is used first
    };
    /// Glyphs that follow each other from left to right, or a shaped piece; the base line starts at the origin.
    struct Line {
        QList<QGlyphRun> runs;
        double width = 0;
    };

    [[nodiscard]] bool isPlain(QStringView text) const;
    const Sign& use(QChar letter);
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
    std::vector<Sign> m_signs; ///< by code, up to the last one that can be plain
    QString m_ellipsis;
    double m_ellipsisWidth = 0;
    QList<quint32> m_glyphs; ///< of the plain run at the end of what was added
    QList<QPointF> m_positions;
    QList<QGlyphRun> m_runs;
    QCache<QString, Line> m_shapedPieces;
    QHash<QString, QHash<quint32, char16_t>> m_radicals; ///< by family and sign
    TextCorrections m_radicalsMeant;
};

} // namespace orvanlite
