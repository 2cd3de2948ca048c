#include "cli/GuiCommand.h"

namespace orvanlite {

using namespace Qt::StringLiterals;

void GuiCommand::run() const
{
    m_print(u"🚀 Launching Orvanlite GUI..."_s);
    m_start();
}

} // namespace orvanlite
