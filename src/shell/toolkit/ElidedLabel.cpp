#include "shell/toolkit/ElidedLabel.h"

#include "shell/toolkit/ToolTips.h"

#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>

namespace orvanlite {

ElidedLabel::ElidedLabel(const QString& text, QWidget* parent)
    : QLabel(text, parent)
{
    setTextFormat(Qt::PlainText);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

QSize ElidedLabel::minimumSizeHint() const
{
    return {fontMetrics().horizontalAdvance(u'…') * 3, QLabel::minimumSizeHint().height()};
}

QString ElidedLabel::shownText() const
{
    return fontMetrics().elidedText(text(), Qt::ElideRight, contentsRect().width());
}

bool ElidedLabel::event(QEvent* event)
{
    if (event->type() != QEvent::ToolTip)
        return QLabel::event(event);
    const QString tip = shownText() == text() ? toolTip() : plainToolTip(text());
    if (tip.isEmpty())
        return false; // a parent may have a tooltip
    QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), tip, this);
    return true;
}

void ElidedLabel::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    painter.setPen(palette().color(foregroundRole()));
    painter.drawText(contentsRect(), static_cast<int>(alignment()) | Qt::TextSingleLine, shownText());
}

} // namespace orvanlite
