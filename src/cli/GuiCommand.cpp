#include "cli/GuiCommand.h"

namespace orvanlite {

using namespace Qt::StringLiterals;

int GuiCommand::run() const
{
    m_print(u"🚀 Launching Orvanlite GUI..."_s);
    return m_start();
}

} // namespace orvanlite
