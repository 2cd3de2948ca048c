#pragma once

#include "operations/BatchProgress.h"
#include "shell/progress/ProgressHUDModel.h"

#include <QObject>
#include <QPointer>

class QWidget;

namespace orvanlite::platform {
class Clock;
struct Platform;
} // namespace orvanlite::platform

namespace orvanlite {

class ProgressHUDView;

/// Where the panel is shown.
enum class PanelPlacement {
    floating,     ///< in a window of its own, above all others
    insideWindow, ///< in the window in use, where applications cannot place their windows
};
[[nodiscard]] PanelPlacement usualPanelPlacement();

/// Owns the floating panel that shows the progress of a long batch. The panel takes neither focus nor clicks.
class ProgressWindowManager final : public QObject, public BatchProgress {
    Q_OBJECT

public:
    /// The manager of the process, created on first use.
    static ProgressWindowManager& shared(const platform::Platform& platform);

    explicit ProgressWindowManager(const platform::Platform& platform,
                                   PanelPlacement placement = usualPanelPlacement());
    ~ProgressWindowManager() override;

    /// Prepares the panel with progress 0, for the active window or, without one, the main window. It appears
    /// there with the first progress: until then a password prompt may be open, which nothing may cover.
    void show(const QString& label, int count) override;
    /// Shows the bar full, if the panel has appeared, and closes it after a short delay, even after a new
    /// show().
    void hide() override;
    /// Closes the panel now.
    void orderOut();
    void setProgress(double progress) override { m_hudModel.progress = progress; }

    [[nodiscard]] ProgressHUDModel& hudModel() { return m_hudModel; }
    /// Null until the first show().
    [[nodiscard]] QWidget* panel() const;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void makePanel();
    void replaceView();
    void appear();
    void centre();

    platform::Clock& m_clock;
    const PanelPlacement m_placement;
    ProgressHUDModel m_hudModel;
    QPointer<QWidget> m_panel;
    QPointer<ProgressHUDView> m_view;
    QPointer<QWidget> m_window; ///< the panel is centred on it
    bool m_awaitsProgress = false;
};

} // namespace orvanlite
