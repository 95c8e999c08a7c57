// SPDX-License-Identifier: MIT
#pragma once

#include "kits/support/Color.h"
#include "kits/support/SupportDefs.h"

/// Constants and small types that views, windows, bitmaps and controls share.

/// Mouse buttons, as bits of "buttons" in a mouse message and of BView::GetMouse.
enum : uint32 { B_PRIMARY_MOUSE_BUTTON = 1, B_SECONDARY_MOUSE_BUTTON = 2, B_TERTIARY_MOUSE_BUTTON = 4 };

/// Where the pointer is in relation to a view, as BView::MouseMoved reports it.
enum : uint32 {
    B_ENTERED_VIEW = 0, ///< it entered with this move
    B_INSIDE_VIEW = 1,
    B_EXITED_VIEW = 2, ///< it left with this move, or another view now covers the place
    B_OUTSIDE_VIEW = 3
};

/// Modifier keys, as bits of "modifiers" in mouse and key messages.
enum : uint32 { B_SHIFT_KEY = 1, B_COMMAND_KEY = 2, B_CONTROL_KEY = 4, B_OPTION_KEY = 8, B_CAPS_LOCK = 16 };

/// Keys without a printable character, as the first byte that BView::KeyDown gets.
enum : char {
    B_HOME = 0x01,
    B_END = 0x04,
    B_INSERT = 0x05,
    B_BACKSPACE = 0x08,
    B_TAB = 0x09,
    B_ENTER = 0x0A,
    B_RETURN = 0x0A,
    B_PAGE_UP = 0x0B,
    B_PAGE_DOWN = 0x0C,
    B_ESCAPE = 0x1B,
    B_LEFT_ARROW = 0x1C,
    B_RIGHT_ARROW = 0x1D,
    B_UP_ARROW = 0x1E,
    B_DOWN_ARROW = 0x1F,
    B_SPACE = 0x20,
    B_DELETE = 0x7F
};

/// How a view follows the size of its parent: one horizontal and one vertical rule, combined with | or +. B_FOLLOW_NONE
/// keeps the view in its place, as B_FOLLOW_LEFT | B_FOLLOW_TOP does.
enum : uint32 {
    B_FOLLOW_NONE = 0,
    B_FOLLOW_LEFT = 0x01,
    B_FOLLOW_RIGHT = 0x02,
    B_FOLLOW_LEFT_RIGHT = 0x03,
    B_FOLLOW_H_CENTER = 0x04,
    B_FOLLOW_TOP = 0x10,
    B_FOLLOW_BOTTOM = 0x20,
    B_FOLLOW_TOP_BOTTOM = 0x30,
    B_FOLLOW_V_CENTER = 0x40,
    B_FOLLOW_ALL_SIDES = 0x33,
    B_FOLLOW_ALL = B_FOLLOW_ALL_SIDES
};

/// Flags of a view.
enum : uint32 {
    B_WILL_DRAW = 0x01,             ///< Draw is called; without it the view is never asked to paint
    B_FULL_UPDATE_ON_RESIZE = 0x02, ///< a resize invalidates the whole view, not only the uncovered part
    B_PULSE_NEEDED = 0x04,          ///< Pulse is called at the window's pulse rate
    B_FRAME_EVENTS = 0x08,          ///< FrameMoved and FrameResized are called
    B_NAVIGABLE = 0x10,             ///< takes the keyboard focus with Tab or a click
    B_NAVIGABLE_JUMP = 0x20,        ///< starts a group of the keyboard navigation
    B_DRAW_ON_CHILDREN = 0x40
};

/// How drawing combines with the existing pixels.
enum drawing_mode : int32 {
    B_OP_COPY = 0, ///< replaces them; text is blended from the low to the high colour
    B_OP_OVER = 1  ///< text is blended onto them; low pattern and transparent pixels draw nothing
};

/// One of the two available patterns: all high colour or all low colour.
struct pattern {
    bool high;

    friend bool operator==(const pattern&, const pattern&) = default;
};

inline constexpr pattern B_SOLID_HIGH{true};
inline constexpr pattern B_SOLID_LOW{false};

/// Pixel formats of a bitmap: one 32-bit word per pixel, alpha<<24 | red<<16 | green<<8 | blue.
enum color_space : int32 { B_NO_COLOR_SPACE = 0, B_RGB32 = 0x0008, B_RGBA32 = 0x2008 };

/// The transparent pixel: in a window's views it shows what lies below. As a view colour it means that nothing is
/// erased before Draw.
inline constexpr rgb_color B_TRANSPARENT_COLOR{0x77, 0x74, 0x77, 0x00};
inline constexpr rgb_color B_TRANSPARENT_32_BIT{0x77, 0x74, 0x77, 0x00};
/// The same as a word of a B_RGB32 bitmap.
inline constexpr uint32 B_TRANSPARENT_MAGIC_RGBA32 = 0x00777477;

/// Colours of the user's theme.
enum color_which : int32 {
    B_PANEL_BACKGROUND_COLOR = 1,
    B_PANEL_TEXT_COLOR,
    B_DOCUMENT_BACKGROUND_COLOR,
    B_DOCUMENT_TEXT_COLOR,
    B_CONTROL_BACKGROUND_COLOR,
    B_CONTROL_TEXT_COLOR,
    B_KEYBOARD_NAVIGATION_COLOR,
    B_TOOL_TIP_BACKGROUND_COLOR,
    B_TOOL_TIP_TEXT_COLOR
};

/// A colour of the theme, alpha 255. Main thread, or with the interface lock held.
rgb_color ui_color(color_which which);

/// Plays the user's alert sound. Any thread; returns at once.
status_t beep();

/// How wide the buttons of an alert are.
enum button_width : int32 { B_WIDTH_AS_USUAL = 0, B_WIDTH_FROM_LABEL = 2 };

enum border_style : int32 { B_PLAIN_BORDER = 0, B_FANCY_BORDER = 1, B_NO_BORDER = 2 };
