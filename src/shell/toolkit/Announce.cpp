#include "shell/toolkit/Announce.h"

#include <QAccessible>
#include <QWidget>

namespace orvanlite {

void announce(QWidget* widget, const QString& text)
{
    widget->setAccessibleName(text);
    QAccessibleEvent alert(widget, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
}

} // namespace orvanlite
