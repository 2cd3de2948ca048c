#include "shell/sidebar/SidebarItemButton.h"

#include "shell/toolkit/AppTheme.h"

#include <QPainter>

namespace orvanlite {

namespace {

constexpr double kHoverScale = 1.02;

} // namespace

SidebarItemButton::SidebarItemButton(const QString& label, const QString& iconKey, int iconSlot, Hover hover,
                                     QWidget* parent)
    : SidebarButton({.iconSlot = iconSlot, .hoverScale = hover == Hover::grows ? kHoverScale : 1}, parent)
{
    setLabel(label);
    setIconKey(iconKey);
}

void SidebarItemButton::setSelected(bool isSelected)
{
    setCheckable(true);
    setChecked(isSelected);
}

void SidebarItemButton::paintGround(QPainter& painter, const QRectF& ground) const
{
    liquidGlassConditional(painter, ground, isChecked(), AppTheme::accent(palette()), m_measures.cornerRadius,
                           palette());
    SidebarButton::paintGround(painter, ground);
}

QColor SidebarItemButton::iconInk() const
{
    return isChecked() ? AppTheme::legible(AppTheme::accent(palette()), palette())
                       : AppTheme::secondary(palette());
}

} // namespace orvanlite
