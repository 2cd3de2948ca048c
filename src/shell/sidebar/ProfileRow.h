#pragma once

#include "profiles/PluginProfile.h"

#include <QAbstractButton>

namespace orvanlite {

class ElidedLabel;
class PressButton;
class TintedLabel;

/// A profile in the sidebar: its name over what applying it would change, and four small buttons. A click on the row
/// itself, or Space, previews it.
class ProfileRow final : public QAbstractButton {
    Q_OBJECT

public:
    /// `number` makes the object names of the row and of its buttons unique.
    ProfileRow(int number, bool reducesMotion, QWidget* parent);

    void showProfile(const PluginProfile& profile, const QString& status, bool isActive);
    [[nodiscard]] const PluginProfile& profile() const { return m_profile; }
    [[nodiscard]] QString status() const;
    [[nodiscard]] bool isActive() const { return m_isActive; }

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

Q_SIGNALS:
    void applyClicked();
    void updateClicked();
    void exportClicked();
    void deleteClicked();

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    PressButton* addButton(const QString& iconKey, const QString& toolTip, const QString& objectName);
    void fitStatusFont();

    PluginProfile m_profile;
    bool m_isActive = false;
    bool m_reducesMotion;
    bool m_showsFocus = false;
    ElidedLabel* m_name;
    ElidedLabel* m_status;
    std::vector<PressButton*> m_buttons;
};

} // namespace orvanlite
