// SPDX-License-Identifier: MIT
#include "kits/interface/platform/x11/DesktopPlace.h"

#include "kits/interface/platform/x11/XWindows.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWindow>

#include <algorithm>
#include <vector>

namespace kits::DesktopPlace {

namespace {

using namespace XWindows;
using DesktopLayer::Ground;

/// Maximum depth of windows within windows: a frame, its content, and the content's children.
constexpr int kDeepest = 16;

/// A place of the screen and that screen, in the server's pixels: the toolkit scales within screens and leaves their
/// corners where they are.
struct Place {
    explicit Place(BPoint where)
        : point(static_cast<int>(where.x), static_cast<int>(where.y))
    {
        const QScreen* const at = QGuiApplication::screenAt(point);
        if (at == nullptr)
            return;
        const QRect frame = at->geometry();
        screen = QRect(frame.topLeft(), (QSizeF(frame.size()) * at->devicePixelRatio()).toSize());
        point = frame.topLeft() + (point - frame.topLeft()) * at->devicePixelRatio();
    }

    QPoint point;
    QRect screen;
};

/// A child of the root window.
struct TopWindow {
    xcb_window_t id = XCB_NONE;
    QRect frame;
    bool isManaged = false;
};

bool IsInputOnly(xcb_connection_t* server, xcb_window_t window)
{
    const auto answer = Await(server, xcb_get_window_attributes_reply, xcb_get_window_attributes(server, window));
    return answer != nullptr && answer->_class == XCB_WINDOW_CLASS_INPUT_ONLY;
}

/// The picture of a drag, and other windows of ours that let the pointer through.
bool IsTransparentForInput(xcb_window_t id)
{
    const QWindowList windows = QGuiApplication::topLevelWindows();
    return std::any_of(windows.begin(), windows.end(), [id](const QWindow* window) {
        return window->handle() != nullptr && window->flags().testFlag(Qt::WindowTransparentForInput) &&
               window->winId() == id;
    });
}

/// Returns the visible children of the root window at a place, the topmost first.
std::vector<TopWindow> TopWindowsAt(xcb_connection_t* server, QPoint place)
{
    const auto tree = Await(server, xcb_query_tree_reply, xcb_query_tree(server, Root(server)));
    if (tree == nullptr)
        return {};
    const xcb_window_t* const ids = xcb_query_tree_children(tree.get());
    const auto count = static_cast<size_t>(xcb_query_tree_children_length(tree.get()));
    std::vector<xcb_get_window_attributes_cookie_t> attributes;
    std::vector<xcb_get_geometry_cookie_t> geometries;
    for (size_t i = 0; i < count; i++) {
        attributes.push_back(xcb_get_window_attributes(server, ids[i]));
        geometries.push_back(xcb_get_geometry(server, ids[i]));
    }
    std::vector<TopWindow> windows;
    for (size_t i = 0; i < count; i++) {
        const auto kind = Await(server, xcb_get_window_attributes_reply, attributes[i]);
        const auto geometry = Await(server, xcb_get_geometry_reply, geometries[i]);
        if (kind == nullptr || geometry == nullptr || kind->map_state != XCB_MAP_STATE_VIEWABLE ||
            kind->_class == XCB_WINDOW_CLASS_INPUT_ONLY)
            continue;
        const QRect frame(geometry->x, geometry->y, geometry->width, geometry->height);
        if (frame.contains(place) && !IsTransparentForInput(ids[i]))
            windows.push_back({ids[i], frame, kind->override_redirect == 0});
    }
    std::reverse(windows.begin(), windows.end());
    return windows;
}

/// Returns the topmost visible window at a place; NONE for the root window.
xcb_window_t TopAt(xcb_connection_t* server, QPoint place)
{
    const xcb_window_t top = ChildAt(server, Root(server), place);
    // A compositor may make the server forget that the picture of a drag lets the pointer through.
    if (top == XCB_NONE || (!IsInputOnly(server, top) && !IsTransparentForInput(top)))
        return top;
    const std::vector<TopWindow> windows = TopWindowsAt(server, place);
    return windows.empty() ? static_cast<xcb_window_t>(XCB_NONE) : windows.front().id;
}

/// The window itself may lie in a frame of the window manager's.
std::vector<xcb_window_t> WithChildrenAt(xcb_connection_t* server, xcb_window_t top, QPoint place)
{
    std::vector<xcb_window_t> windows;
    for (xcb_window_t window = top; windows.size() < kDeepest && window != XCB_NONE;
         window = ChildAt(server, window, place))
        windows.push_back(window);
    return windows;
}

} // namespace

Ground GroundOf(xcb_connection_t* server, xcb_window_t window)
{
    const std::vector<xcb_atom_t> atoms = Atoms(server, {"_NET_WM_WINDOW_TYPE", "_NET_WM_WINDOW_TYPE_DESKTOP", kMark});
    if (!Property(server, window, atoms[2]).empty())
        return Ground::kDesktopWindow;
    return Holds(Property(server, window, atoms[0]), atoms[1]) ? Ground::kDesktop : Ground::kProgram;
}

Ground GroundAt(xcb_connection_t* server, BPoint where)
{
    const Place place(where);
    const xcb_window_t top = TopAt(server, place.point);
    if (top == XCB_NONE)
        return Ground::kDesktop;
    const std::vector<xcb_atom_t> atoms = Atoms(
        server, {"_NET_WM_STATE", "_NET_WM_STATE_BELOW", "_NET_WM_STATE_SKIP_TASKBAR", "_NET_WM_STATE_FULLSCREEN"});
    bool isInTaskBar = true;
    for (const xcb_window_t window : WithChildrenAt(server, top, place.point)) {
        const Ground ground = GroundOf(server, window);
        if (ground != Ground::kProgram)
            return ground;
        const std::vector<uint32_t> states = Property(server, window, atoms[0]);
        if ((Holds(states, atoms[1]) || Holds(states, atoms[2])) && !Holds(states, atoms[3]))
            isInTaskBar = false;
    }
    const std::vector<TopWindow> windows = TopWindowsAt(server, place.point);
    const bool isLowest = !windows.empty() && windows.back().id == top;
    return isLowest && windows.back().frame.contains(place.screen) && (!windows.back().isManaged || !isInTaskBar)
               ? Ground::kDesktop
               : Ground::kProgram;
}

} // namespace kits::DesktopPlace
