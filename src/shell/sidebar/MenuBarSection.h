#pragma once

#include <QWidget>

namespace orvanlite {

class MenuBarLoginItem;
class SwitchRow;

/// The sidebar section of the menu bar helper: a title and the switch for its start at login.
class MenuBarSection final : public QWidget {
    Q_OBJECT

public:
    MenuBarSection(MenuBarLoginItem& loginItem, QWidget* parent);

    /// Sets the switch to the system's current state.
    void refresh();

protected:
    void changeEvent(QEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    MenuBarLoginItem& m_loginItem;
    SwitchRow* m_switch;
};

} // namespace orvanlite
