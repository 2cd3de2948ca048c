#include "shell/sidebar/SidebarSplitter.h"

#include "shell/toolkit/AppTheme.h"

#include <QKeyEvent>
#include <QPainter>

namespace orvanlite {

using namespace Qt::StringLiterals;

namespace {

constexpr int kSmallestSidebar = 250;
constexpr int kIdealSidebar = 250;
constexpr int kLargestSidebar = 400;
constexpr int kHandleWidth = 7;
constexpr int kKeyStep = 10;

/// A thin line; wider in the accent colour while it has the focus or the pointer.
class SidebarHandle final : public QSplitterHandle {
public:
    explicit SidebarHandle(QSplitter* parent)
        : QSplitterHandle(Qt::Horizontal, parent)
    {
        setAccessibleName(u"Sidebar width"_s);
        setFocusPolicy(Qt::TabFocus);
        setAttribute(Qt::WA_Hover);
    }

protected:
    void paintEvent(QPaintEvent* /*event*/) override
    {
        QPainter painter(this);
        const bool isActive = hasFocus() || underMouse();
        const int width = isActive ? 3 : 1;
        // At the edge of the detail column.
        painter.fillRect(QRect(this->width() - width, 0, width, height()),
                         isActive ? AppTheme::accent(palette()) : AppTheme::separator(palette()));
    }
    void keyPressEvent(QKeyEvent* event) override
    {
        if (event->key() == Qt::Key_Left)
            moveSplitter(pos().x() - kKeyStep);
        else if (event->key() == Qt::Key_Right)
            moveSplitter(pos().x() + kKeyStep);
        else
            QSplitterHandle::keyPressEvent(event);
    }
};

} // namespace

SidebarSplitter::SidebarSplitter(QWidget* sidebar, QWidget* detail, QWidget* parent)
    : QSplitter(Qt::Horizontal, parent)
{
    setObjectName(u"sidebarSplitter"_s);
    setChildrenCollapsible(false);
    setHandleWidth(kHandleWidth);
    sidebar->setMinimumWidth(kSmallestSidebar);
    sidebar->setMaximumWidth(kLargestSidebar);
    addWidget(sidebar);
    addWidget(detail);
    setStretchFactor(0, 0);
    setStretchFactor(1, 1);
    setSizes({kIdealSidebar, kLargestSidebar});
    handle(1)->setObjectName(u"sidebarHandle"_s); // after addWidget(), which sets another name
    // In tab order the handle belongs between its two sides; by default it is last.
    QWidget* last = sidebar;
    for (QWidget* next = sidebar->nextInFocusChain(); next != sidebar; next = next->nextInFocusChain()) {
        if (sidebar->isAncestorOf(next) && (next->focusPolicy() & Qt::TabFocus))
            last = next;
    }
    setTabOrder(last, handle(1));
}

QSplitterHandle* SidebarSplitter::createHandle() { return new SidebarHandle(this); }

} // namespace orvanlite
