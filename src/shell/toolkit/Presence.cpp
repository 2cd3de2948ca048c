#include "shell/toolkit/Presence.h"

#include <QWidget>

namespace orvanlite {

void present(QWidget* part, bool isPresent, QWidget* heir)
{
    // The window's focus widget: the application's may be in a dialog that is closing.
    const QWidget* focus = part->window()->focusWidget();
    if (!isPresent && heir && focus && (part == focus || part->isAncestorOf(focus)))
        heir->setFocus();
    part->setVisible(isPresent);
}

} // namespace orvanlite
