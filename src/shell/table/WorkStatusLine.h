#pragma once

#include <QWidget>

class QLabel;

namespace orvanlite {

class ElidedLabel;
class PluginManagerViewModel;
class ViewUpdater;

/// A line of the footer: the current operation, or why the last one failed or the list could not be saved.
/// Keeps its height while empty. Each text is announced to screen readers.
class WorkStatusLine final : public QWidget {
    Q_OBJECT

public:
    WorkStatusLine(const PluginManagerViewModel& viewModel, QWidget* parent);

private:
    void render();

    const PluginManagerViewModel& m_viewModel;
    QLabel* m_warning;
    ElidedLabel* m_text;
    ViewUpdater* m_updates;
};

} // namespace orvanlite
