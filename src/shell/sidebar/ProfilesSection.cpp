#include "shell/sidebar/ProfilesSection.h"

#include "operations/Detach.h"
#include "operations/PluginManagerViewModel.h"
#include "platform/Platform.h"
#include "profiles/ProfileDocument.h"
#include "profiles/ProfileManager.h"
#include "records/SavePanel.h"
#include "shell/sidebar/ProfileRow.h"
#include "shell/sidebar/SidebarItemButton.h"
#include "shell/toolkit/AppTheme.h"
#include "shell/toolkit/Dialogs.h"
#include "shell/toolkit/FileOpenPanel.h"
#include "shell/toolkit/RelativeFont.h"
#include "shell/toolkit/TintedLabel.h"
#include "shell/toolkit/ViewUpdater.h"

#include <QEvent>
#include <QVBoxLayout>

#include <algorithm>

namespace orvanlite {

using namespace Qt::StringLiterals;

namespace {

constexpr int kIconSlot = 20;
constexpr int kRowSpacing = 2;

} // namespace

ProfilesSection::ProfilesSection(const Services& services, QWidget* parent)
    : QWidget(parent)
    , m_services(services)
    , m_viewModel(services.plugins)
    , m_profileManager(services.profiles)
    , m_rowColumn(new QVBoxLayout)
    , m_none(new TintedLabel(u"No saved profiles"_s, &AppTheme::secondary, this))
    , m_save(makeButton(u"Save Current State"_s, u"plus.circle"_s, u"saveProfileButton"_s))
    , m_fromSelection(makeButton(u"Create from Selection"_s, u"checklist"_s, u"profileFromSelectionButton"_s))
    , m_import(makeButton(u"Import Profile"_s, u"square.and.arrow.down"_s, u"importProfileButton"_s))
    , m_updates(new ViewUpdater([this] { render(); }, this))
{
    setObjectName(u"profilesView"_s);
    m_none->setObjectName(u"noProfilesLabel"_s);
    setRelativeFont(m_none, 0.9);
    m_none->setContentsMargins(AppTheme::kSpace3, AppTheme::kSpace1, AppTheme::kSpace3, AppTheme::kSpace1);
    connect(m_save, &QAbstractButton::clicked, this, &ProfilesSection::saveCurrentState);
    connect(m_fromSelection, &QAbstractButton::clicked, this, &ProfilesSection::createFromSelection);
    connect(m_import, &QAbstractButton::clicked, this, &ProfilesSection::importDocument);

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(kRowSpacing);
    m_rowColumn->setSpacing(kRowSpacing);
    column->addLayout(m_rowColumn);
    for (QWidget* widget : {static_cast<QWidget*>(m_none), static_cast<QWidget*>(m_save),
                            static_cast<QWidget*>(m_fromSelection), static_cast<QWidget*>(m_import)})
        column->addWidget(widget);
    // The selection is not observable: watch the visible selection, the rows and the bulk pane instead.
    m_updates->watch(m_profileManager.profiles, m_viewModel.plugins, m_viewModel.activeProfile,
                     m_viewModel.selectedPlugins, m_viewModel.consolidatedBulkPlugins,
                     m_viewModel.displayedPlugins);
    render();
}

SidebarItemButton* ProfilesSection::makeButton(const QString& label, const QString& iconKey,
                                               const QString& objectName)
{
    auto* button = new SidebarItemButton(label, iconKey, kIconSlot, SidebarItemButton::Hover::ground, this);
    button->setObjectName(objectName);
    return button;
}

bool ProfilesSection::isBusy() const { return *m_viewModel.isRunningScript; }

ProfileRow* ProfilesSection::addRow()
{
    auto* row = new ProfileRow(m_createdRows++, this);
    // New widgets are last in tab order; rows come before the buttons.
    QWidget* last = m_rows.empty() ? static_cast<QWidget*>(m_save)
                                   : m_rows.back()->findChildren<QAbstractButton*>().back();
    setTabOrder(last, row);
    last = row;
    for (auto* button : row->findChildren<QAbstractButton*>()) {
        setTabOrder(last, button);
        last = button;
    }
    setTabOrder(last, m_save);
    connect(row, &QAbstractButton::clicked, this, [this, row] {
        if (!isBusy())
            m_viewModel.previewProfile(row->profile());
    });
    connect(row, &ProfileRow::applyClicked, this, [this, row] { confirmApply(row->profile()); });
    connect(row, &ProfileRow::updateClicked, this, [this, row] { confirmUpdate(row->profile()); });
    connect(row, &ProfileRow::exportClicked, this, [this, row] { exportDocument(row->profile()); });
    connect(row, &ProfileRow::deleteClicked, this, [this, row] { confirmDelete(row->profile()); });
    m_rowColumn->addWidget(row);
    m_rows.push_back(row);
    return row;
}

void ProfilesSection::render()
{
    renderRows();
    const auto selected = m_viewModel.persistedSelections.size();
    m_none->setVisible(m_rows.empty());
    if (selected == 0 && m_fromSelection->hasFocus())
        m_save->setFocus(); // before the button is hidden
    m_fromSelection->setVisible(selected > 0);
    m_fromSelection->setCount(QString::number(selected));
}

void ProfilesSection::renderRows()
{
    const PluginProfiles& profiles = *m_profileManager.profiles;
    // Profiles are never reordered: they are removed anywhere and added at the end.
    for (std::size_t i = 0; i < m_rows.size();) {
        if (i < profiles.size() && m_rows[i]->profile().id == profiles[i].id) {
            ++i;
            continue;
        }
        ProfileRow* gone = m_rows[i];
        m_rows.erase(m_rows.begin() + static_cast<std::ptrdiff_t>(i));
        // Not the application's focus widget: while a dialog closes, this window is not active.
        const QWidget* focus = window()->focusWidget();
        if (focus && (focus == gone || gone->isAncestorOf(focus))) {
            QWidget* heir =
                m_rows.empty() ? static_cast<QWidget*>(m_save) : m_rows[std::min(i, m_rows.size() - 1)];
            heir->setFocus(Qt::OtherFocusReason);
        }
        gone->hide();
        gone->deleteLater();
    }
    const auto& active = *m_viewModel.activeProfile;
    for (std::size_t i = 0; i < profiles.size(); ++i) {
        ProfileRow* row = i < m_rows.size() ? m_rows[i] : addRow();
        // Skipped in a closed section: the first comparison with a large library is slow.
        const QString status =
            isVisible() ? profileStatusText(m_viewModel.profileChangeCount(profiles[i])) : row->status();
        row->showProfile(profiles[i], status, active && active->id == profiles[i].id);
    }
}

void ProfilesSection::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        m_updates->schedule(); // the rows' text colours depend on the palette
}

void ProfilesSection::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    renderRows();
}

void ProfilesSection::saveCurrentState()
{
    if (isBusy())
        return;
    const TextQuestion question{u"saveProfileDialog"_s, u"Save Profile"_s,
                                u"Save the current enabled/disabled state of all plugins as a profile."_s,
                                u"Profile name"_s, u"Save"_s};
    askForText(this, question,
               [this](const QString& name) { return m_viewModel.saveProfile(m_profileManager, name); });
}

void ProfilesSection::createFromSelection()
{
    if (isBusy())
        return;
    const TextQuestion question{
        u"profileFromSelectionDialog"_s, u"Create Profile from Selection"_s,
        u"The %1 selected plugins will be marked as enabled. All other plugins will be disabled in this profile."_s
            .arg(m_viewModel.persistedSelections.size()),
        u"Profile name"_s, u"Create"_s};
    askForText(this, question, [this](const QString& name) {
        return m_viewModel.saveProfileFromSelection(m_profileManager, name);
    });
}

void ProfilesSection::importDocument()
{
    if (isBusy())
        return;
    m_services.openPanel.ask(
        {u"Import Profile"_s, u"Profile"_s, QStringView(ProfileDocument::kExtension).toString()},
        [this](const QString& path) { importProfile(m_profileManager, path); });
}

void ProfilesSection::exportDocument(const PluginProfile& profile) const
{
    if (isBusy())
        return;
    const ProfileDocument document{profile};
    m_services.savePanel.ask(
        {u"Export profile"_s, document.defaultFileName(), u"Profile"_s,
         QStringView(ProfileDocument::kExtension).toString()},
        [this, document](const QString& path) { exportProfile(m_services.platform.files, document, path); });
}

void ProfilesSection::confirmApply(const PluginProfile& profile)
{
    if (isBusy())
        return;
    const Question question{u"applyProfileDialog"_s, u"Apply Profile?"_s,
                            applyQuestion(profile.name, m_viewModel.profileChanges(profile)), u"Apply"_s};
    ask(this, question, [this, profile] {
        if (!isBusy())
            detach(m_viewModel.applyProfile(profile));
    });
}

void ProfilesSection::confirmUpdate(const PluginProfile& profile)
{
    if (isBusy())
        return;
    const Question question{u"updateProfileDialog"_s, u"Update Profile?"_s,
                            u"Overwrite \"%1\" with the current plugin state?"_s.arg(profile.name),
                            u"Update"_s};
    ask(this, question, [this, profile] { m_viewModel.updateProfile(m_profileManager, profile); });
}

void ProfilesSection::confirmDelete(const PluginProfile& profile)
{
    if (isBusy())
        return;
    const Question question{u"deleteProfileDialog"_s, u"Delete Profile?"_s,
                            u"Are you sure you want to delete \"%1\"?"_s.arg(profile.name), u"Delete"_s,
                            true};
    ask(this, question, [this, profile] { m_viewModel.deleteProfile(m_profileManager, profile); });
}

} // namespace orvanlite
