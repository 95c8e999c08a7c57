// SPDX-License-Identifier: MIT
#include "kits/interface/platform/x11/XWindows.h"

#include "kits/kernel/Bounds.h"

#include <QGuiApplication>
#include <QPoint>

#include <algorithm>
#include <cstring>
#include <utility>

namespace kits {

xcb_connection_t* XServer()
{
    const auto* x11 = qGuiApp != nullptr ? qGuiApp->nativeInterface<QNativeInterface::QX11Application>() : nullptr;
    return x11 != nullptr ? x11->connection() : nullptr;
}

namespace XWindows {

namespace {

xcb_get_property_cookie_t Ask(xcb_connection_t* server, xcb_window_t window, xcb_atom_t property, uint32_t words,
                              xcb_atom_t type = XCB_GET_PROPERTY_TYPE_ANY)
{
    return xcb_get_property(server, 0, window, property, type, 0, words);
}

std::vector<uint32_t> Values(xcb_connection_t* server, xcb_get_property_cookie_t asked)
{
    const auto answer = Await(server, xcb_get_property_reply, asked);
    if (answer == nullptr || answer->format != 32)
        return {};
    const auto* values = static_cast<const uint32_t*>(xcb_get_property_value(answer.get()));
    return {values, values + static_cast<size_t>(xcb_get_property_value_length(answer.get())) / sizeof(uint32_t)};
}

} // namespace

Connection Connect(const char* display)
{
    Connection connection(xcb_connect(display, nullptr));
    return xcb_connection_has_error(connection.get()) == 0 ? std::move(connection) : nullptr;
}

xcb_window_t Root(xcb_connection_t* server)
{
    const xcb_screen_iterator_t screens = xcb_setup_roots_iterator(xcb_get_setup(server));
    return screens.rem > 0 ? screens.data->root : static_cast<xcb_window_t>(XCB_NONE);
}

std::vector<xcb_intern_atom_cookie_t> AskAtoms(xcb_connection_t* server, std::initializer_list<const char*> names)
{
    std::vector<xcb_intern_atom_cookie_t> asked;
    for (const char* name : names)
        asked.push_back(xcb_intern_atom(server, 0, static_cast<uint16_t>(std::strlen(name)), name));
    return asked;
}

std::vector<xcb_atom_t> TakeAtoms(xcb_connection_t* server, const std::vector<xcb_intern_atom_cookie_t>& asked)
{
    std::vector<xcb_atom_t> atoms;
    for (const xcb_intern_atom_cookie_t cookie : asked) {
        const auto answer = Await(server, xcb_intern_atom_reply, cookie);
        atoms.push_back(answer != nullptr ? answer->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE));
    }
    return atoms;
}

std::vector<xcb_atom_t> Atoms(xcb_connection_t* server, std::initializer_list<const char*> names)
{
    return TakeAtoms(server, AskAtoms(server, names));
}

xcb_window_t Owner(xcb_connection_t* server, xcb_atom_t selection)
{
    const auto answer = Await(server, xcb_get_selection_owner_reply, xcb_get_selection_owner(server, selection));
    return answer != nullptr ? answer->owner : static_cast<xcb_window_t>(XCB_NONE);
}

void SetProperty(xcb_connection_t* server, xcb_window_t window, xcb_atom_t property, xcb_atom_t type,
                 const std::vector<uint32_t>& values)
{
    xcb_change_property(server, XCB_PROP_MODE_REPLACE, window, property, type, 32, static_cast<uint32_t>(values.size()),
                        values.data());
}

std::vector<uint32_t> Property(xcb_connection_t* server, xcb_window_t window, xcb_atom_t property, xcb_atom_t type)
{
    return Values(server, Ask(server, window, property, bounds::kMostPropertyValues, type));
}

std::vector<std::vector<uint32_t>> Properties(xcb_connection_t* server, const std::vector<xcb_window_t>& windows,
                                              xcb_atom_t property)
{
    std::vector<xcb_get_property_cookie_t> asked;
    for (const xcb_window_t window : windows)
        asked.push_back(Ask(server, window, property, bounds::kMostPropertyValues));
    std::vector<std::vector<uint32_t>> values;
    for (const xcb_get_property_cookie_t cookie : asked)
        values.push_back(Values(server, cookie));
    return values;
}

std::string Text(xcb_connection_t* server, xcb_window_t window, xcb_atom_t property)
{
    const auto answer = Await(server, xcb_get_property_reply, Ask(server, window, property, bounds::kMostPropertyText));
    if (answer == nullptr || answer->format != 8)
        return "";
    return {static_cast<const char*>(xcb_get_property_value(answer.get())),
            static_cast<size_t>(xcb_get_property_value_length(answer.get()))};
}

bool Holds(const std::vector<uint32_t>& values, uint32_t value)
{
    return std::find(values.begin(), values.end(), value) != values.end();
}

xcb_window_t ChildAt(xcb_connection_t* server, xcb_window_t window, QPoint place)
{
    const auto answer = Await(server, xcb_translate_coordinates_reply,
                              xcb_translate_coordinates(server, Root(server), window, static_cast<int16_t>(place.x()),
                                                        static_cast<int16_t>(place.y())));
    return answer != nullptr ? answer->child : static_cast<xcb_window_t>(XCB_NONE);
}

bool IsButtonDown(xcb_connection_t* server)
{
    const auto answer = Await(server, xcb_query_pointer_reply, xcb_query_pointer(server, Root(server)));
    constexpr uint16_t kButtons = XCB_BUTTON_MASK_1 | XCB_BUTTON_MASK_2 | XCB_BUTTON_MASK_3;
    return answer != nullptr && (answer->mask & kButtons) != 0;
}

} // namespace XWindows

} // namespace kits
