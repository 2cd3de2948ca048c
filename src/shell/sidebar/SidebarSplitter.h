#pragma once

#include <QSplitter>

namespace orvanlite {

/// The sidebar beside the detail column. The handle can be dragged, or moved by Left and Right while it has
/// the focus. When the window grows, the detail column gets the additional width.
class SidebarSplitter final : public QSplitter {
    Q_OBJECT

public:
    SidebarSplitter(QWidget* sidebar, QWidget* detail, QWidget* parent);

protected:
    QSplitterHandle* createHandle() override;
};

} // namespace orvanlite
