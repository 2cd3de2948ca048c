#include "helper/HelperApp.h"
#include "platform/SystemLayout.h"

int main(int argc, char** argv)
{
    return orvanlite::runHelper(argc, argv, orvanlite::platform::SystemLayout::ofThisMachine());
}
