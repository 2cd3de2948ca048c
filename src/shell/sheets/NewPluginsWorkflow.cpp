#include "shell/sheets/NewPluginsWorkflow.h"

#include "operations/PluginManagerViewModel.h"
#include "profiles/ProfileManager.h"
#include "shell/sheets/NewPluginsSheet.h"
#include "shell/toolkit/AppTheme.h"
#include "shell/toolkit/Banner.h"

#include <utility>

namespace orvanlite {

using namespace Qt::StringLiterals;

NewPluginsWorkflow::NewPluginsWorkflow(const PluginManagerViewModel& plugins, ProfileManager& profiles,
                                       QWidget* parent)
    : QObject(parent)
    , m_plugins(plugins)
    , m_profiles(profiles)
{
    const Banner::Look look{
        u"newPluginsBanner"_s, u"sparkles"_s, u"Add to Profiles"_s,
        u"Dismiss — these plugins won't be added to profiles. Applying a profile may "
        "disable them."_s,
        // The plain orange is too light for white text.
        [](const QPalette& colours) { return AppTheme::groundForWhite(AppTheme::orange(colours)); }};
    m_banner = new Banner(look, parent);
    m_sheet = new NewPluginsSheet(m_state, profiles, parent);
    connect(m_banner, &Banner::actionClicked, this, &NewPluginsWorkflow::showSheet);
    connect(m_banner, &Banner::dismissClicked, this, &NewPluginsWorkflow::dismiss);
    connect(m_sheet, &NewPluginsSheet::addRequested, this, &NewPluginsWorkflow::addToProfiles);
    connect(m_sheet, &NewPluginsSheet::skipRequested, this, &NewPluginsWorkflow::dismiss);
}

void NewPluginsWorkflow::scanEnded()
{
    std::optional<NewPlugins> found =
        collectNewPlugins(m_profiles, *m_plugins.newlyDetectedPlugins, *m_plugins.plugins);
    if (!found)
        return;
    m_state = std::move(*found);
    m_banner->setTexts(m_state->bannerText(), {});
    m_banner->setShown(true);
}

void NewPluginsWorkflow::showSheet()
{
    m_state.mutate([this](NewPlugins& state) {
        state.updateStates(*m_plugins.plugins);
        state.selectedProfilesForNewPlugins = m_profiles.profileIds();
    });
    m_sheet->present();
}

void NewPluginsWorkflow::addToProfiles()
{
    m_state.mutate([this](NewPlugins& state) { state.updateStates(*m_plugins.plugins); });
    m_state->addToProfiles(m_profiles);
    end();
}

void NewPluginsWorkflow::dismiss()
{
    m_state->dismiss(m_profiles);
    end();
}

void NewPluginsWorkflow::end()
{
    m_sheet->close();
    m_banner->setShown(false);
}

} // namespace orvanlite
