#pragma once

#include <QString>
#include <QWidget>

#include <functional>

namespace orvanlite {
class MainWindow;
class PluginManagerViewModel;
} // namespace orvanlite

namespace orvanlite::demo {

/// Drives the real window: finds and operates controls, prints each step with its result, and saves
/// screenshots.
class Stage {
public:
    Stage(MainWindow& window, QString outputFolder);

    /// True while every step has succeeded.
    [[nodiscard]] bool allSucceeded() const { return m_allSucceeded; }

protected:
    enum class Area {
        window, ///< only the main window, after a short wait
        screen, ///< the screen area of the window, immediately and including other windows
    };

    void step(const QString& title, bool succeeded, const QString& detail = {});
    void screenshot(const QString& name, Area area = Area::window);
    void click(const QString& objectName);
    void typeSearch(const QString& text);
    /// Saves the current state as a profile; the section "Profiles" must be open.
    void saveProfile(const QString& name);
    /// Runs the event loop until the condition holds, for at most ten seconds.
    bool waitFor(const std::function<bool()>& condition);
    /// The control with this object name in the window or its dialogs.
    template <typename Widget>
    Widget& named(const QString& objectName)
    {
        auto* widget = qobject_cast<Widget*>(find(objectName));
        if (!widget)
            qFatal("no control is named %s", qPrintable(objectName));
        return *widget;
    }

    MainWindow& m_window;
    PluginManagerViewModel& m_viewModel;

private:
    [[nodiscard]] QWidget* find(const QString& objectName) const;

    QString m_outputFolder;
    bool m_allSucceeded = true;
};

} // namespace orvanlite::demo
