#pragma once

#include <QWidget>

class QLabel;
class QLineEdit;

namespace orvanlite {

class ManufacturerTable;
class PluginManagerViewModel;
class PressButton;
class ViewUpdater;

namespace platform {
class Workspace;
}

/// The manufacturers to filter by, with a search field. Changes no filters itself: it reports clicks.
class ManufacturerList final : public QWidget {
    Q_OBJECT

public:
    ManufacturerList(PluginManagerViewModel& viewModel, platform::Workspace& workspace, QWidget* parent);

Q_SIGNALS:
    void manufacturerClicked(const QString& name);

private:
    [[nodiscard]] QWidget* makeSearchRow();
    void render();

    PluginManagerViewModel& m_viewModel;
    QLineEdit* m_field = nullptr;
    PressButton* m_clear = nullptr;
    ManufacturerTable* m_table;
    QLabel* m_empty;
    ViewUpdater* m_updates;
};

} // namespace orvanlite
