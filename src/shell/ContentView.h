#pragma once

#include <QWidget>

#include <memory>

namespace orvanlite::platform {
struct Platform;
}

namespace orvanlite {

class InputGate;
class MainContentView;
class PluginManagerViewModel;
struct BulkConfirmation;
struct SharedObjects;

/// The root view of the main window. It owns the view model, starts the first scan when it has been seen, and raises
/// the dialogs of the whole application.
class ContentView final : public QWidget {
    Q_OBJECT

public:
    ContentView(const platform::Platform& platform, const SharedObjects& shared, QWidget* parent = nullptr);
    ~ContentView() override;

    [[nodiscard]] PluginManagerViewModel& pluginManager() { return *m_pluginManager; }
    [[nodiscard]] BulkConfirmation& bulkConfirmation() { return *m_bulkConfirmation; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void appear();
    void showBulkWarning();

    std::unique_ptr<PluginManagerViewModel> m_pluginManager;
    std::unique_ptr<BulkConfirmation> m_bulkConfirmation;
    std::unique_ptr<InputGate> m_inputGate;
    MainContentView* m_mainContent;
    bool m_hasAppeared = false;
};

} // namespace orvanlite
