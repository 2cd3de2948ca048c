#include "helper/CountIcon.h"

#include <QFont>
#include <QFontMetricsF>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>

namespace orvanlite {

using namespace Qt::StringLiterals;

namespace {

const QColor kTile(139, 92, 246);

QString shortNumber(int count)
{
    constexpr int kThousand = 1000;
    return count < kThousand ? QString::number(count)
                             : QString::number(std::min(count / kThousand, kThousand - 1)) + u'k';
}

/// Outline of the number, scaled to fit the square.
QPainterPath numberPath(const QString& number, double side)
{
    constexpr double kHighest = 0.56;
    constexpr double kWidest = 0.8;
    QFont font;
    font.setBold(true);
    font.setPixelSize(100); // the outline is scaled afterwards
    QPainterPath path;
    path.addText(0, 0, font, number);
    const QRectF bounds = path.boundingRect();
    const double scale = std::min(side * kHighest / bounds.height(), side * kWidest / bounds.width());
    QTransform transform;
    transform.translate(side / 2, side / 2);
    transform.scale(scale, scale);
    transform.translate(-bounds.center().x(), -bounds.center().y());
    return transform.map(path);
}

QPainterPath barsPath(double side)
{
    QPainterPath path;
    const double width = side * 0.11;
    const double heights[] = {0.24, 0.54, 0.38, 0.18};
    double left = side * 0.21;
    for (const double height : heights) {
        path.addRoundedRect(left, side * (1 - height) / 2, width, side * height, width / 2, width / 2);
        left += side * 0.16;
    }
    return path;
}

} // namespace

QIcon countIcon(std::optional<int> count)
{
    QIcon icon;
    for (const int side : {16, 22, 24, 32, 44, 48, 64}) {
        QPixmap picture(side, side);
        picture.fill(Qt::transparent);
        QPainter painter(&picture);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(kTile);
        const double radius = side * 0.22;
        painter.drawRoundedRect(QRectF(0, 0, side, side), radius, radius);
        painter.setCompositionMode(QPainter::CompositionMode_DestinationOut);
        painter.setBrush(Qt::black);
        painter.drawPath(count ? numberPath(shortNumber(*count), side) : barsPath(side));
        painter.end();
        icon.addPixmap(picture);
    }
    icon.setIsMask(true); // menu bars that colour their icons use only the shape
    return icon;
}

} // namespace orvanlite
