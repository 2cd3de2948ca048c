#pragma once

#include "model/PluginFormat.h"
#include "shell/toolkit/Services.h"

#include <QPointer>
#include <QTimer>
#include <QWidget>

#include <functional>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

class QVBoxLayout;

namespace orvanlite {

class FilterBar;
enum class BulkAction;
struct PluginFilter;
class PressButton;
class MenuBarLoginItem;
class MenuBarSection;
class SidebarActions;
class SidebarItemButton;
class SidebarScrollArea;
class SidebarSection;
class StatisticsView;
class ViewUpdater;

/// The left column of the main window: the filters, the actions on all filtered plugins, and the activity
/// log. Holds no plugins: it reads and sets the state of the view model.
class SidebarView final : public QWidget {
    Q_OBJECT

public:
    /// Enables or disables all filtered plugins, optionally of one format only.
    using FormatAction = std::function<void(BulkAction, std::optional<PluginFormat>)>;

    SidebarView(const Services& services, FormatAction actOnAllForFormat, QWidget* parent);
    ~SidebarView() override;

private:
    [[nodiscard]] QWidget* makeTitle();
    [[nodiscard]] QWidget* makeColumn();
    [[nodiscard]] QWidget* makeFormats();
    void addManufacturers(QVBoxLayout* column);
    [[nodiscard]] QWidget* makeLowerSections();
    [[nodiscard]] QWidget* makeScanningRow();
    [[nodiscard]] SidebarSection* makeSection(const QString& title, const QString& identity, QWidget* parent);

    void render();
    void renderFormats(const PluginFilter& filter);
    void renderPresence(const PluginFilter& filter);
    void showBusyState();
    /// Opens the actions, closes statistics and log, and scrolls to the actions.
    void expandActions();
    void closeSections();

    void clickAllPlugins();
    void clickFormat(PluginFormat format);
    void clickManufacturer(const QString& name);
    void clearFilters();
    void clearManufacturers();
    void clearActiveProfile();
    void confirm(BulkAction action);
    void perform(BulkAction action);

    const Services m_services;
    PluginManagerViewModel& m_viewModel;
    FormatAction m_actOnAllForFormat;
    std::unique_ptr<MenuBarLoginItem> m_loginItem;
    bool m_areCountsDue = true; ///< the catalogue has changed
    QTimer m_scrollDelay;
    QPointer<QObject> m_warning; ///< the open confirmation

    SidebarItemButton* m_allPlugins = nullptr;
    FilterBar* m_filterBar = nullptr;
    SidebarSection* m_profilesSection = nullptr;
    SidebarSection* m_actionsSection = nullptr;
    SidebarActions* m_actions = nullptr;
    SidebarSection* m_formatsSection = nullptr;
    std::vector<std::pair<PluginFormat, SidebarItemButton*>> m_formats;
    SidebarSection* m_manufacturersSection = nullptr;
    PressButton* m_clearManufacturers = nullptr;
    SidebarItemButton* m_invert = nullptr;
    QWidget* m_divider = nullptr;
    SidebarScrollArea* m_column = nullptr;
    SidebarSection* m_statisticsSection = nullptr;
    StatisticsView* m_statistics = nullptr;
    MenuBarSection* m_menuBarSection = nullptr;
    SidebarSection* m_recentSection = nullptr;
    QWidget* m_scanning = nullptr;
    ViewUpdater* m_updates;
};

} // namespace orvanlite
