#pragma once

#include <QWidget>

namespace orvanlite {

class ActivityLogList;
class ActivityLogManager;
class PressButton;
class ViewUpdater;

namespace platform {
class Clock;
}

/// What the user did lately: the entries of the activity log, newest first, and a button that empties it.
class ActivityLogView final : public QWidget {
    Q_OBJECT

public:
    ActivityLogView(ActivityLogManager& log, const platform::Clock& clock, QWidget* parent);
    /// Takes the focus when the log has been emptied.
    void setFocusHeir(QWidget* heir) { m_focusHeir = heir; }

private:
    [[nodiscard]] QWidget* makeEmptyState();
    void confirmClear();
    void render();

    ActivityLogManager& m_log;
    PressButton* m_clear;
    QWidget* m_empty;
    ActivityLogList* m_list;
    ViewUpdater* m_updates;
    QWidget* m_focusHeir = nullptr;
};

} // namespace orvanlite
