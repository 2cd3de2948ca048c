#include "shell/app/MainWindow.h"

#include "platform/Defaults.h"
#include "shell/toolkit/RelativeFont.h"

#include <QEvent>
#include <QGuiApplication>
#include <QScreen>

#include <algorithm>
#include <array>
#include <optional>

namespace orvanlite {

using namespace Qt::StringLiterals;

namespace {

constexpr int kSaveDelayMilliseconds = 400;
/// Minimum size at the default text height: fits the table, the bulk pane and its notices.
constexpr QSize kSmallestSize(720, 560);
constexpr int kUsualTextHeight = 17;
/// Typical height of a title bar; the real one is known only once the window is shown.
constexpr int kTitleBar = 32;

const QString kMaximized = u"maximized"_s;

/// Shape: "x y width height", followed by "maximized" if it is, in logical pixels.
struct SavedFrame {
    QRect rect;
    bool isMaximized = false;
};

std::optional<SavedFrame> savedFrame(const QString& text)
{
    const QStringList parts = text.split(u' ');
    std::array<int, 4> numbers{};
    if (parts.size() < std::ssize(numbers))
        return std::nullopt;
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        bool isNumber = false;
        numbers[i] = parts[static_cast<qsizetype>(i)].toInt(&isNumber);
        if (!isNumber)
            return std::nullopt;
    }
    const QRect rect(numbers[0], numbers[1], numbers[2], numbers[3]);
    if (!rect.isValid())
        return std::nullopt;
    return SavedFrame{rect, parts.value(4) == kMaximized};
}

/// The screen that shows most of the frame, if any does.
const QScreen* screenOf(const QRect& frame, const QScreen* otherwise)
{
    const QScreen* best = otherwise;
    int mostPixels = 0;
    for (const QScreen* screen : QGuiApplication::screens()) {
        const QSize shown = screen->availableGeometry().intersected(frame).size();
        const int pixels = shown.isEmpty() ? 0 : shown.width() * shown.height();
        if (pixels > mostPixels) {
            mostPixels = pixels;
            best = screen;
        }
    }
    return best;
}

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
    const std::optional<SavedFrame> saved = savedFrame(m_defaults.value(m_frameKey).toString());
    if (!saved)
        return;
    setGeometry(fitted(saved->rect));
    if (saved->isMaximized)
        setWindowState(windowState() | Qt::WindowMaximized);
}

QRect MainWindow::fitted(QRect frame) const
{
    // The screen may have gone or have another scale since the frame was saved.
    const QRect available = screenOf(frame, screen())->availableGeometry().adjusted(0, kTitleBar, 0, 0);
    frame.setSize(frame.size().boundedTo(available.size()).expandedTo(minimumSize()));
    frame.moveRight(std::min(frame.right(), available.right()));
    frame.moveBottom(std::min(frame.bottom(), available.bottom()));
    frame.moveTopLeft({std::max(frame.left(), available.left()), std::max(frame.top(), available.top())});
    return frame;
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
    if (m_frameKey.isEmpty())
        return;
    const QRect frame = normalGeometry();
    QString text = u"%1 %2 %3 %4"_s.arg(frame.x()).arg(frame.y()).arg(frame.width()).arg(frame.height());
    if (isMaximized())
        text += u' ' + kMaximized;
    m_defaults.setValue(m_frameKey, text);
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
