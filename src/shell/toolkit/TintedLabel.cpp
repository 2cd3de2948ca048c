#include "shell/toolkit/TintedLabel.h"

#include "shell/toolkit/Icons.h"

#include <QEvent>
#include <QPainter>

#include <utility>

namespace orvanlite {

TintedLabel::TintedLabel(const QString& text, Colour colour, QWidget* parent)
    : QLabel(text, parent)
    , m_colour(std::move(colour))
{
    setForegroundRole(QPalette::WindowText); // inside a button it would be ButtonText
    apply();
}

void TintedLabel::setIcon(const QString& key, int size)
{
    m_iconKey = key;
    setFixedSize(size, size);
    update();
}

void TintedLabel::paintEvent(QPaintEvent* event)
{
    QLabel::paintEvent(event);
    if (m_iconKey.isEmpty())
        return;
    QPainter painter(this);
    drawIcon(painter, rect(), m_iconKey, m_colour(parentWidget()->palette()));
}

void TintedLabel::changeEvent(QEvent* event)
{
    QLabel::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        apply();
}

void TintedLabel::apply()
{
    const QColor colour = m_colour(parentWidget()->palette());
    if (palette().color(QPalette::WindowText) == colour)
        return;
    // Set a single role; all others keep following the application palette.
    QPalette own;
    own.setColor(QPalette::WindowText, colour);
    setPalette(own);
}

} // namespace orvanlite
