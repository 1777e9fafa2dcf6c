#include "VantroqueApp/Views/Style/Compositor.h"

#include <QGuiApplication>

#include <cstdlib>
#include <memory>
#include <string_view>
#include <xcb/xcb.h>

namespace vantroque::Compositor {

using namespace Qt::StringLiterals;

namespace {

template<typename Reply>
struct Free {
    void operator()(Reply* reply) const { std::free(reply); } // NOLINT: as the library asks for
};

template<typename Reply>
std::unique_ptr<Reply, Free<Reply>> owned(Reply* reply)
{
    return std::unique_ptr<Reply, Free<Reply>>(reply);
}

} // namespace

// A compositor of X owns a selection that is named for this (Extended Window Manager Hints). Those
// of Wayland always blend.
bool isRunning()
{
    const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    xcb_connection_t* display = x11 != nullptr ? x11->connection() : nullptr;
    if (display == nullptr)
        return QGuiApplication::platformName().startsWith(u"wayland"_s);
    constexpr std::string_view name = "_NET_WM_CM_S0";
    const auto atom = owned(xcb_intern_atom_reply(
        display, xcb_intern_atom(display, 1, name.size(), name.data()), nullptr));
    if (!atom || atom->atom == XCB_ATOM_NONE)
        return false;
    const auto owner = owned(xcb_get_selection_owner_reply(
        display, xcb_get_selection_owner(display, atom->atom), nullptr));
    return owner && owner->owner != XCB_WINDOW_NONE;
}

} // namespace vantroque::Compositor
