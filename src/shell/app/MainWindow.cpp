#include "shell/app/MainWindow.h"

#include "platform/Defaults.h"
#include "shell/toolkit/RelativeFont.h"

#include <QEvent>
#include <QScreen>

#include <algorithm>

namespace orvanlite {

using namespace Qt::StringLiterals;

namespace {

constexpr int kSaveDelayMilliseconds = 400;
/// Minimum size at the default text height: fits the table, the bulk pane and its notices.
constexpr QSize kSmallestSize(720, 560);
constexpr int kUsualTextHeight = 17;
/// Typical height of a title bar; the real one is known only once the window is shown.
constexpr int kTitleBar = 32;

} // namespace

MainWindow::MainWindow(platform::Defaults& defaults)
    : m_defaults(defaults)
{
    setObjectName(u"mainWindow"_s);
    fitMinimumSize();
    onFontChange(this, [this] { fitMinimumSize(); });
    m_saveTimer.setSingleShot(true);
    m_saveTimer.setInterval(kSaveDelayMilliseconds);
    connect(&m_saveTimer, &QTimer::timeout, this, &MainWindow::saveFrame);
}

void MainWindow::fitMinimumSize()
{
    const double scale = std::max(1.0, double(fontMetrics().height()) / kUsualTextHeight);
    setMinimumSize((kSmallestSize * scale).boundedTo(screen()->availableSize() - QSize(0, kTitleBar)));
}

void MainWindow::setFrameAutosaveName(const QString& name)
{
    m_frameKey = u"NSWindow Frame "_s + name;
    const QByteArray frame = m_defaults.value(m_frameKey).toByteArray();
    if (!frame.isEmpty())
        restoreGeometry(frame);
}

void MainWindow::center(const QSize& wanted)
{
    const QRect available = screen()->availableGeometry().adjusted(0, kTitleBar, 0, 0);
    const QSize size = wanted.boundedTo(available.size()).expandedTo(minimumSize());
    const QPoint corner = available.center() - QPoint(size.width() / 2, size.height() / 2);
    setGeometry(
        QRect(QPoint(std::max(corner.x(), available.left()), std::max(corner.y(), available.top())), size));
}

void MainWindow::frameChanged()
{
    if (!m_frameKey.isEmpty() && isVisible())
        m_saveTimer.start();
}

void MainWindow::saveFrame()
{
    m_saveTimer.stop();
    if (!m_frameKey.isEmpty())
        m_defaults.setValue(m_frameKey, saveGeometry());
}

void MainWindow::moveEvent(QMoveEvent* event)
{
    QMainWindow::moveEvent(event);
    frameChanged();
}

void MainWindow::resizeEvent(QResizeEvent* event)
{
    QMainWindow::resizeEvent(event);
    frameChanged();
}

void MainWindow::changeEvent(QEvent* event)
{
    QMainWindow::changeEvent(event);
    if (event->type() == QEvent::WindowStateChange)
        frameChanged();
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    if (m_saveTimer.isActive())
        saveFrame();
    QMainWindow::closeEvent(event);
}

} // namespace orvanlite
