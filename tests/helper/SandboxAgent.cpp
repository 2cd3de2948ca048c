#include "helper/HelperApp.h"
#include "platform/SystemLayout.h"

int main(int argc, char** argv)
{
    const QString root = qEnvironmentVariable("ORV_SANDBOX_ROOT");
    if (root.isEmpty())
        qFatal("no sandbox is named");
    return orvanlite::runHelper(argc, argv, orvanlite::platform::SystemLayout::sandbox(root));
}
