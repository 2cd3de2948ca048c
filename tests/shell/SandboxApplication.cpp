#include "platform/SystemLayout.h"
#include "shell/app/GUIApp.h"

#include <QApplication>
#include <QThread>
#include <QWidget>

#include <cstdio>
#include <exception>

namespace {

/// Keeps the main window minimised. Prints a line when it is minimised and when it is shown, then with the
/// activation token.
class Minimizer final : public QObject {
public:
    using QObject::QObject;

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (watched->objectName() != QStringLiteral("mainWindow"))
            return false;
        auto* window = static_cast<QWidget*>(watched);
        const bool hasChanged = event->type() == QEvent::WindowStateChange;
        if (window->isMinimized()) {
            if (hasChanged) {
                say("minimized");
                QThread::msleep(qEnvironmentVariable("ORV_BUSY_MILLISECONDS").toULong()); // as a long scan
            }
        } else if (hasChanged || event->type() == QEvent::Paint) {
            if (hasChanged)
                say("shown " + qgetenv("XDG_ACTIVATION_TOKEN"));
            QMetaObject::invokeMethod(window, "showMinimized", Qt::QueuedConnection);
        }
        return false;
    }

private:
    static void say(const QByteArray& line)
    {
        std::puts(line.constData());
        std::fflush(stdout);
    }
};

void installMinimizer() { qApp->installEventFilter(new Minimizer(qApp)); }
Q_COREAPP_STARTUP_FUNCTION(installMinimizer)

} // namespace

int main(int argc, char** argv)
{
    const QString root = qEnvironmentVariable("ORV_SANDBOX_ROOT");
    if (root.isEmpty())
        qFatal("no sandbox is named");
    try {
        return orvanlite::runGui(argc, argv, orvanlite::platform::SystemLayout::sandbox(root));
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
}
