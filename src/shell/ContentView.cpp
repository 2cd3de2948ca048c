#include "shell/ContentView.h"

#include "operations/Detach.h"
#include "operations/PluginManagerViewModel.h"
#include "shell/AppTheme.h"
#include "shell/InputGate.h"
#include "shell/MainContentView.h"

#include <QPainter>
#include <QTimer>
#include <QVBoxLayout>

namespace orvanlite {

using namespace Qt::StringLiterals;

ContentView::ContentView(const platform::Platform& platform, PluginDatabase& database,
                         ActivityLogManager& activityLog, QWidget* parent)
    : QWidget(parent)
    , m_pluginManager(std::make_unique<PluginManagerViewModel>(platform, database, activityLog))
    , m_inputGate(std::make_unique<InputGate>(m_pluginManager->isRunningScript))
    , m_mainContent(new MainContentView(*m_pluginManager, platform, this))
{
    setObjectName(u"contentView"_s);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(m_mainContent);
}

ContentView::~ContentView()
{
    // The views read the view model until they are gone.
    delete m_mainContent;
}

void ContentView::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    QLinearGradient gradient(rect().topLeft(), rect().bottomRight());
    gradient.setColorAt(0, AppTheme::withOpacity(AppTheme::primary(palette()), 0.05));
    gradient.setColorAt(1, AppTheme::withOpacity(AppTheme::primary(palette()), 0.02));
    painter.fillRect(rect(), gradient);
    if (!std::exchange(m_hasAppeared, true)) {
        // Behind the first paint, so that the window stands before a scan takes the thread.
        QTimer::singleShot(0, this, &ContentView::appear);
    }
}

void ContentView::appear() { detach(m_pluginManager->scanForPlugins()); }

} // namespace orvanlite
