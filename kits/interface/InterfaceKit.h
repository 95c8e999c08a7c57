// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/InterfaceDefs.h"

namespace kits {

/// Sets the interface kit up: looks for a display, makes the toolkit's application object and installs the event loop
/// that drives both it and all loopers. Before BApplication is made; once in a process, on its main thread, which from
/// here on holds the interface lock but while it waits in the event loop. The toolkit's own options are taken out of
/// the arguments.
///
/// @param argc, argv  must stay valid for the life of the process
/// @return B_OK; B_NO_INIT when there is no display to show windows on (the message is in InterfaceError());
///         B_NOT_ALLOWED when called twice
status_t InitInterface(int& argc, char** argv);

/// Says which desktop entry is that of the program, so that the desktop shows the entry's name and icon for its
/// windows. A resource "Icon" of type B_RAW_TYPE becomes the windows' own icon: its width, its height and its pixels,
/// all 32-bit words, a pixel as alpha<<24 | red<<16 | green<<8 | blue, the colours multiplied by alpha. After
/// InitInterface, before the first window.
///
/// @param name         the entry's file without ".desktop"
/// @param programName  names the program in the system's task bars and to assistive technology: the class of its
///                     windows in an X server, by which they are grouped. Programs with the same name are one there.
void SetDesktopEntry(const char* name, const char* programName);

/// Has InitInterface take an X server where there is one, also where the session speaks something else first: only
/// there can windows choose their place and belong to the desktop. What the user asked for goes before. Before
/// InitInterface.
void PreferX11();

/// One line that says why InitInterface failed; "" when it did not.
const char* InterfaceError();

/// Takes down what InitInterface made; for tests and the end of main, after the application object is gone. Windows
/// that are still open must be gone before.
void ExitInterface();

} // namespace kits
