#pragma once

#include <QStringView>

namespace orvanlite {

/// Brings the manufacturer's control panel to the front and opens its information panel.
inline constexpr QStringView kOpenInformationScript =
    uR"(tell application "UAD Meter & Control Panel" to activate
delay 1.5
tell application "System Events"
    tell process "UAD Meter & Control Panel"
        keystroke "i" using command down
    end tell
end tell
delay 1.5)";

/// Clicks the button that saves the profile by position: it has no name that a script could use.
/// On purpose: clickY starts from item 1, the window's x position. The script must be sent unchanged.
inline constexpr QStringView kSaveProfileScript = uR"(tell application "System Events"
    tell process "UAD Meter & Control Panel"
        set frontWindow to window 1
        set winPos to position of frontWindow
        set winSize to size of frontWindow
        
        -- The "Save Detailed System Profile" button is typically in the
        -- bottom-left area of the System Info panel
        set clickX to (item 1 of winPos) + 145
        set clickY to (item 1 of winPos) + (item 2 of winSize) - 18
        
        click at {clickX, clickY}
    end tell
end tell
delay 0.5)";

} // namespace orvanlite
