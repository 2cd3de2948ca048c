#pragma once

#include <QMainWindow>
#include <QTimer>

namespace orvanlite::platform {
class Defaults;
}

namespace orvanlite {

/// The main window. Saves its frame in the user defaults under an autosave name.
class MainWindow final : public QMainWindow {
    Q_OBJECT

public:
    explicit MainWindow(platform::Defaults& defaults);

    /// Restores the frame saved under this name, if any, as far as it fits the screens, and saves all later
    /// frames there.
    void setFrameAutosaveName(const QString& name);
    /// Resizes to this size, limited to the screen, and centres the window on the screen.
    void center(const QSize& wanted);

protected:
    void moveEvent(QMoveEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    /// The frame, moved and shrunk into its screen.
    [[nodiscard]] QRect fitted(QRect frame) const;
    void fitMinimumSize();
    void frameChanged();
    void saveFrame();

    platform::Defaults& m_defaults;
    QString m_frameKey;
    QTimer m_saveTimer;
};

} // namespace orvanlite
