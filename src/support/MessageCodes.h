// SPDX-License-Identifier: MIT
#pragma once

#include "kits/kernel/Types.h"

/// The program's own message codes: one enumeration of consecutive numbers that all its windows, charts and processes
/// share. The handlers describe the fields of their messages; the numbers are fixed for good, because programs of
/// different versions exchange them.
enum : uint32 {
    MSG_SYSINFO_SAMPLE = 0x3F62129A,        ///< sampler to charts: a new sample
    MSG_SET_DELAY = 0x3F62129B,             ///< any program to the application: "Delay" int64, microseconds
    MSG_SET_NODES_TO_KEEP = 0x3F62129C,     ///< any program to the application: "NodesToKeep" int16
    MSG_LAUNCHED_BY_REPLICANT = 0x3F62129D, ///< launch message of a replicant: start minimised
    MSG_CONNECT = 0x3F62129E,               ///< chart to application: "Messenger" wants samples
    MSG_DISCONNECT = 0x3F62129F,            ///< chart to application: "Messenger" wants no more samples
    MSG_SERVER_GONE = 0x3F6212A0,           ///< sampler, in its destructor, to remote charts
    MSG_OPEN_GLOBAL_PREFS = 0x3F6212A1,     ///< main window's menu to application
    MSG_CW_OPEN = 0x3F6212A2,               ///< application to itself at start-up; has no handler
    MSG_NO_LISTENERS = 0x3F6212A3,          ///< sampler to application: the last messenger was invalid
    MSG_SOURCE_DROP = 0x3F6212A4,           ///< drag of sources: "ValueProvider" messages
    MSG_PREFS_DROP = 0x3F6212A5,            ///< drag of settings: fields of a chart's archive
    MSG_WINDOW_CLOSED = 0x3F6212A6,         ///< closing window to its owner: "Window", "Name", "Container", "Archive"

    MSG_CHART_PAUSE = 0x3F6212A7,
    MSG_CHART_DELETE = 0x3F6212A8,
    MSG_CHART_ADD = 0x3F6212A9,
    MSG_CHART_PREFS = 0x3F6212AA,
    MSG_DISTRIBUTE_VALUE_POS = 0x3F6212AE,
    MSG_DISTRIBUTE_TITLE_POS = 0x3F6212AF,
    MSG_SYNC_OTHERS = 0x3F6212B2,
    MSG_RECONNECT = 0x3F6212B3,
    MSG_DISTRIBUTE = 0x3F6212B4,    ///< chart to holder: "Msg" for every chart but "CView"
    MSG_SET_VALUE_POS = 0x3F6212B5, ///< "Coord" point
    MSG_SET_TITLE_POS = 0x3F6212B6, ///< "Coord" point
    MSG_SET_COLUMN = 0x3F6212B8,    ///< "Pos" float

    MSG_PREFS_REVERT = 0x3F6212B9,
    MSG_PREFS_REVERT_ALL = 0x3F6212BA,
    MSG_PREFS_CANCEL = 0x3F6212BC,

    MSG_COLOR_CHANGED = 0x3F6212BD,
    MSG_AA_TARGET_CHART = 0x3F6212BE,
    MSG_AA_TARGET_BACKGROUND = 0x3F6212BF,
    MSG_AA_TARGET_AVERAGE = 0x3F6212C0,
    MSG_TARGET_CHART = 0x3F6212C1,
    MSG_TARGET_BACKGROUND = 0x3F6212C2,
    MSG_TARGET_VALUE = 0x3F6212C3,
    MSG_TARGET_TITLE = 0x3F6212C4,
    MSG_TARGET_BORDER = 0x3F6212C5,
    MSG_TARGET_NONE = 0x3F6212C6,

    MSG_CHART_TYPE = 0x3F6212C9,        ///< "Type" int32
    MSG_GAUGE_ORIENTATION = 0x3F6212CA, ///< "Vertical" bool
    MSG_PAGE_SIZE = 0x3F6212D7,
    MSG_AA_VALUE = 0x3F6212D8,
    MSG_REFRESH_SKIP = 0x3F6212D9,
    MSG_VALUE_SKIP = 0x3F6212DA,
    MSG_PICK_DESKTOP = 0x3F6212DB,
    MSG_TEST_ON_DESKTOP = 0x3F6212DC,
    MSG_SHOW_VALUE = 0x3F6212DD,
    MSG_SHOW_TITLE = 0x3F6212DE,
    MSG_SHOW_BORDER = 0x3F6212DF,
    MSG_LOCK_BG_COLOR = 0x3F6212E0,
    MSG_TRANSPARENT = 0x3F6212E4,
    MSG_TITLE = 0x3F6212E5,

    MSG_SAMPLES_SLIDER = 0x3F6212E6,
    MSG_DELAY_SLIDER = 0x3F6212E7,
    MSG_REMOVE_SOURCE = 0x3F6212E8,

    MSG_ADD_SOURCES,
    MSG_FILTER_SOURCES,
    MSG_SOURCE_SELECTED,
    MSG_FONT_TARGET_NONE,
    MSG_FONT_TARGET_VALUE,
    MSG_FONT_TARGET_TITLE,
    MSG_FONT_FAMILY,
    MSG_FONT_STYLE,
    MSG_FONT_SIZE,
    MSG_FONT_SIZE_NUMBER,

    MSG_SAVE_PICTURE, ///< chart's menu: asks for a file
    MSG_SAVE_VALUES,

    MSG_SERVER_UNREACHABLE, ///< a replicant's thread to the replicant: there is no connection

    MSG_COPY_SETTINGS,   ///< chart's menu: onto the clipboard
    MSG_PASTE,           ///< chart's menu: from the clipboard
    MSG_KEPT_FILES_TOLD, ///< alert about the store to the program of charts on the desktop: it has been answered

    MSG_PASTE_COLOR, ///< chart's menu: from the clipboard onto the source whose item "source" is

    MSG_DESKTOP_COLOR, ///< the desktop's colour, to the code that asked for it: "RGBColor"

    // Charts on the desktop. Programs of different versions exchange these too.
    MSG_SHOW_ON_DESKTOP = 0x3F621380, ///< chart to qel-desktop: "Archive" message, optionally "Where" (point, top
                                      ///< left), and "Request" (string), which identifies a repeated one
    MSG_NOT_ON_DESKTOP,               ///< chart to itself: that failed, optionally "Refused" (bool)
    MSG_COPY_TO_DESKTOP,              ///< menus to their chart
    MSG_REMOVE_REPLICANT,             ///< handle's menu to a chart on the desktop, and on to its window
    MSG_GO_TO_DESKTOP,                ///< chart's menu: gives the keyboard focus to the charts on the desktop
    MSG_ACTIVATE_REPLICANTS,          ///< chart to qel-desktop: the first chart gets the keyboard focus
    MSG_NEXT_REPLICANT,               ///< chart on the desktop to its window: gives the focus to the next one, or with
                                      ///< "Back" (bool) to the previous one
    MSG_MOVE_REPLICANT,               ///< chart on the desktop to its window: "By" point
    MSG_NOTHING_ON_DESKTOP            ///< chart to itself: there are no charts that could get the focus
};
