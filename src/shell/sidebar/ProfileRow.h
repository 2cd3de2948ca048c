#pragma once

#include "profiles/PluginProfile.h"
#include "shell/toolkit/Control.h"

namespace orvanlite {

class ElidedLabel;
class PressButton;
class TintedLabel;

/// A profile in the sidebar: its name, below it what applying it would change, and four small buttons. A
/// click on the row itself, or Space, previews it.
class ProfileRow final : public Control {
    Q_OBJECT

public:
    /// `number` makes the object names of the row and of its buttons unique.
    ProfileRow(int number, QWidget* parent);

    void showProfile(const PluginProfile& profile, const QString& status, bool isActive);
    [[nodiscard]] const PluginProfile& profile() const { return m_profile; }
    [[nodiscard]] QString status() const;

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;
    [[nodiscard]] QAccessible::Role accessibleRole() const override { return QAccessible::ListItem; }

Q_SIGNALS:
    void applyClicked();
    void updateClicked();
    void exportClicked();
    void deleteClicked();

protected:
    void paint(QPainter& painter) const override;
    [[nodiscard]] FocusRing focusRing() const override;

private:
    [[nodiscard]] QRectF bounds() const;

    PluginProfile m_profile;
    ElidedLabel* m_name;
    ElidedLabel* m_status;
    std::vector<PressButton*> m_buttons;
};

} // namespace orvanlite
