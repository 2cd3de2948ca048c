#pragma once

#include <QMainWindow>
#include <QTimer>

namespace orvanlite::platform {
class Defaults;
}

namespace orvanlite {

/// The one window of the application. It keeps its frame in the user's defaults under an autosave name.
class MainWindow final : public QMainWindow {
    Q_OBJECT

public:
    explicit MainWindow(platform::Defaults& defaults);

    /// Takes the frame that was saved under the name, if there is one, and saves every later one there.
    void setFrameAutosaveName(const QString& name);
    /// Takes this size, or as much of it as the screen has, in the middle of the screen.
    void center(const QSize& wanted);

protected:
    void moveEvent(QMoveEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    void frameChanged();
    void saveFrame();

    platform::Defaults& m_defaults;
    QString m_frameKey;
    QTimer m_saveTimer;
};

} // namespace orvanlite
