// SPDX-License-Identifier: MIT
#include "kits/interface/platform/x11/OwnDesktop.h"

#include "kits/interface/platform/x11/XWindows.h"

#include <vector>

namespace kits {

using namespace XWindows;

xcb_window_t MakeOwnDesktop(xcb_connection_t* server)
{
    const xcb_window_t window = xcb_generate_id(server);
    xcb_create_window(server, XCB_COPY_FROM_PARENT, window, Root(server), -1, -1, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
    const std::vector<xcb_atom_t> atoms = Atoms(server, {"_NET_WM_WINDOW_TYPE", "_NET_WM_WINDOW_TYPE_DESKTOP"});
    SetProperty(server, window, atoms[0], XCB_ATOM_ATOM, {atoms[1]});
    // A window manager moves a window unless its place is marked as the user's.
    constexpr uint32_t kUsersPlace = 1;
    std::vector<uint32_t> hints(18);
    hints[0] = kUsersPlace;
    SetProperty(server, window, XCB_ATOM_WM_NORMAL_HINTS, XCB_ATOM_WM_SIZE_HINTS, hints);
    constexpr uint32_t kTellsOfInput = 1;
    constexpr uint32_t kTakesNone = 0;
    SetProperty(server, window, XCB_ATOM_WM_HINTS, XCB_ATOM_WM_HINTS, {kTellsOfInput, kTakesNone, 0, 0, 0, 0, 0, 0, 0});
    xcb_map_window(server, window);
    return window;
}

} // namespace kits
