#include "shell/sidebar/SidebarView.h"

#include "operations/Detach.h"
#include "operations/PluginManagerViewModel.h"
#include "platform/Platform.h"
#include "profiles/ProfileManager.h"
#include "records/ActivityLogManager.h"
#include "shell/sidebar/ActivityLogView.h"
#include "shell/sidebar/FilterBar.h"
#include "shell/sidebar/ManufacturerList.h"
#include "shell/sidebar/MenuBarLoginItem.h"
#include "shell/sidebar/MenuBarSection.h"
#include "shell/sidebar/ProfilesSection.h"
#include "shell/sidebar/SidebarActions.h"
#include "shell/sidebar/SidebarItemButton.h"
#include "shell/sidebar/SidebarRules.h"
#include "shell/sidebar/SidebarScrollArea.h"
#include "shell/sidebar/SidebarSection.h"
#include "shell/sidebar/SidebarTitle.h"
#include "shell/sidebar/StatisticsView.h"
#include "shell/toolkit/AppTheme.h"
#include "shell/toolkit/Dialogs.h"
#include "shell/toolkit/Divider.h"
#include "shell/toolkit/Icons.h"
#include "shell/toolkit/Presence.h"
#include "shell/toolkit/PressButton.h"
#include "shell/toolkit/RelativeFont.h"
#include "shell/toolkit/Spinner.h"
#include "shell/toolkit/TintedLabel.h"
#include "shell/toolkit/ViewUpdater.h"

#include <QDialog>
#include <QVBoxLayout>

namespace orvanlite {

using namespace Qt::StringLiterals;

namespace {

constexpr int kScrollDelayMilliseconds = 50;
constexpr int kColumnLeft = 8;
constexpr int kColumnSpacing = 12;
constexpr int kRowSpacing = 2;
/// Aligns other widgets with the backgrounds of the rows.
constexpr int kListInset = 4;
constexpr int kLeastColumnHeight = 124;
constexpr int kLeastLowerHeight = 48;
constexpr int kItemSlot = 20;
constexpr int kInvertSlot = 18;
constexpr int kSpinnerSize = 12;

/// Adds the member to the set or removes it. Returns true if it was added.
template <typename Member>
bool toggle(Observable<QSet<Member>>& set, const Member& member)
{
    const bool joins = !set->contains(member);
    set.mutate([&](QSet<Member>& members) {
        if (joins)
            members.insert(member);
        else
            members.remove(member);
    });
    return joins;
}

} // namespace

SidebarView::SidebarView(const Services& services, FormatAction actOnAllForFormat, QWidget* parent)
    : QWidget(parent)
    , m_services(services)
    , m_viewModel(services.plugins)
    , m_actOnAllForFormat(std::move(actOnAllForFormat))
    , m_loginItem(std::make_unique<MenuBarLoginItem>(services.platform))
    , m_updates(new ViewUpdater([this] { render(); }, this))
{
    setObjectName(u"sidebarView"_s);
    auto* stack = new QVBoxLayout(this);
    stack->setContentsMargins(0, 0, 0, 0);
    stack->setSpacing(0);
    stack->addWidget(makeTitle());
    m_column = new SidebarScrollArea(makeColumn(), kLeastColumnHeight, false, this);
    m_column->setObjectName(u"sidebarColumn"_s);
    for (SidebarSection* section :
         {m_profilesSection, m_actionsSection, m_formatsSection, m_manufacturersSection})
        connect(section, &SidebarSection::opened, m_column,
                [this, section] { m_column->scrollIntoView(section); });
    stack->addWidget(m_column, 1);
    auto* lower = new SidebarScrollArea(makeLowerSections(), kLeastLowerHeight, true, this);
    lower->setObjectName(u"sidebarLowerSections"_s);
    stack->addWidget(lower);
    stack->addWidget(makeScanningRow());

    m_scrollDelay.setSingleShot(true);
    m_scrollDelay.setInterval(kScrollDelayMilliseconds);
    connect(&m_scrollDelay, &QTimer::timeout, this, [this] {
        if (m_actionsSection->isVisible())
            m_column->scrollToTop(m_actionsSection);
    });
    m_viewModel.resetViewTrigger.observe(this, [this] { closeSections(); });
    // Assigned after every change of the catalogue's rows.
    m_viewModel.allManufacturers.observe(this, [this] { m_areCountsDue = true; });
    // The selection is not observable: watch the rows, the visible selection and the bulk pane instead.
    m_updates->watch(m_viewModel.plugins, m_viewModel.selectedFormats, m_viewModel.selectedManufacturers,
                     m_viewModel.showAllPlugins, m_viewModel.activeProfile, m_viewModel.allManufacturers,
                     m_viewModel.selectedPlugins, m_viewModel.consolidatedBulkPlugins,
                     m_viewModel.displayedPlugins, m_viewModel.dbTotalCount, m_viewModel.dbEnabledCount,
                     m_viewModel.dbDisabledCount, m_viewModel.isLoading, services.activityLog.entries,
                     services.profiles.profiles);
    // A scan blocks the event loop, so the indicator must be painted before it starts.
    m_viewModel.isLoading.observe(this, [this] { showBusyState(); });
    render();
}

SidebarView::~SidebarView() = default;

QWidget* SidebarView::makeTitle()
{
    auto* block = new QWidget(this);
    auto* title = new SidebarTitle(u"Orvanlite"_s, m_services.platform.clock, block);
    auto* caption = new TintedLabel(u"Audio Plugin Management"_s, &AppTheme::secondary, block);
    caption->setObjectName(u"sidebarCaption"_s);
    setRelativeFont(caption, AppTheme::kCaption);
    caption->setWordWrap(true);
    auto* column = new QVBoxLayout(block);
    column->setContentsMargins(AppTheme::kSpace5, AppTheme::kSpace5, AppTheme::kSpace5, AppTheme::kSpace5);
    column->setSpacing(2);
    column->addWidget(title);
    column->addWidget(caption);
    return block;
}

SidebarSection* SidebarView::makeSection(const QString& title, const QString& identity, QWidget* parent)
{
    return new SidebarSection(title, identity, parent);
}

QWidget* SidebarView::makeColumn()
{
    auto* content = new QWidget;
    auto* column = new QVBoxLayout(content);
    column->setContentsMargins(kColumnLeft, 0, 0, AppTheme::kSpace2);
    column->setSpacing(kColumnSpacing);

    m_allPlugins = new SidebarItemButton(u"All Plugins"_s, u"music.note.list"_s, kItemSlot,
                                         SidebarItemButton::Hover::grows, content);
    m_allPlugins->setObjectName(u"allPluginsButton"_s);
    connect(m_allPlugins, &QAbstractButton::clicked, this, &SidebarView::clickAllPlugins);
    column->addWidget(m_allPlugins);

    m_filterBar = new FilterBar(content);
    connect(m_filterBar, &FilterBar::clearClicked, this, &SidebarView::clearFilters);
    column->addWidget(m_filterBar);

    m_profilesSection = makeSection(u"Profiles"_s, u"profiles"_s, content);
    m_profilesSection->setBody(new ProfilesSection(m_services, m_profilesSection));
    column->addWidget(m_profilesSection);

    m_actionsSection = makeSection(u"Actions"_s, u"actions"_s, content);
    m_actions = new SidebarActions(content);
    connect(m_actions, &SidebarActions::requested, this, &SidebarView::confirm);
    m_actionsSection->setBody(m_actions);
    column->addWidget(m_actionsSection);

    m_formatsSection = makeSection(u"Plugin Formats"_s, u"formats"_s, content);
    m_formatsSection->setBody(makeFormats());
    column->addWidget(m_formatsSection);

    addManufacturers(column);

    m_divider = makeDivider(content);
    m_divider->setObjectName(u"sidebarDivider"_s);
    column->addWidget(m_divider);
    column->addStretch(1);
    return content;
}

QWidget* SidebarView::makeFormats()
{
    auto* rows = new QWidget(m_formatsSection);
    auto* column = new QVBoxLayout(rows);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(kRowSpacing);
    for (const PluginFormat format : allCases<PluginFormat>) {
        auto* row = new SidebarItemButton(rawValue(format), formatIcon(format), kItemSlot,
                                          SidebarItemButton::Hover::ground, rows);
        row->setObjectName(u"formatRow"_s + rawValue(format).remove(u' '));
        connect(row, &QAbstractButton::clicked, this, [this, format] { clickFormat(format); });
        column->addWidget(row);
        m_formats.emplace_back(format, row);
    }
    return rows;
}

void SidebarView::addManufacturers(QVBoxLayout* column)
{
    QWidget* content = column->parentWidget();
    m_manufacturersSection = makeSection(u"Manufacturers"_s, u"manufacturers"_s, content);
    m_clearManufacturers = new PressButton(u"Clear"_s, {}, PressButton::Ground::none, m_manufacturersSection);
    m_clearManufacturers->setObjectName(u"clearManufacturersButton"_s);
    m_clearManufacturers->setAccessibleDescription(u"Manufacturers"_s);
    setRelativeFont(m_clearManufacturers, AppTheme::kCaption);
    m_clearManufacturers->setTextColour(&AppTheme::secondary);
    connect(m_clearManufacturers, &QAbstractButton::clicked, this, &SidebarView::clearManufacturers);
    m_manufacturersSection->addHeaderButton(m_clearManufacturers);
    auto* list = new ManufacturerList(m_viewModel, m_services.platform.workspace, m_manufacturersSection);
    connect(list, &ManufacturerList::manufacturerClicked, this, &SidebarView::clickManufacturer);
    list->setContentsMargins(kListInset, 0, kListInset, 0);
    m_manufacturersSection->setBody(list);
    column->addWidget(m_manufacturersSection);

    m_invert = new SidebarItemButton(u"Invert Selection"_s, u"arrow.triangle.2.circlepath"_s, kInvertSlot,
                                     SidebarItemButton::Hover::ground, content);
    m_invert->setObjectName(u"invertSelectionButton"_s);
    connect(m_invert, &QAbstractButton::clicked, this, [this] { m_viewModel.invertSelection(); });
    column->addWidget(m_invert);
}

QWidget* SidebarView::makeLowerSections()
{
    auto* content = new QWidget;
    auto* column = new QVBoxLayout(content);
    column->setContentsMargins(kColumnLeft, AppTheme::kSpace2, 0, 0);
    column->setSpacing(AppTheme::kSpace2);
    m_statisticsSection = makeSection(u"Statistics"_s, u"statistics"_s, content);
    m_statistics = new StatisticsView(m_statisticsSection);
    m_statisticsSection->setBody(m_statistics);
    m_statisticsSection->setOpen(true, false); // the only one that starts open
    column->addWidget(m_statisticsSection);
    m_menuBarSection = new MenuBarSection(*m_loginItem, content);
    column->addWidget(m_menuBarSection);
    m_recentSection = makeSection(u"Recent Activity"_s, u"recent"_s, content);
    auto* log = new ActivityLogView(m_services.activityLog, m_services.platform.clock, m_recentSection);
    log->setContentsMargins(kListInset, 0, kListInset, 0);
    log->setFocusHeir(m_recentSection->header());
    m_recentSection->setBody(log);
    m_recentSection->setShrinkable();
    column->addWidget(m_recentSection);
    return content;
}

QWidget* SidebarView::makeScanningRow()
{
    m_scanning = new QWidget(this);
    m_scanning->setObjectName(u"scanningRow"_s);
    auto* text = new TintedLabel(u"Scanning..."_s, &AppTheme::secondary, m_scanning);
    text->setObjectName(u"scanningLabel"_s);
    auto* row = new QHBoxLayout(m_scanning);
    row->setContentsMargins(AppTheme::kSpace5, AppTheme::kSpace1, AppTheme::kSpace5, AppTheme::kSpace2);
    row->setSpacing(AppTheme::kSpace2);
    row->addWidget(new Spinner(kSpinnerSize, m_scanning));
    row->addWidget(text, 1);
    // Keep its space while hidden: a scan must not move the widgets above.
    QSizePolicy policy = m_scanning->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    m_scanning->setSizePolicy(policy);
    return m_scanning;
}

void SidebarView::render()
{
    const PluginFilter filter = m_viewModel.currentFilter();
    m_allPlugins->setCount(QString::number(m_viewModel.plugins->size()));
    m_allPlugins->setSelected(filter.formats.isEmpty() && *m_viewModel.showAllPlugins &&
                              !m_viewModel.activeProfile->has_value());
    m_filterBar->setSummary(filterSummary(filter));
    m_profilesSection->setCount(QString::number(m_services.profiles.profiles->size()));
    m_actions->setFilter(filter);
    renderFormats(filter);
    renderPresence(filter);
    m_statistics->setCounts(*m_viewModel.dbTotalCount, *m_viewModel.dbEnabledCount,
                            *m_viewModel.dbDisabledCount);
    const std::size_t entries = m_services.activityLog.entries->size();
    m_recentSection->setCount(entries > 0 ? QString::number(entries) : QString());
    m_scanning->setVisible(*m_viewModel.isLoading);
    m_menuBarSection->refresh();
}

void SidebarView::renderFormats(const PluginFilter& filter)
{
    if (std::exchange(m_areCountsDue, false)) {
        const auto counts = m_viewModel.pluginCounts();
        for (std::size_t i = 0; i < counts.size(); ++i)
            m_formats[i].second->setCount(QString::number(counts[i].second));
    }
    for (const auto& [format, row] : m_formats) {
        const bool isSelected = filter.formats.contains(format);
        row->setSelected(isSelected);
        row->setIconKey(isSelected ? u"checkmark.circle.fill"_s : formatIcon(format));
    }
}

void SidebarView::renderPresence(const PluginFilter& filter)
{
    const bool hasProfile = m_viewModel.activeProfile->has_value();
    const bool hasSelection = !m_viewModel.persistedSelections.isEmpty();
    const bool hasManufacturers = !m_viewModel.allManufacturers->isEmpty();
    QWidget* formats = m_formatsSection->header();
    QWidget* manufacturers = hasManufacturers ? m_manufacturersSection->header() : formats;
    present(m_filterBar, filter.hasSidebarFilters(), m_allPlugins);
    // With a selection, the bulk pane offers the actions.
    present(m_actionsSection, *m_viewModel.showAllPlugins && !hasProfile && !hasSelection, formats);
    present(m_clearManufacturers, !filter.manufacturers.isEmpty(), manufacturers);
    present(m_manufacturersSection, hasManufacturers, formats);
    present(m_invert, !filter.manufacturers.isEmpty() && hasSelection, manufacturers);
    m_divider->setVisible(!hasProfile);
}

void SidebarView::showBusyState()
{
    if (!*m_viewModel.isLoading || !isVisible())
        return;
    m_updates->flush();
    layout()->activate();
    window()->repaint();
}

void SidebarView::expandActions()
{
    m_updates->flush(); // create the section before opening it
    m_actionsSection->setOpen(true, true);
    m_statisticsSection->setOpen(false, true);
    m_recentSection->setOpen(false, true);
    m_scrollDelay.start();
}

void SidebarView::closeSections()
{
    for (SidebarSection* section : {m_profilesSection, m_formatsSection, m_manufacturersSection,
                                    m_actionsSection, m_statisticsSection, m_recentSection})
        section->setOpen(false, false);
}

void SidebarView::clearActiveProfile()
{
    m_viewModel.activeProfile.mutate([](std::optional<PluginProfile>& profile) { profile.reset(); });
}

// On purpose: the assigned filters reload as well. Each reload notifies the helper agent.

void SidebarView::clickAllPlugins()
{
    clearActiveProfile();
    if (m_viewModel.selectedFormats->isEmpty() && *m_viewModel.showAllPlugins) {
        m_viewModel.showAllPlugins = false;
        return;
    }
    m_viewModel.selectedFormats.clear();
    m_viewModel.refreshFromDatabase();
    m_viewModel.showAllPlugins = true;
    expandActions();
}

void SidebarView::clickFormat(PluginFormat format)
{
    clearActiveProfile();
    const bool joins = toggle(m_viewModel.selectedFormats, format);
    m_viewModel.refreshFromDatabase();
    if (joins) {
        m_viewModel.showAllPlugins = true;
        expandActions();
    } else if (m_viewModel.selectedFormats->isEmpty()) {
        m_viewModel.showAllPlugins = !m_viewModel.selectedManufacturers->isEmpty();
    }
}

void SidebarView::clickManufacturer(const QString& name)
{
    clearActiveProfile();
    const bool joins = toggle(m_viewModel.selectedManufacturers, name);
    m_viewModel.refreshFromDatabase();
    if (joins) {
        m_viewModel.showAllPlugins = true;
        expandActions();
    } else if (m_viewModel.selectedManufacturers->isEmpty()) {
        m_viewModel.showAllPlugins = !m_viewModel.selectedFormats->isEmpty();
    }
}

void SidebarView::clearFilters()
{
    clearActiveProfile();
    m_viewModel.selectedFormats.clear();
    m_viewModel.refreshFromDatabase();
    m_viewModel.selectedManufacturers.clear();
    m_viewModel.refreshFromDatabase();
    m_viewModel.showAllPlugins = true;
}

void SidebarView::clearManufacturers()
{
    clearActiveProfile();
    m_viewModel.selectedManufacturers.clear();
    m_viewModel.refreshFromDatabase();
    m_viewModel.showAllPlugins = false;
}

void SidebarView::confirm(BulkAction action)
{
    // Accessibility actions bypass InputGate.
    if (*m_viewModel.isRunningScript || m_warning)
        return;
    const PluginFilter filter = m_viewModel.currentFilter();
    Question question;
    question.objectName = u"sidebarWarning"_s;
    question.action = enableDisableButtonLabel(action, filter);
    question.title = question.action + u" Plugins?"_s;
    question.message = sidebarWarningMessage(action, m_viewModel.allFilteredPlugins(), filter);
    question.isDestructive = true;
    m_warning = ask(this, question, [this, action] { perform(action); });
}

void SidebarView::perform(BulkAction action)
{
    if (*m_viewModel.isRunningScript)
        return;
    if (action == BulkAction::delete_) {
        AudioPlugins all = m_viewModel.allFilteredPlugins();
        if (!all.empty())
            detach(m_viewModel.deletePlugins(std::move(all)));
        return;
    }
    const QSet<PluginFormat>& formats = *m_viewModel.selectedFormats;
    const auto only = formats.size() == 1 ? std::optional(*formats.begin()) : std::nullopt;
    m_actOnAllForFormat(action, only);
}

} // namespace orvanlite
