#pragma once

#include "profiles/PluginProfile.h"
#include "shell/toolkit/Services.h"

#include <QWidget>

#include <vector>

class QLabel;
class QVBoxLayout;

namespace orvanlite {

class ProfileRow;
class SidebarItemButton;
class ViewUpdater;

/// The body of the sidebar section for profiles: the saved ones, and buttons to create or import one.
class ProfilesSection final : public QWidget {
    Q_OBJECT

public:
    ProfilesSection(const Services& services, QWidget* parent);

protected:
    void changeEvent(QEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    ProfileRow* addRow();
    [[nodiscard]] SidebarItemButton* makeButton(const QString& label, const QString& iconKey,
                                                const QString& objectName);
    void render();
    void renderRows();
    void saveCurrentState();
    void createFromSelection();
    void importDocument();
    void exportDocument(const PluginProfile& profile) const;
    void confirmApply(const PluginProfile& profile);
    void confirmUpdate(const PluginProfile& profile);
    void confirmDelete(const PluginProfile& profile);
    /// Needed because accessibility actions bypass InputGate.
    [[nodiscard]] bool isBusy() const;

    const Services m_services;
    PluginManagerViewModel& m_viewModel;
    ProfileManager& m_profileManager;
    QVBoxLayout* m_rowColumn;
    std::vector<ProfileRow*> m_rows; ///< one per profile, in the same order
    int m_createdRows = 0;
    QLabel* m_none;
    SidebarItemButton* m_save;
    SidebarItemButton* m_fromSelection;
    SidebarItemButton* m_import;
    ViewUpdater* m_updates;
};

} // namespace orvanlite
