// SPDX-License-Identifier: MIT
#pragma once

#include "kits/support/SupportDefs.h"

/// Message codes and small types of the application kit.

/// Names a process that uses the kits: its process id.
using team_id = int32;

/// Codes of the kits' own messages. An application should use other codes.
enum : uint32 {
    B_QUIT_REQUESTED = '_QRQ',  ///< to a looper: end, if QuitRequested() agrees
    B_ABOUT_REQUESTED = '_ABR', ///< to the application: show the about window
    B_READY_TO_RUN = '_RTR',    ///< to the application: the launch messages have been handled
    B_SILENT_RELAUNCH = 'AREL', ///< to an application that was started a second time; arrives even before its Run()
    B_PULSE = '_PUL',           ///< to a looper, at its pulse rate
    B_REPLY = 'RPLY',           ///< a reply without a code of its own
    B_NO_REPLY = 'NONE',        ///< the reply to a message that was deleted unanswered
    B_MESSAGE_NOT_UNDERSTOOD = '_NUN',
    B_SOME_APP_LAUNCHED = 'BRAS', ///< to the roster's watchers
    B_SOME_APP_QUIT = 'BRAQ',     ///< to the roster's watchers
    B_SOME_APP_DIED = 'BRAD',     ///< to the roster's watchers

    B_SIMPLE_DATA = 'DATA',        ///< dropped data, under the names of their MIME types
    B_MIME_DATA = 'MIME',          ///< the same
    B_PASTE = 'PSTE',              ///< dropped or pasted data
    B_ARCHIVED_OBJECT = 'ARCV',    ///< a dragged archive, see BDragger
    B_DROPPED_ON_DESKTOP = '_DDT', ///< to the target of a BDragger: it was dropped on the desktop
    B_REPLICANT_TAKEN = '_RTK',    ///< to the target of a BDragger: a BShelf took it

    B_KEY_DOWN = '_KYD',
    B_MOUSE_DOWN = '_MDN',
    B_MOUSE_MOVED = '_MMV',
    B_MOUSE_UP = '_MUP',
    B_MINIMIZE = '_WMN',
    B_WINDOW_ACTIVATED = '_ACT',
    B_WINDOW_MOVED = '_WMV',
    B_WINDOW_RESIZED = '_WRS',
    B_SCREEN_CHANGED = '_SCH',
};
