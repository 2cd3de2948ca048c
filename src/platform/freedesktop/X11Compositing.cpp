#include "platform/Compositing.h"

#include <QLibrary>

namespace orvanlite::platform {

using namespace Qt::StringLiterals;

/// Source: Extended Window Manager Hints, _NET_WM_CM_Sn. The X library is loaded at run time, where the
/// windows have loaded it already: the text tool runs without it.
bool blendsWindowsOnX11()
{
    QLibrary x11(u"X11"_s, 6);
    const auto open = reinterpret_cast<void* (*)(const char*)>(x11.resolve("XOpenDisplay"));
    const auto close = reinterpret_cast<int (*)(void*)>(x11.resolve("XCloseDisplay"));
    const auto defaultScreen = reinterpret_cast<int (*)(void*)>(x11.resolve("XDefaultScreen"));
    const auto atom =
        reinterpret_cast<unsigned long (*)(void*, const char*, int)>(x11.resolve("XInternAtom"));
    const auto owner =
        reinterpret_cast<unsigned long (*)(void*, unsigned long)>(x11.resolve("XGetSelectionOwner"));
    if (!open || !close || !defaultScreen || !atom || !owner)
        return false;
    void* display = open(nullptr);
    if (!display)
        return false;
    const QByteArray name = "_NET_WM_CM_S" + QByteArray::number(defaultScreen(display));
    const bool isOwned = owner(display, atom(display, name.constData(), 0)) != 0;
    close(display);
    return isOwned;
}

} // namespace orvanlite::platform
