#pragma once

#include <QWidget>

class QButtonGroup;

namespace orvanlite {

class ElidedLabel;
class PluginManagerViewModel;
class PressButton;
class ViewUpdater;

/// The strip above the table while a profile is under preview: which one it is, the slices of it to look at, and the
/// way out.
class PreviewStrip final : public QWidget {
    Q_OBJECT

public:
    PreviewStrip(PluginManagerViewModel& viewModel, bool reducesMotion, QWidget* parent);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void render();

    PluginManagerViewModel& m_viewModel;
    ElidedLabel* m_title;
    PressButton* m_close;
    QButtonGroup* m_tabs;
    ViewUpdater* m_updates;
};

} // namespace orvanlite
