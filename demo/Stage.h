#pragma once

#include <QString>
#include <QWidget>

#include <functional>

namespace orvanlite {
class MainWindow;
class PluginManagerViewModel;
} // namespace orvanlite

namespace orvanlite::demo {

/// The real window and the hands on it: finds controls, presses them, prints each step with its result and leaves
/// screenshots.
class Stage {
public:
    Stage(MainWindow& window, QString outputFolder);

    /// True while every step has come out right.
    [[nodiscard]] bool allSucceeded() const { return m_allSucceeded; }

protected:
    enum class Area {
        window, ///< the main window alone, when it has come to rest
        screen, ///< what the screen shows in its place at once, other windows included
    };

    void step(const QString& title, bool succeeded, const QString& detail = {});
    void screenshot(const QString& name, Area area = Area::window);
    void click(const QString& objectName);
    void typeSearch(const QString& text);
    /// Saves the present state under that name; the section "Profiles" must be open.
    void saveProfile(const QString& name);
    /// Turns the event loop until the condition holds, ten seconds at most.
    bool waitFor(const std::function<bool()>& condition);
    /// The control of that name, wherever in the window and its dialogs.
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
