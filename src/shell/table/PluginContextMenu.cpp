#include "shell/table/PluginContextMenu.h"

#include "operations/Detach.h"
#include "operations/PluginManagerViewModel.h"
#include "platform/Platform.h"
#include "platform/Workspace.h"
#include "shell/toolkit/Icons.h"
#include "shell/toolkit/ManufacturerWebsites.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMenu>

#include <algorithm>

namespace orvanlite {

using namespace Qt::StringLiterals;

namespace {

/// Adds an entry. A "&" in a manufacturer's name does not create a mnemonic.
QAction* addEntry(QMenu* menu, QString title, const QString& icon, const QString& objectName)
{
    QAction* action = menu->addAction(menuIcon(icon), title.replace(u'&', u"&&"_s));
    action->setObjectName(objectName);
    return action;
}

void addPluginEntries(QMenu* menu, PluginManagerViewModel& viewModel, platform::Workspace& workspace,
                      const AudioPlugin& plugin)
{
    const QString manufacturer = plugin.manufacturer.isEmpty() ? u"Manufacturer"_s : plugin.manufacturer;
    QAction* visit =
        addEntry(menu, u"Visit "_s + manufacturer + u" Website"_s, u"safari"_s, u"visitWebsiteAction"_s);
    QObject::connect(visit, &QAction::triggered, menu, [&workspace, manufacturer = plugin.manufacturer] {
        workspace.open(manufacturerWebsiteURL(manufacturer));
    });
    const QString query = plugin.name + u' ' + plugin.manufacturer + u" update latest version"_s;
    QAction* search = addEntry(menu, u"Search for Updates"_s, u"magnifyingglass"_s, u"searchUpdatesAction"_s);
    QObject::connect(search, &QAction::triggered, menu,
                     [&workspace, query] { workspace.open(webSearchURL(query)); });
    if (plugin.version) {
        menu->addSeparator();
        QAction* copy = addEntry(menu, u"Copy Version ("_s + *plugin.version + u')', u"doc.on.doc"_s,
                                 u"copyVersionAction"_s);
        QObject::connect(copy, &QAction::triggered, menu,
                         [version = *plugin.version] { QGuiApplication::clipboard()->setText(version); });
    }
    menu->addSeparator();
    QAction* toggle =
        plugin.isEnabled ? addEntry(menu, u"Disable Plugin"_s, u"xmark.circle"_s, u"disablePluginAction"_s)
                         : addEntry(menu, u"Enable Plugin"_s, u"checkmark.circle"_s, u"enablePluginAction"_s);
    QObject::connect(toggle, &QAction::triggered, menu, [&viewModel, plugin] {
        if (!*viewModel.isRunningScript)
            detach(viewModel.togglePlugin(plugin));
    });
}

} // namespace

QMenu* makePluginContextMenu(PluginManagerViewModel& viewModel, const platform::Platform& platform,
                             const QUuid& pointed, QWidget* parent)
{
    auto* menu = new QMenu(parent);
    menu->setObjectName(u"pluginContextMenu"_s);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    const QSet<QUuid>& selected = *viewModel.selectedPlugins;
    AudioPlugins rows;
    for (const AudioPlugin& plugin : viewModel.filteredPlugins()) {
        if (selected.contains(plugin.id))
            rows.push_back(plugin);
    }
    if (!rows.empty()) {
        const auto under = std::find_if(rows.begin(), rows.end(),
                                        [&pointed](const AudioPlugin& each) { return each.id == pointed; });
        addPluginEntries(menu, viewModel, platform.workspace, under != rows.end() ? *under : rows.front());
    }
    if (selected.size() >= 2) {
        QAction* toggle = addEntry(menu, u"Toggle %1 Plugins"_s.arg(selected.size()),
                                   u"arrow.triangle.2.circlepath"_s, u"togglePluginsAction"_s);
        QObject::connect(toggle, &QAction::triggered, menu, [&viewModel, rows] {
            if (!*viewModel.isRunningScript)
                detach(viewModel.toggleMultiplePlugins(rows));
        });
    }
    return menu;
}

} // namespace orvanlite
