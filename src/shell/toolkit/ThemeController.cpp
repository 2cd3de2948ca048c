#include "shell/toolkit/ThemeController.h"

#include "platform/Appearance.h"
#include "shell/toolkit/AppTheme.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QPainter>
#include <QProxyStyle>
#include <QStyleFactory>
#include <QStyleOption>
#include <QTimer>
#include <QToolTip>

#include <utility>

namespace orvanlite {

using namespace Qt::StringLiterals;

/// Fusion with the button layout of our sheets. Animations are disabled if the user has asked for reduced
/// motion.
class ApplicationStyle final : public QProxyStyle {
public:
    ApplicationStyle()
        : QProxyStyle(QStyleFactory::create(u"Fusion"_s))
    {}

    const platform::Appearance* appearance = nullptr;

    /// Fusion's borders of line edits are invisible on a dark window, and those of buttons on a black one.
    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override
    {
        if (element != PE_FrameLineEdit)
            QProxyStyle::drawPrimitive(element, option, painter, widget);
        const bool hasContrast = AppTheme::isHighContrast(option->palette);
        if (element != PE_FrameLineEdit && !(element == PE_PanelButtonCommand && hasContrast))
            return;
        const bool hasFocus = option->state & State_HasFocus;
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->setBrush(Qt::NoBrush);
        painter->setPen(QPen(
            hasFocus ? AppTheme::accent(option->palette)
                     : AppTheme::withOpacity(AppTheme::primary(option->palette), hasContrast ? 0.7 : 0.3),
            hasFocus ? 2 : 1));
        painter->drawRoundedRect(QRectF(option->rect).adjusted(1, 1, -1, -1), 3, 3);
        painter->restore();
    }

    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* returned) const override
    {
        if (hint == SH_Widget_Animation_Duration && appearance && appearance->reducesMotion())
            return 0;
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
    QCoreApplication::instance()->installEventFilter(this);
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

bool ThemeController::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::ThemeChange && watched->isWindowType())
        QTimer::singleShot(0, this, &ThemeController::applyAgain);
    return QObject::eventFilter(watched, event);
}

/// After the system has set its palettes for single classes of widgets again. They are only replaced by an
/// application palette that differs from the previous one.
void ThemeController::applyAgain()
{
    QApplication::setPalette(QPalette(Qt::gray));
    apply();
}

void ThemeController::apply()
{
    // If the system does not report an appearance, keep the one the application started with.
    const bool dark = m_appearance.isDark().value_or(m_startedDark);
    QColor accent = AppTheme::defaultAccent(dark);
    if (const auto chosen = m_appearance.accentColour()) {
        accent = QColor::fromRgbF(static_cast<float>(chosen->red), static_cast<float>(chosen->green),
                                  static_cast<float>(chosen->blue));
    }
    const QPalette palette = AppTheme::palette(dark, accent, m_appearance.increasesContrast());
    // Also replaces the palettes that a system has for single classes of widgets.
    QApplication::setPalette(palette);
    QToolTip::setPalette(palette);
}

} // namespace orvanlite
