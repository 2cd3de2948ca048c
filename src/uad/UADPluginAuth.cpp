#include "uad/UADPluginAuth.h"

namespace orvanlite {

using namespace Qt::StringLiterals;

QString UADPluginAuth::UADAuthStatus::displayString() const
{
    switch (state) {
    case UADAuthState::demo:
        return u"Demo (%1 days left)"_s.arg(daysLeft);
    case UADAuthState::authorized:
        return u"Authorized"_s;
    case UADAuthState::expired:
        return u"Demo Expired"_s;
    case UADAuthState::demoNotStarted:
        return u"Demo Not Started"_s;
    }
    return {};
}

} // namespace orvanlite
