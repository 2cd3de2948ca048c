#include "shell/toolkit/Divider.h"

#include <QWidget>

namespace orvanlite {

QWidget* makeDivider(QWidget* parent)
{
    auto* line = new QWidget(parent);
    line->setFixedHeight(1);
    line->setBackgroundRole(QPalette::Mid);
    line->setAutoFillBackground(true);
    return line;
}

} // namespace orvanlite
