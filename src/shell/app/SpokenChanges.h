#pragma once

#include <QObject>
#include <QUuid>

class QWidget;

namespace orvanlite {

class ActivityLogManager;
class PluginManagerViewModel;
class ViewUpdater;

/// Tells screen readers what changes away from the focus: what an operation has done, and how many plugins
/// are selected.
class SpokenChanges final : public QObject {
public:
    /// The arguments outlive it. It belongs to `view` and speaks for the view's window.
    SpokenChanges(const PluginManagerViewModel& viewModel, const ActivityLogManager& log, QWidget* view);

private:
    void speak();
    void speakActions();
    void speakSelection();

    const PluginManagerViewModel& m_viewModel;
    const ActivityLogManager& m_log;
    QWidget& m_view;
    QUuid m_lastEntry; ///< the newest one when the log was last looked at
    qsizetype m_selectedCount = 0;
    ViewUpdater* m_updates;
};

} // namespace orvanlite
