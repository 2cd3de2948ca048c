#pragma once

#include "model/PluginFormat.h"

#include <QColor>
#include <QIcon>

class QPainter;
class QRectF;

namespace orvanlite {

/// Draws one of our icons, named by its symbol key (e.g. "magnifyingglass"), in one colour. Rendered from the
/// vector file and cached per size and colour, so it is sharp at every scale.
void drawIcon(QPainter& painter, const QRectF& rect, const QString& key, const QColor& colour);

/// The same as a pixmap; `size` is its width and height in logical pixels.
[[nodiscard]] QPixmap iconPixmap(const QString& key, int size, const QColor& colour, double devicePixelRatio);

/// The same for menus, in the text colour of the application's current palette.
[[nodiscard]] QIcon menuIcon(const QString& key);

/// Icon key of the format's badge.
[[nodiscard]] QString formatIcon(PluginFormat format);

} // namespace orvanlite
