#include "shell/toolkit/ThemeController.h"

#include "platform/Appearance.h"
#include "shell/toolkit/AppTheme.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QPainter>
#include <QProxyStyle>
#include <QStyleFactory>
#include <QStyleOption>

#include <utility>

namespace orvanlite {

using namespace Qt::StringLiterals;

namespace {

bool systemDrawsWidgets() { return QGuiApplication::platformName() == u"cocoa"_s; }

} // namespace

/// The system's style, or Fusion with the button layout of our sheets. Animations are disabled if the user
/// has asked for reduced motion.
class ApplicationStyle final : public QProxyStyle {
public:
    ApplicationStyle()
        : QProxyStyle(systemDrawsWidgets() ? nullptr : QStyleFactory::create(u"Fusion"_s))
    {}

    const platform::Appearance* appearance = nullptr;

    /// Draws the border of line edits: that of Fusion is invisible on a dark window.
    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override
    {
        if (element != PE_FrameLineEdit || systemDrawsWidgets()) {
            QProxyStyle::drawPrimitive(element, option, painter, widget);
            return;
        }
        const bool hasFocus = option->state & State_HasFocus;
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->setPen(QPen(hasFocus ? AppTheme::accent(option->palette)
                                      : AppTheme::withOpacity(AppTheme::primary(option->palette), 0.3),
                             hasFocus ? 2 : 1));
        painter->drawRoundedRect(QRectF(option->rect).adjusted(1, 1, -1, -1), 3, 3);
        painter->restore();
    }

    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* returned) const override
    {
        if (hint == SH_Widget_Animation_Duration && appearance && appearance->reducesMotion())
            return 0;
        if (systemDrawsWidgets())
            return QProxyStyle::styleHint(hint, option, widget, returned);
        if (hint == SH_DialogButtonBox_ButtonsHaveIcons)
            return 0;
        if (hint == SH_DialogButtonLayout)
            return QDialogButtonBox::GnomeLayout; // the action button comes last in every dialog
        return QProxyStyle::styleHint(hint, option, widget, returned);
    }
};

ThemeController::ThemeController(platform::Appearance& appearance, QObject* parent)
    : QObject(parent)
    , m_appearance(appearance)
    , m_startedDark(AppTheme::isDark(QApplication::palette()))
{
    m_style = new ApplicationStyle;
    m_style->appearance = &appearance;
    QApplication::setStyle(m_style);
    apply();
    appearance.observe(this, [this, reducedBefore = appearance.reducesMotion()]() mutable {
        apply();
        const bool reduces = m_appearance.reducesMotion();
        if (reduces == std::exchange(reducedBefore, reduces))
            return;
        // Running animations start or stop.
        for (QWidget* widget : QApplication::allWidgets()) {
            QEvent changed(QEvent::StyleChange);
            QCoreApplication::sendEvent(widget, &changed);
        }
    });
}

ThemeController::~ThemeController()
{
    if (m_style)
        m_style->appearance = nullptr;
}

void ThemeController::apply()
{
    if (systemDrawsWidgets())
        return;
    // If the system does not report an appearance, keep the one the application started with.
    const bool dark = m_appearance.isDark().value_or(m_startedDark);
    QColor accent = AppTheme::defaultAccent(dark);
    if (const auto chosen = m_appearance.accentColour()) {
        accent = QColor::fromRgbF(static_cast<float>(chosen->red), static_cast<float>(chosen->green),
                                  static_cast<float>(chosen->blue));
    }
    QApplication::setPalette(AppTheme::palette(dark, accent));
}

} // namespace orvanlite
