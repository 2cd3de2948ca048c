#include "shell/toolkit/Icons.h"

#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>
#include <QPixmapCache>
#include <QSvgRenderer>

#include <cmath>
#include <utility>

/// Resources in a static library are not registered automatically. Outside any namespace, as Q_INIT_RESOURCE
/// requires.
static void registerIcons() { Q_INIT_RESOURCE(resources); }

namespace orvanlite {

using namespace Qt::StringLiterals;

QPixmap iconPixmap(const QString& key, int size, const QColor& colour, double devicePixelRatio)
{
    static const bool isRegistered = (registerIcons(), true);
    Q_UNUSED(isRegistered)
    const QString cacheKey =
        u"orv:%1:%2:%3:%4"_s.arg(key).arg(size).arg(colour.rgba(), 0, 16).arg(devicePixelRatio);
    QPixmap pixmap;
    if (QPixmapCache::find(cacheKey, &pixmap))
        return pixmap;
    const int pixels = static_cast<int>(std::ceil(size * devicePixelRatio));
    pixmap = QPixmap(pixels, pixels);
    pixmap.fill(Qt::transparent);
    QSvgRenderer renderer(u":/icons/"_s + key + u".svg"_s);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    renderer.render(&painter, QRectF(0, 0, pixels, pixels));
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(pixmap.rect(), colour);
    painter.end();
    pixmap.setDevicePixelRatio(devicePixelRatio);
    QPixmapCache::insert(cacheKey, pixmap);
    return pixmap;
}

namespace {

/// Draws the icon whenever it is needed, and therefore for the current palette and screen.
class MenuIconEngine final : public QIconEngine {
public:
    explicit MenuIconEngine(QString key)
        : m_key(std::move(key))
    {}
    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State /*state*/) override
    {
        const bool isHighlighted = mode == QIcon::Active || mode == QIcon::Selected;
        const QPalette palette = QGuiApplication::palette();
        drawIcon(*painter, rect, m_key,
                 palette.color(mode == QIcon::Disabled ? QPalette::Disabled : QPalette::Active,
                               isHighlighted ? QPalette::HighlightedText : QPalette::WindowText));
    }
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override
    {
        QPixmap pixmap(size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        paint(&painter, pixmap.rect(), mode, state);
        return pixmap;
    }
    [[nodiscard]] QIconEngine* clone() const override { return new MenuIconEngine(m_key); }

private:
    QString m_key;
};

} // namespace

QIcon menuIcon(const QString& key) { return QIcon(new MenuIconEngine(key)); }

void drawIcon(QPainter& painter, const QRectF& rect, const QString& key, const QColor& colour)
{
    const int size = static_cast<int>(std::lround(std::min(rect.width(), rect.height())));
    const QPixmap pixmap = iconPixmap(key, size, colour, painter.device()->devicePixelRatioF());
    const QPointF corner(rect.center().x() - size / 2.0, rect.center().y() - size / 2.0);
    painter.drawPixmap(QPointF(std::round(corner.x()), std::round(corner.y())), pixmap);
}

QString formatIcon(PluginFormat format)
{
    switch (format) {
    case PluginFormat::au:
        return u"waveform"_s;
    case PluginFormat::vst3:
        return u"cube"_s;
    case PluginFormat::vst2:
        return u"square"_s;
    case PluginFormat::aax:
        return u"hexagon"_s;
    case PluginFormat::clap:
        return u"diamond"_s;
    case PluginFormat::wavesBundle:
        break;
    }
    return u"w.circle"_s;
}

} // namespace orvanlite
