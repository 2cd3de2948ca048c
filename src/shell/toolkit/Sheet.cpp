#include "shell/toolkit/Sheet.h"

#include "shell/toolkit/Dialogs.h"
#include "shell/toolkit/KeyRepeat.h"

#include <QAbstractButton>
#include <QKeyEvent>

namespace orvanlite {

Sheet::Sheet(QWidget* parent)
    : QDialog(parent)
{
    makeSheet(this);
}

void Sheet::keyPressEvent(QKeyEvent* event)
{
    if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter) {
        QDialog::keyPressEvent(event);
        return;
    }
    QAbstractButton* main = mainButton();
    if (main && !KeyRepeat::isRepeat(*event))
        main->click();
}

} // namespace orvanlite
