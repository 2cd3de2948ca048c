#include "shell/toolkit/TabularLabel.h"

#include <QPainter>
#include <QStyle>

#include <algorithm>

namespace orvanlite {

namespace {

bool isDigit(QChar character) { return character >= u'0' && character <= u'9'; }

int digitWidth(const QFontMetrics& metrics)
{
    int widest = 0;
    for (char16_t digit = u'0'; digit <= u'9'; ++digit)
        widest = std::max(widest, metrics.horizontalAdvance(QChar(digit)));
    return widest;
}

/// Calls the function with every single digit and every run of other characters, and its width.
template <typename Function>
void forEachPiece(const QString& text, const QFontMetrics& metrics, Function function)
{
    const int cell = digitWidth(metrics);
    for (qsizetype start = 0; start < text.size();) {
        qsizetype end = start + 1;
        const bool digit = isDigit(text[start]);
        while (!digit && end < text.size() && !isDigit(text[end]))
            ++end;
        const QString piece = text.mid(start, end - start);
        function(piece, digit ? cell : metrics.horizontalAdvance(piece));
        start = end;
    }
}

} // namespace

int TabularLabel::widthOf(const QString& text) const
{
    int width = 0;
    forEachPiece(text, fontMetrics(), [&width](const QString&, int pieceWidth) { width += pieceWidth; });
    return width;
}

QSize TabularLabel::sizeHint() const { return {widthOf(text()), fontMetrics().height()}; }

void TabularLabel::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    painter.setPen(palette().color(foregroundRole()));
    const QFontMetrics metrics = fontMetrics();
    const QRect line = QStyle::alignedRect(layoutDirection(), alignment(), sizeHint(), rect());
    const int baseline = line.top() + metrics.ascent();
    int x = line.left();
    forEachPiece(text(), metrics, [&](const QString& piece, int width) {
        const int inset = (width - metrics.horizontalAdvance(piece)) / 2;
        painter.drawText(x + inset, baseline, piece);
        x += width;
    });
}

} // namespace orvanlite
