// SPDX-License-Identifier: MIT
#include "kits/interface/platform/x11/XWindows.h"

#include "kits/kernel/Bounds.h"

#include <QPoint>

#include <algorithm>
#include <cstring>

namespace kits::XWindows {

namespace {

xcb_get_property_cookie_t Ask(xcb_connection_t* server, xcb_window_t window, xcb_atom_t property, uint32_t words)
{
    return xcb_get_property(server, 0, window, property, XCB_GET_PROPERTY_TYPE_ANY, 0, words);
}

std::vector<uint32_t> Values(xcb_connection_t* server, xcb_get_property_cookie_t asked)
{
    const Answer<xcb_get_property_reply_t> answer(xcb_get_property_reply(server, asked, nullptr));
    if (answer == nullptr || answer->format != 32)
        return {};
    const auto* values = static_cast<const uint32_t*>(xcb_get_property_value(answer.get()));
    return {values, values + static_cast<size_t>(xcb_get_property_value_length(answer.get())) / sizeof(uint32_t)};
}

} // namespace

xcb_window_t Root(xcb_connection_t* server)
{
    const xcb_screen_iterator_t screens = xcb_setup_roots_iterator(xcb_get_setup(server));
    return screens.rem > 0 ? screens.data->root : static_cast<xcb_window_t>(XCB_NONE);
}

std::vector<xcb_atom_t> Atoms(xcb_connection_t* server, std::initializer_list<const char*> names)
{
    std::vector<xcb_intern_atom_cookie_t> cookies;
    for (const char* name : names)
        cookies.push_back(xcb_intern_atom(server, 0, static_cast<uint16_t>(std::strlen(name)), name));
    std::vector<xcb_atom_t> atoms;
    for (const xcb_intern_atom_cookie_t cookie : cookies) {
        const Answer<xcb_intern_atom_reply_t> answer(xcb_intern_atom_reply(server, cookie, nullptr));
        atoms.push_back(answer != nullptr ? answer->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE));
    }
    return atoms;
}

void SetProperty(xcb_connection_t* server, xcb_window_t window, xcb_atom_t property, xcb_atom_t type,
                 const std::vector<uint32_t>& values)
{
    xcb_change_property(server, XCB_PROP_MODE_REPLACE, window, property, type, 32, static_cast<uint32_t>(values.size()),
                        values.data());
}

std::vector<uint32_t> Property(xcb_connection_t* server, xcb_window_t window, xcb_atom_t property)
{
    return Values(server, Ask(server, window, property, bounds::kMostPropertyValues));
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
    const Answer<xcb_get_property_reply_t> answer(
        xcb_get_property_reply(server, Ask(server, window, property, bounds::kMostPropertyText), nullptr));
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
    const Answer<xcb_translate_coordinates_reply_t> answer(xcb_translate_coordinates_reply(
        server,
        xcb_translate_coordinates(server, Root(server), window, static_cast<int16_t>(place.x()),
                                  static_cast<int16_t>(place.y())),
        nullptr));
    return answer != nullptr ? answer->child : static_cast<xcb_window_t>(XCB_NONE);
}

bool IsButtonDown(xcb_connection_t* server)
{
    const Answer<xcb_query_pointer_reply_t> answer(
        xcb_query_pointer_reply(server, xcb_query_pointer(server, Root(server)), nullptr));
    constexpr uint16_t kButtons = XCB_BUTTON_MASK_1 | XCB_BUTTON_MASK_2 | XCB_BUTTON_MASK_3;
    return answer != nullptr && (answer->mask & kButtons) != 0;
}

} // namespace kits::XWindows
