#pragma once

#include <QWidget>

#include <memory>

namespace orvanlite::platform {
struct Platform;
}

namespace orvanlite {

class ActivityLogManager;
class InputGate;
class MainContentView;
class PluginDatabase;
class PluginManagerViewModel;

/// The root view of the main window. It owns the view model and starts the first scan when it has been seen.
class ContentView final : public QWidget {
    Q_OBJECT

public:
    ContentView(const platform::Platform& platform, PluginDatabase& database, ActivityLogManager& activityLog,
                QWidget* parent = nullptr);
    ~ContentView() override;

    [[nodiscard]] PluginManagerViewModel& pluginManager() { return *m_pluginManager; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void appear();

    std::unique_ptr<PluginManagerViewModel> m_pluginManager;
    std::unique_ptr<InputGate> m_inputGate;
    MainContentView* m_mainContent;
    bool m_hasAppeared = false;
};

} // namespace orvanlite
