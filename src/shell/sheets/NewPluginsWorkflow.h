#pragma once

#include "model/Observable.h"
#include "profiles/NewPlugins.h"

#include <QObject>

namespace orvanlite {

class Banner;
class NewPluginsSheet;
class PluginManagerViewModel;
class ProfileManager;

/// Asks into which profiles newly installed plugins shall come: a banner, and a sheet opened from it. Both end with a
/// decision that lies in the profiles' file; without one the banner is there again at the next start.
class NewPluginsWorkflow final : public QObject {
    Q_OBJECT

public:
    NewPluginsWorkflow(const PluginManagerViewModel& plugins, ProfileManager& profiles, QWidget* parent);

    /// For the top of the detail column.
    [[nodiscard]] Banner* banner() const { return m_banner; }
    /// After the scan at start-up, and after no other.
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
