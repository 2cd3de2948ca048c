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

/// The activity log, newest entry first, with a button that clears it.
class ActivityLogView final : public QWidget {
    Q_OBJECT

public:
    ActivityLogView(ActivityLogManager& log, const platform::Clock& clock, QWidget* parent);
    /// Sets the widget that receives the focus after the log was cleared.
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
