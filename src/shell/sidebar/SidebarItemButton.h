#pragma once

#include "shell/sidebar/SidebarButton.h"

namespace orvanlite {

/// A row of the sidebar that can be selected; selected, it has a tinted glass background.
class SidebarItemButton final : public SidebarButton {
    Q_OBJECT

public:
    enum class Hover {
        ground, ///< highlights the background
        grows,  ///< also grows slightly
    };

    /// `iconSlot` is the width reserved for the icon.
    SidebarItemButton(const QString& label, const QString& iconKey, int iconSlot, Hover hover,
                      QWidget* parent);

    /// Also makes the button checkable, so that screen readers report its state.
    void setSelected(bool isSelected);

protected:
    void paintGround(QPainter& painter, const QRectF& ground) const override;
    [[nodiscard]] QColor iconInk() const override;
};

} // namespace orvanlite
