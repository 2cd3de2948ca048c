#pragma once

#include <QWidget>

class QLabel;

namespace orvanlite {

class ElidedLabel;
class ViewUpdater;
struct WorkStatus;
template <typename T>
class Observable;

/// A line of the footer: what the current operation is doing, or why the last one failed. Keeps its height while
/// empty. Each text is announced to screen readers.
class WorkStatusLine final : public QWidget {
    Q_OBJECT

public:
    WorkStatusLine(const Observable<WorkStatus>& status, QWidget* parent);

private:
    void render();

    const Observable<WorkStatus>& m_status;
    QLabel* m_warning;
    ElidedLabel* m_text;
    ViewUpdater* m_updates;
};

} // namespace orvanlite
