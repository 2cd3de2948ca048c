#pragma once

#include "model/Observable.h"
#include "model/PluginFormat.h"
#include "shell/toolkit/Sheet.h"

#include <array>

class QLabel;
class QVBoxLayout;

namespace orvanlite {

class ChipButton;
class PressButton;
class ProfileManager;
class TickList;
class ViewUpdater;
struct NewPlugins;

/// Lets the user choose which new plugins to add to which profiles. Decides nothing itself: closed by Escape,
/// all plugins stay pending.
class NewPluginsSheet final : public Sheet {
    Q_OBJECT

public:
    NewPluginsSheet(Observable<NewPlugins>& state, const ProfileManager& profiles, QWidget* parent);

    /// Opens the sheet at the size of its content.
    void present();

Q_SIGNALS:
    void addRequested();
    void skipRequested();

protected:
    [[nodiscard]] QAbstractButton* mainButton() const override;

private:
    [[nodiscard]] QWidget* makeTitle();
    [[nodiscard]] QWidget* makeChips();
    [[nodiscard]] QWidget* makeProfilesHeading();
    [[nodiscard]] QWidget* makeNote();
    [[nodiscard]] QWidget* makeButtons();
    [[nodiscard]] TickList* makeList(const QString& objectName, const QString& name, int largestHeight);
    void connectControls();
    void fit();
    void render();
    void renderChips();

    Observable<NewPlugins>& m_state;
    const ProfileManager& m_profiles;
    QLabel* m_explanation;
    /// One per format present, in order; the rest are hidden.
    std::array<ChipButton*, allCases<PluginFormat>.size()> m_chips{};
    TickList* m_pluginList;
    QLabel* m_selected;
    PressButton* m_allProfiles = nullptr;
    TickList* m_profileList;
    PressButton* m_skip = nullptr;
    PressButton* m_add = nullptr;
    ViewUpdater* m_updates;
};

} // namespace orvanlite
