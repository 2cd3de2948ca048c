#pragma once

#include "shell/sidebar/SidebarButton.h"

namespace orvanlite {

/// A row of the sidebar that can be chosen: on tinted glass while it is.
class SidebarItemButton final : public SidebarButton {
    Q_OBJECT

public:
    enum class Hover {
        ground, ///< a light ground under the pointer
        grows,  ///< the same, and it grows a little
    };

    /// `iconSlot` is the width of the icon's place.
    SidebarItemButton(const QString& label, const QString& iconKey, int iconSlot, Hover hover,
                      QWidget* parent);

    /// Chosen or not; also makes it a button that readers tell the state of.
    void setSelected(bool isSelected);

protected:
    void paintGround(QPainter& painter, const QRectF& ground) const override;
    [[nodiscard]] QColor iconInk() const override;
};

} // namespace orvanlite
