#include "demo/MacLook.h"

#include <QApplication>
#include <QFont>
#include <QPalette>
#include <QWindow>

namespace orvanlite::demo {

using namespace Qt::StringLiterals;

namespace {

constexpr double kSystemSize = 13;
constexpr double kSmallSystemSize = 11;

QPalette systemPalette(bool isDark)
{
    const QColor window = isDark ? QColor(50, 50, 50) : QColor(236, 236, 236);
    const QColor text = isDark ? QColor(255, 255, 255, 216) : QColor(0, 0, 0, 216);
    const QColor control = isDark ? QColor(101, 101, 101) : QColor(255, 255, 255);
    const QColor base = isDark ? QColor(30, 30, 30) : QColor(255, 255, 255);
    QPalette palette(text, control, control.lighter(), control.darker(), window.darker(), text, Qt::white,
                     base, window);
    palette.setColor(QPalette::Highlight, isDark ? QColor(63, 99, 139) : QColor(179, 215, 255));
    palette.setColor(QPalette::HighlightedText, text);
    return palette;
}

} // namespace

void useMacResolution() { qputenv("QT_FONT_DPI", "72"); }

void takeOverMacTheme(bool isDark)
{
    QFont font(u"Inter"_s);
    font.setPointSizeF(kSystemSize);
    QApplication::setFont(font);
    QFont small = font;
    small.setPointSizeF(kSmallSystemSize);
    for (const char* widget : {"QHeaderView", "QToolButton", "QTipLabel"})
        QApplication::setFont(small, widget);
    const QPalette palette = systemPalette(isDark);
    QApplication::setPalette(palette);
    for (const char* widget : {"QToolButton", "QAbstractButton", "QCheckBox", "QRadioButton", "QHeaderView",
                               "QAbstractItemView", "QLabel", "QGroupBox", "QMenu", "QTextEdit", "QLineEdit"})
        QApplication::setPalette(palette, widget);
    for (QWindow* window : QGuiApplication::topLevelWindows()) {
        QEvent changed(QEvent::ThemeChange);
        QCoreApplication::sendEvent(window, &changed);
    }
}

} // namespace orvanlite::demo
