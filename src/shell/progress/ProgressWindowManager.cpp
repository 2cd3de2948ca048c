#include "shell/progress/ProgressWindowManager.h"

#include "operations/Detach.h"
#include "platform/Clock.h"
#include "platform/Platform.h"
#include "shell/progress/ProgressHUDView.h"

#include <QApplication>
#include <QEvent>
#include <QMainWindow>
#include <QVBoxLayout>

#include <chrono>
#include <cmath>

namespace orvanlite {

using namespace Qt::StringLiterals;

namespace {

constexpr std::chrono::milliseconds kFullBarStays{450};

QWidget* windowInUse(const QWidget* panel)
{
    // Some systems report every new window as active, even one that does not accept activation.
    QWidget* active = QApplication::activeWindow();
    if (active && active != panel)
        return active;
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (window->isVisible() && qobject_cast<QMainWindow*>(window))
            return window;
    }
    return nullptr;
}

/// All pixels that the rounded panel covers at least partly.
QRegion roundedRegion(const QSize& size, int radius)
{
    QRegion region(0, radius, size.width(), size.height() - 2 * radius);
    for (int row = 0; row < radius; ++row) {
        const int rise = radius - row - 1;
        const int inset = static_cast<int>(radius - std::sqrt(double(radius) * radius - double(rise) * rise));
        region += QRect(inset, row, size.width() - 2 * inset, 1);
        region += QRect(inset, size.height() - 1 - row, size.width() - 2 * inset, 1);
    }
    return region;
}

QCoro::Task<> orderOutLater(QPointer<ProgressWindowManager> manager, platform::Clock* clock)
{
    co_await clock->sleepFor(kFullBarStays);
    if (manager)
        manager->orderOut();
}

} // namespace

PanelPlacement usualPanelPlacement()
{
    return QGuiApplication::platformName().startsWith(u"wayland") ? PanelPlacement::insideWindow
                                                                  : PanelPlacement::floating;
}

ProgressWindowManager& ProgressWindowManager::shared(const platform::Platform& platform)
{
    static auto* const manager = new ProgressWindowManager(platform);
    return *manager;
}

ProgressWindowManager::ProgressWindowManager(const platform::Platform& platform, PanelPlacement placement)
    : m_clock(platform.clock)
    , m_placement(placement)
{
    m_hudModel.progress.observe(this, [this] {
        if (m_awaitsProgress && *m_hudModel.progress > 0)
            appear();
    });
}

ProgressWindowManager::~ProgressWindowManager() { delete m_panel; }

QWidget* ProgressWindowManager::panel() const { return m_panel; }

void ProgressWindowManager::show(const QString& label, int count)
{
    m_hudModel.label = label;
    m_hudModel.count = count;
    m_hudModel.progress = 0;
    m_awaitsProgress = true;
    if (!m_panel)
        makePanel();
    m_panel->hide();
    m_window = windowInUse(m_panel);
    replaceView();
}

void ProgressWindowManager::appear()
{
    m_awaitsProgress = false;
    if (!m_panel) {
        // Its window was closed meanwhile.
        makePanel();
        replaceView();
    }
    if (m_placement == PanelPlacement::insideWindow) {
        if (!m_window)
            return;
        m_panel->setParent(m_window);
        m_window->installEventFilter(this);
    }
    centre();
    m_panel->show();
    m_panel->raise();
}

void ProgressWindowManager::centre()
{
    if (!m_window)
        return;
    const QRect frame = m_panel->isWindow() ? m_window->frameGeometry() : m_window->rect();
    m_panel->move(frame.x() + (frame.width() - m_panel->width()) / 2,
                  frame.y() + (frame.height() - m_panel->height()) / 2);
}

bool ProgressWindowManager::eventFilter(QObject* watched, QEvent* event)
{
    // Only of a window that the panel is inside.
    if (event->type() == QEvent::Resize && m_panel && watched == m_panel->parentWidget())
        centre();
    return QObject::eventFilter(watched, event);
}

void ProgressWindowManager::hide()
{
    m_awaitsProgress = false; // a batch without progress never covered anything, and ends without a panel
    m_hudModel.progress = 1;
    // On purpose: a show() in the meantime does not cancel this.
    detach(orderOutLater(this, &m_clock));
}

void ProgressWindowManager::orderOut()
{
    m_awaitsProgress = false;
    if (m_panel)
        m_panel->hide();
}

void ProgressWindowManager::makePanel()
{
    m_panel = new QWidget;
    m_panel->setObjectName(u"progressPanel"_s);
    m_panel->setWindowTitle(u"Progress"_s);
    m_panel->setAttribute(Qt::WA_ShowWithoutActivating);
    m_panel->setAttribute(Qt::WA_TranslucentBackground);
    m_panel->setAttribute(Qt::WA_TransparentForMouseEvents);
    m_panel->setAttribute(Qt::WA_MacAlwaysShowToolWindow);
    m_panel->setAttribute(Qt::WA_QuitOnClose, false);
    m_panel->setFocusPolicy(Qt::NoFocus);
    m_panel->setFixedSize(ProgressHUDView::kSize);
    if (m_placement == PanelPlacement::insideWindow)
        return;
    m_panel->setWindowFlags(Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint |
                            Qt::WindowTransparentForInput | Qt::WindowDoesNotAcceptFocus);
    if (QGuiApplication::platformName() != u"xcb"_s)
        return;
    // A window manager would add a frame that takes clicks, and allow dragging with a modifier key.
    m_panel->setWindowFlag(Qt::X11BypassWindowManagerHint);
    // Without a compositor, X11 paints translucent pixels black: mask out the corners. Partly covered pixels
    // are kept, so that the edge is smooth with a compositor.
    m_panel->setMask(roundedRegion(ProgressHUDView::kSize, ProgressHUDView::kCornerRadius));
}

void ProgressWindowManager::replaceView()
{
    delete m_view;
    m_view = new ProgressHUDView(m_hudModel, m_panel);
    m_view->show();
}

} // namespace orvanlite
