// SPDX-License-Identifier: MIT
#pragma once

#include <QRect>

#include <gtest/gtest.h>
#include <xcb/xcb.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

/// Another client of the X server, which may play the window manager. Its windows end with it.
class OtherProgram {
public:
    OtherProgram()
        : fServer(xcb_connect(nullptr, nullptr), xcb_disconnect)
        , fRoot(xcb_setup_roots_iterator(xcb_get_setup(fServer.get())).data->root)
    {
    }

    xcb_window_t Root() const { return fRoot; }
    QRect Screen() const
    {
        const xcb_screen_t* const screen = xcb_setup_roots_iterator(xcb_get_setup(fServer.get())).data;
        return {0, 0, screen->width_in_pixels, screen->height_in_pixels};
    }
    xcb_atom_t Atom(const char* name) const
    {
        const std::unique_ptr<xcb_intern_atom_reply_t, decltype(&std::free)> reply(
            xcb_intern_atom_reply(fServer.get(),
                                  xcb_intern_atom(fServer.get(), 0, static_cast<uint16_t>(std::strlen(name)), name),
                                  nullptr),
            std::free);
        return reply->atom;
    }

    /// Shows a window on top of all others. No window manager puts a frame around it.
    xcb_window_t Show(QRect frame, bool isInputOnly = false, bool isManaged = true) const
    {
        const xcb_window_t window = xcb_generate_id(fServer.get());
        const uint32_t unmanaged = isManaged ? 0 : 1;
        xcb_create_window(fServer.get(), XCB_COPY_FROM_PARENT, window, fRoot, static_cast<int16_t>(frame.x()),
                          static_cast<int16_t>(frame.y()), static_cast<uint16_t>(frame.width()),
                          static_cast<uint16_t>(frame.height()), 0,
                          isInputOnly ? XCB_WINDOW_CLASS_INPUT_ONLY : XCB_WINDOW_CLASS_INPUT_OUTPUT,
                          XCB_COPY_FROM_PARENT, XCB_CW_OVERRIDE_REDIRECT, &unmanaged);
        xcb_map_window(fServer.get(), window);
        Sync();
        return window;
    }
    void Lower(xcb_window_t window) const
    {
        const uint32_t below = XCB_STACK_MODE_BELOW;
        xcb_configure_window(fServer.get(), window, XCB_CONFIG_WINDOW_STACK_MODE, &below);
        Sync();
    }
    void Destroy(xcb_window_t window) const
    {
        xcb_destroy_window(fServer.get(), window);
        Sync();
    }

    void Set(xcb_window_t window, const char* property, xcb_atom_t type, const std::vector<uint32_t>& values) const
    {
        xcb_change_property(fServer.get(), XCB_PROP_MODE_REPLACE, window, Atom(property), type, 32,
                            static_cast<uint32_t>(values.size()), values.data());
        Sync();
    }
    /// Returns the children of the root window, from bottom to top.
    std::vector<xcb_window_t> Windows() const
    {
        const std::unique_ptr<xcb_query_tree_reply_t, decltype(&std::free)> reply(
            xcb_query_tree_reply(fServer.get(), xcb_query_tree(fServer.get(), fRoot), nullptr), std::free);
        if (reply == nullptr)
            return {};
        const xcb_window_t* const children = xcb_query_tree_children(reply.get());
        return {children, children + xcb_query_tree_children_length(reply.get())};
    }
    void SetText(xcb_window_t window, const char* property, const std::string& text) const
    {
        xcb_change_property(fServer.get(), XCB_PROP_MODE_REPLACE, window, Atom(property), Atom("UTF8_STRING"), 8,
                            static_cast<uint32_t>(text.size()), text.data());
        Sync();
    }
    /// Returns the atoms or windows in a property; empty if it does not exist.
    std::vector<uint32_t> Get(xcb_window_t window, const char* property) const
    {
        const std::unique_ptr<xcb_get_property_reply_t, decltype(&std::free)> reply(
            xcb_get_property_reply(
                fServer.get(),
                xcb_get_property(fServer.get(), 0, window, Atom(property), XCB_GET_PROPERTY_TYPE_ANY, 0, 64), nullptr),
            std::free);
        if (reply == nullptr || reply->format != 32)
            return {};
        const auto* values = static_cast<const uint32_t*>(xcb_get_property_value(reply.get()));
        return {values, values + reply->value_len};
    }

private:
    /// Waits until the server has handled the requests.
    void Sync() const
    {
        std::free(xcb_get_input_focus_reply(fServer.get(), xcb_get_input_focus(fServer.get()), nullptr));
    }

    std::unique_ptr<xcb_connection_t, decltype(&xcb_disconnect)> fServer;
    xcb_window_t fRoot;
};
