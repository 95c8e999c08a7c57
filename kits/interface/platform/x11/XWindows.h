// SPDX-License-Identifier: MIT
#pragma once

#include <xcb/xcb.h>

#include <cstdint>
#include <cstdlib>
#include <initializer_list>
#include <memory>
#include <string>
#include <vector>

class QPoint;

namespace kits {

/// Returns the toolkit's connection to the X server; null if the display is another one. Main thread.
xcb_connection_t* XServer();

/// Requests to an X server, and what it knows of windows. Every function but SetProperty waits for the server's answer;
/// a window that is gone has no properties and no children. On the main thread with the toolkit's connection; on
/// another thread with a connection that nobody else uses.
namespace XWindows {

struct Free {
    void operator()(void* reply) const { std::free(reply); }
};
template <class Reply> using Answer = std::unique_ptr<Reply, Free>;

/// Waits for the answer to a request; null for an error.
/// @param reply  the function of the request: xcb_get_geometry_reply for xcb_get_geometry
template <class Reply, class Cookie>
Answer<Reply> Await(xcb_connection_t* server, Reply* (*reply)(xcb_connection_t*, Cookie, xcb_generic_error_t**),
                    Cookie asked)
{
    return Answer<Reply>(reply(server, asked, nullptr));
}

struct Disconnect {
    void operator()(xcb_connection_t* connection) const { xcb_disconnect(connection); }
};
using Connection = std::unique_ptr<xcb_connection_t, Disconnect>;

/// Connects to a server; null if that fails.
/// @param display  null: the one at $DISPLAY
Connection Connect(const char* display = nullptr);

/// The bit of an event's type that marks an event sent by a client.
inline constexpr uint8_t kSentByClient = 0x80;

/// The root window of the first screen.
xcb_window_t Root(xcb_connection_t* server);

/// Returns the atoms of these names, in the same order.
std::vector<xcb_atom_t> Atoms(xcb_connection_t* server, std::initializer_list<const char*> names);
/// The same in two steps: AskAtoms does not wait.
std::vector<xcb_intern_atom_cookie_t> AskAtoms(xcb_connection_t* server, std::initializer_list<const char*> names);
std::vector<xcb_atom_t> TakeAtoms(xcb_connection_t* server, const std::vector<xcb_intern_atom_cookie_t>& asked);

/// The window that owns a selection, NONE if none does.
xcb_window_t Owner(xcb_connection_t* server, xcb_atom_t selection);

void SetProperty(xcb_connection_t* server, xcb_window_t window, xcb_atom_t property, xcb_atom_t type,
                 const std::vector<uint32_t>& values);
/// The values of a property of 32-bit words, at most 4096; empty if there is none of this type.
std::vector<uint32_t> Property(xcb_connection_t* server, xcb_window_t window, xcb_atom_t property,
                               xcb_atom_t type = XCB_GET_PROPERTY_TYPE_ANY);
/// Does the same for many windows, in one round trip to the server.
std::vector<std::vector<uint32_t>> Properties(xcb_connection_t* server, const std::vector<xcb_window_t>& windows,
                                              xcb_atom_t property);
/// Returns a property of bytes, at most 256; "" if there is none.
std::string Text(xcb_connection_t* server, xcb_window_t window, xcb_atom_t property);
bool Holds(const std::vector<uint32_t>& values, uint32_t value);

/// Returns the child that is visible at a place of the root window and takes input there, or NONE.
xcb_window_t ChildAt(xcb_connection_t* server, xcb_window_t window, QPoint place);

/// Returns whether a button of the pointer is held, wherever the pointer is.
bool IsButtonDown(xcb_connection_t* server);

} // namespace XWindows

} // namespace kits
