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

/// Owns the floating panel that shows the progress of a long batch. The panel takes neither focus nor clicks.
class ProgressWindowManager final : public QObject, public BatchProgress {
    Q_OBJECT

public:
    /// The manager of the process, created on first use.
    static ProgressWindowManager& shared(const platform::Platform& platform);

    explicit ProgressWindowManager(const platform::Platform& platform);
    ~ProgressWindowManager() override;

    /// Opens the panel with progress 0, centred on the active window or, without one, on the main window.
    void show(const QString& label, int count) override;
    /// Shows the bar full and closes the panel after a short delay, even after a new show().
    void hide() override;
    void setProgress(double progress) override { m_hudModel.progress = progress; }

    [[nodiscard]] ProgressHUDModel& hudModel() { return m_hudModel; }
    /// Null until the first show().
    [[nodiscard]] QWidget* panel() const;

private:
    void makePanel();
    void replaceView();

    platform::Clock& m_clock;
    ProgressHUDModel m_hudModel;
    QPointer<QWidget> m_panel;
    QPointer<ProgressHUDView> m_view;
};

} // namespace orvanlite
