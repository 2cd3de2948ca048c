#pragma once

#include "model/Observable.h"
#include "profiles/NewPlugins.h"

#include <QObject>

namespace orvanlite {

class Banner;
class NewPluginsSheet;
class PluginManagerViewModel;
class ProfileManager;

/// Asks which profiles to add newly installed plugins to: a banner, and a sheet opened from it. The decision
/// is stored in the profiles' file; without one, the banner appears again at the next start.
class NewPluginsWorkflow final : public QObject {
    Q_OBJECT

public:
    NewPluginsWorkflow(const PluginManagerViewModel& plugins, ProfileManager& profiles, QWidget* parent);

    /// Belongs at the top of the detail column.
    [[nodiscard]] Banner* banner() const { return m_banner; }
    /// Call it only after the scan at start-up.
    void scanEnded();

private:
    void showSheet();
    void addToProfiles();
    void dismiss();
    void end();

    const PluginManagerViewModel& m_plugins;
    ProfileManager& m_profiles;
    Observable<NewPlugins> m_state;
    Banner* m_banner;
    NewPluginsSheet* m_sheet;
};

} // namespace orvanlite
