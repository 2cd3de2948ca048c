#pragma once

#include "model/PluginFormat.h"

#include <QColor>
#include <QIcon>

class QPainter;
class QRectF;

namespace orvanlite {

/// Draws one of our own icons, named by its symbol's key (e.g. "magnifyingglass"), in one colour. Sharp at every
/// scale: it is drawn from the vector file and kept per size and colour.
void drawIcon(QPainter& painter, const QRectF& rect, const QString& key, const QColor& colour);

/// The same as an image of its own, `size` logical pixels wide and high.
[[nodiscard]] QPixmap iconPixmap(const QString& key, int size, const QColor& colour, double devicePixelRatio);

/// Icon key of a format's badge.
[[nodiscard]] QString formatIcon(PluginFormat format);

} // namespace orvanlite
