#pragma once

#include <QSplitter>

namespace orvanlite {

/// The sidebar beside the detail column. The line between them is dragged, or moved by Left and Right while it has
/// the focus. What the window grows by goes to the detail column.
class SidebarSplitter final : public QSplitter {
    Q_OBJECT

public:
    SidebarSplitter(QWidget* sidebar, QWidget* detail, QWidget* parent);

protected:
    QSplitterHandle* createHandle() override;
};

} // namespace orvanlite
