#pragma once

#include <QWidget>

class QLabel;

namespace orvanlite::platform {
struct Platform;
}

namespace orvanlite {

class PluginListView;
class PluginManagerViewModel;
class PressButton;
class ViewUpdater;

/// The detail column: the tool row over the plugin table.
class MainContentView final : public QWidget {
    Q_OBJECT

public:
    MainContentView(PluginManagerViewModel& viewModel, const platform::Platform& platform, QWidget* parent);

private:
    void buildToolRow(QWidget* row, const platform::Platform& platform);
    void render();
    void showBusyState();

    PluginManagerViewModel& m_viewModel;
    PressButton* m_scan = nullptr;
    QWidget* m_busy = nullptr;
    PluginListView* m_list;
    ViewUpdater* m_updates;
};

} // namespace orvanlite
