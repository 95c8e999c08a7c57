// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/InterfaceDefs.h"

namespace kits {

/// Sets the interface kit up: looks for a display, makes the toolkit's application object and installs the event loop
/// that drives both it and all loopers. Call it before BApplication is made, once in a process, on its main thread,
/// which from then on holds the interface lock except while it waits in the event loop. Removes the toolkit's own
/// options from the arguments.
///
/// @param argc,  argv must stay valid for the life of the process
/// @return B_OK; B_NO_INIT if there is no display to show windows on (InterfaceError() returns the message);
///         B_NOT_ALLOWED if called twice
status_t InitInterface(int& argc, char** argv);

/// Names the program's desktop entry, so that the desktop shows the entry's name and icon for its windows. A resource
/// "Icon" of type B_RAW_TYPE becomes the windows' own icon: its width, its height and its pixels, all 32-bit words,
/// each pixel as alpha<<24 | red<<16 | green<<8 | blue, the colours multiplied by alpha. Call it after InitInterface
/// and before the first window.
///
/// @param name         the entry's file without ".desktop"
/// @param programName  names the program in the system's task bars and to assistive technology: the class of its
///                     windows in an X server, which groups them. There, programs with the same name are one.
void SetDesktopEntry(const char* name, const char* programName);

/// Makes InitInterface use an X server if there is one, even if the session's own display is another one: only on X can
/// windows choose their place and belong to the desktop. An explicit choice by the user takes precedence. Call it
/// before InitInterface.
void PreferX11();

/// One line that says why InitInterface failed; "" if it did not.
const char* InterfaceError();

/// Destroys everything that InitInterface made; for tests and the end of main, after the application object is gone.
/// All windows must be gone before.
void ExitInterface();

} // namespace kits
