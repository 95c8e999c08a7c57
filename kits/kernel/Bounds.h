// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>

/// Every limit on what others can make these programs hold or do: other processes of the user, files, pictures, the
/// display, the clipboard and drops. There is no other place for such a limit; classes may give a row a name of their
/// own. Our own programs never reach any of them.
///
/// Sizes are in bytes and count capacity: what is allocated, not how much of it is filled. A process is one process id
/// together with its start time, whatever names it uses. The comment on each row ends with what happens at the limit:
///
///     wait     nothing more is read or accepted from this process until there is room again; nothing is lost
///     newest   the newest replaces the previous one
///     refuse   this one is not accepted, and its sender gets an error
///     ignore   this one is not accepted, and the rest continues
///     close    the connection ends, and its other end gets the reason (CloseReason)
namespace kits::bounds {

inline constexpr size_t kKiB = 1024;
inline constexpr size_t kMiB = 1024 * kKiB;

// One connection between two processes. Besides, only the newest of the pings that wait for the main loop is kept.
// newest

/// Of a frame, with its head. Sender: refuse. Receiver: close.
inline constexpr size_t kMostFrame = kMiB;
/// Of a frame before the hello. close
inline constexpr size_t kMostFrameOfAStranger = 64;
/// Handlers that a frame names. Sender: makes several frames. Receiver: close.
inline constexpr size_t kMostTargets = 1024;
/// Of a message for more than one handler: each gets its own copy. As the row above.
inline constexpr size_t kMostShared = 64 * kKiB;
/// Fields, and values, of a message in a frame: each takes more memory than its bytes in the frame. close
inline constexpr int32_t kMostFieldsFromOutside = 4096;
inline constexpr int32_t kMostValuesFromOutside = 16 * 1024;
/// Until the hello. close
inline constexpr auto kTimeToSayHello = std::chrono::seconds(1);
/// From the first byte of a frame to its last, while it is being read. close
inline constexpr auto kTimeForAFrame = std::chrono::seconds(5);
/// The bytes read before other connections get their turn: from small frames, and from a longer one. wait
inline constexpr size_t kMostReadAtOnce = 16 * kKiB;
inline constexpr size_t kMostReadOfAFrame = 64 * kKiB;
/// Of the answers on its own connection that the sender has not read (pongs, and handlers that are gone). close
inline constexpr size_t kMostAnswers = 64 * kKiB;
/// How long the queue of unsent frames may refuse messages. close
inline constexpr auto kLongestFull = std::chrono::seconds(2);
/// Handlers known to be gone at the other end. ignore: messages for further ones are sent, and answered by the other
/// end
inline constexpr size_t kMostGone = 4096;

// One process, in all of its connections.

/// Connections to us: one that is identified, and those before their hello. refuse: closed at once, so that others get
/// through
inline constexpr size_t kMostConnectionsOfAProcess = 8;
/// Connections to it. refuse
inline constexpr size_t kMostLinksOfAProcess = 1;
/// Of received data that are not a complete message yet. wait
inline constexpr size_t kMostIncompleteOfAProcess = kMostFrame + 256 * kKiB;
/// Of unsent data for it. refuse (`B_WOULD_BLOCK`), and close after kLongestFull
inline constexpr size_t kMostUnsentOfAProcess = 4 * kMiB;
/// Messages that wait for the main thread or are being handled there. wait
inline constexpr size_t kMostUnhandledOfAProcess = 64;
/// Of these messages, and of one that waits behind them. wait; close for a single message that takes more
inline constexpr size_t kMostUnhandledBytesOfAProcess = 4 * kMiB;
/// How long one turn of the main loop handles these messages, in microseconds. wait: for the next turn
inline constexpr int64_t kLongestOfAProcess = 4'000;
/// Receivers of a stream. refuse
inline constexpr int32_t kMostReceiversOfAProcess = 1024;

// All processes together. A process that has less than its share gets that in any case, whatever the others have; these
// limit only what exceeds the shares.

/// Connections to us. wait: no connection is accepted
inline constexpr size_t kMostConnections = 128;
/// Of these, before the hello. wait: no connection is accepted
inline constexpr size_t kMostStrangers = 64;
/// Connections from us. refuse (`B_NO_MORE_FDS`)
inline constexpr size_t kMostLinks = 64;
/// As the rows for one process.
inline constexpr size_t kMostIncomplete = 4 * kMiB;
inline constexpr size_t kMostUnsent = 6 * kMiB;
inline constexpr size_t kMostUnhandled = 1024;
inline constexpr size_t kMostUnhandledBytes = 6 * kMiB;
inline constexpr size_t kShareOfBytes = 16 * kKiB;
inline constexpr size_t kShareOfMessages = 2;
inline constexpr size_t kMostReceivers = 8192;
/// Messages that wait for one looper, from this process and others. refuse (`B_WOULD_BLOCK`); from others: wait
inline constexpr int32_t kMostQueued = 4096;
/// Teams that were given up and are not tried again until they send something. The oldest one is tried again.
inline constexpr size_t kMostGivenUp = 256;

/// File descriptors that connections leave free, for the display, stores and pictures; a quarter of them if the process
/// may have few. As kMostConnections and kMostLinks.
inline constexpr int kReservedDescriptors = 64;
/// How long no connection is accepted after descriptors have run out.
inline constexpr auto kPauseWithoutDescriptors = std::chrono::seconds(1);

/// Names that are read in the folder of all teams, and sockets among them. ignore
inline constexpr size_t kMostNamesOfTeams = 16 * 1024;
inline constexpr size_t kMostTeams = 1024;

/// How long quitting waits for another start of the same program to release its lock. Then it continues without it.
inline constexpr int64_t kLongestWaitToQuit = 1'000'000;

// Flattened messages, from any source. refuse

inline constexpr size_t kMostFlattened = 16 * kMiB;
inline constexpr int32_t kMostDepth = 16;
inline constexpr int32_t kMostFields = 64 * 1024;
inline constexpr int32_t kMostValues = 256 * 1024;
inline constexpr size_t kLongestFieldName = 255;

// Views that other programs hand over. refuse

/// Of an archive, flattened.
inline constexpr long kMostArchive = 256 * kKiB;
/// Of all archives of a program's views.
inline constexpr long kMostArchives = 8 * kMiB;
inline constexpr size_t kMostReplicants = 512;
/// Requests that are remembered, so that none is performed twice. The oldest is forgotten.
inline constexpr size_t kMostRequests = 256;

// Files.

/// Of an attribute, and of all attributes that no file system keeps for us. refuse
inline constexpr size_t kMostAttribute = 64 * kKiB;
inline constexpr size_t kMostAttributes = 4 * kMiB;
/// The file with the moment of boot. It is measured anew.
inline constexpr size_t kMostBootFile = 512;
/// Files that are kept because they could not be read, of one name. refuse
inline constexpr int kMostKeptFiles = 10000;

// Files and tools of desktops and other programs. ignore: as if they did not exist

/// Of a settings file, and of the output of one of the desktop's tools.
inline constexpr size_t kMostForeignSettings = kMiB;
inline constexpr size_t kMostPrinted = kMiB;
/// How long such a tool may take, in microseconds.
inline constexpr int64_t kLongestTool = 5'000'000;
/// Folders that a variable of the environment lists; those behind are not looked into.
inline constexpr size_t kMostListedFolders = 64;
/// Entries that are looked at in the folder of a wallpaper; those behind are not.
inline constexpr size_t kMostWallpaperEntries = 4096;
/// Of an entry that starts a program with the session; a longer one is replaced.
inline constexpr size_t kMostAutostart = 64 * kKiB;
/// Of a foreign text in a line on stderr. The rest is left out.
inline constexpr size_t kMostInALine = 1024;

// Pictures, in the process that reads them. refuse

inline constexpr int64_t kMostPictureFile = 256 * kMiB;
inline constexpr int64_t kMostPixels = 1'000'000'000;
/// In MiB, of one picture.
inline constexpr int kMostPicture = 512;
/// Of the whole process: address space and seconds of processor time.
inline constexpr int64_t kMostPictureMemory = 1024 * kMiB;
inline constexpr int64_t kMostPictureSeconds = 5;
/// How long the process may take by the clock, in microseconds.
inline constexpr int64_t kLongestPicture = 15'000'000;
/// Files of which one wallpaper may consist, and answers that are kept.
inline constexpr size_t kMostPictureFiles = 64;
inline constexpr size_t kMostPictureAnswers = 8;

// What is read from the display, in words of 32 bits. ignore: the rest is not read

inline constexpr uint32_t kMostSettings = 64 * 1024;
inline constexpr uint32_t kMostPropertyValues = 4096;
inline constexpr uint32_t kMostPropertyText = 64;

// Other programs' data: the clipboard, the primary selection, drags.

/// For all forms of it and all answers together, of a paste or a drop. Then it is given up, with a beep.
inline constexpr auto kLongestFetch = std::chrono::seconds(1);
/// How long the program that keeps the clipboard may take to take it over from one that ends. Then it is given up.
inline constexpr auto kLongestHandover = std::chrono::seconds(1);
/// Of it in one form: messages as above, texts, colours. ignore: the next form is tried
inline constexpr size_t kMostForeignText = kMiB;
inline constexpr size_t kMostForeignColor = 64;
/// Forms in an owner's list. With more, the list is ignored and every form is tried.
inline constexpr size_t kMostForms = 1024;
/// Pieces that an answer comes in. ignore: the next form is tried
inline constexpr int kMostPieces = 8192;
/// Fetches under way. refuse, with a beep
inline constexpr size_t kMostFetches = 4;
/// How often a program is asked for its dragged data while the drag is over one window.
inline constexpr int kMostAskedOfADrag = 8;
/// After how many microseconds without an answer it is asked again, at the next place that the pointer comes to.
inline constexpr int64_t kAskDragAgain = 100000;

} // namespace kits::bounds
