#pragma once

#include <QWidget>

namespace orvanlite {

class MenuBarLoginItem;
class SwitchRow;

/// The sidebar's section on the helper in the menu bar: a title and the switch of its start at login.
class MenuBarSection final : public QWidget {
    Q_OBJECT

public:
    MenuBarSection(MenuBarLoginItem& loginItem, QWidget* parent);

    /// Puts the switch where the system says that it is.
    void refresh();

protected:
    void changeEvent(QEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    MenuBarLoginItem& m_loginItem;
    SwitchRow* m_switch;
};

} // namespace orvanlite
