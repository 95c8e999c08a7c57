// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/Message.h"
#include "kits/storage/Entry.h"
#include "kits/support/Point.h"
#include "kits/support/Rect.h"
#include "src/prefs/store/StoreNote.h"

#include <memory>
#include <string>
#include <vector>

class BFile;
class StoreFile;

/// A settings store: a message that knows its file, reads itself from it and writes itself back. It knows nothing of
/// the keys that it holds: who reads a value brings the default. It is read with BMessage's own finders.
///
/// The file lies in the settings folder (B_COMMON_SETTINGS_DIRECTORY) and is named after the last part of the store's
/// name, with ".common" for what all users share and ".user" for the user's own; both lie in the same folder. It holds
/// the flattened message and nothing else. While it is written the one before is kept beside it, with ".backup" at its
/// end, and it is gone only when the new one is on the disk: whatever happens in between, the next start finds one of
/// the two whole (StoreFile has the steps). A file that can't be read is never lost either: it is kept beside the new
/// one, with ".kept" at its end, and a line on stderr says so.
///
/// Destroying a store writes nothing. It has no lock: one thread at a time. A copy is a store of its own over the same
/// file, made to be written on another thread (StoreWriter).
class Preferences : public BMessage {
public:
    /// Finds the file and loads it; a missing one leaves the store empty. Without a settings folder the store works in
    /// memory. Another process that holds the file locked is waited for, half a second at most.
    /// @param name      for example the application's signature; what follows its last slash is used
    /// @param common    whether it is the store that all users share
    /// @param readOnly  nothing on the disk is changed: no folder is made, nothing is put in order, Sync() refuses
    Preferences(const char* name, bool common, bool readOnly = false);
    Preferences(const Preferences& other);
    Preferences& operator=(const Preferences& other) = delete;
    ~Preferences() override;

    /// B_OK when the store has a file, which need not exist; else why not: what finding or making the folder gave.
    status_t InitCheck() const { return fInitStatus; }
    /// Where the file lies; B_NO_INIT when the store has none.
    status_t GetRef(entry_ref* ref) const;
    /// The same also when the store has no file: where it would lie. Without any folder that is empty.
    const entry_ref& Place() const { return fRef; }
    bool IsCommon() const { return fCommon; }

    /// Why the file could not be read when it was looked at last, as it was left where it is: another process has it
    /// locked, it may not be read, the disk fails. B_OK when it was read, was kept aside, or is not there. The next
    /// Sync() keeps it aside before it writes.
    status_t UnreadStatus() const { return fUnreadStatus; }
    /// What could not be read since the last call, and what became of it.
    std::vector<StoreNote> TakeNotes();
    /// Has the next Sync() keep the store's file as it is now beside the new one: named after its version, or numbered
    /// when that is not 1 to 20 of 0-9, a-z and dots.
    void KeepOld(const char* version);

    /// For the owner of a key, when it reads that: removes a field of another type. Nobody can read it, and as long as
    /// it is there, whatever the owner sets fails. It comes from a damaged file or another version. Keys that have no
    /// owner here stay as they are.
    /// @return whether there is such a field now
    bool Claim(const char* name, type_code type);

    /// Each of these replaces the first value of the field, whatever its length, or adds the field. A field of the same
    /// name with another type stays, and the message's own error comes back.
    status_t SetBool(const char* name, bool value);
    status_t SetFloat(const char* name, float value);
    status_t SetInt8(const char* name, int8 value);
    status_t SetInt16(const char* name, int16 value);
    status_t SetInt32(const char* name, int32 value);
    status_t SetInt64(const char* name, int64 value);
    status_t SetString(const char* name, const char* value);
    status_t SetRect(const char* name, BRect value);
    status_t SetPoint(const char* name, BPoint value);
    status_t SetMessage(const char* name, const BMessage* value);
    status_t SetData(const char* name, type_code type, const void* data, ssize_t numBytes);

    /// The first error of those above since ForgetErrors(), or of NoteError(); B_OK when all have succeeded.
    status_t Error() const { return fError; }
    /// Something that belongs into the store could not be made or put there; B_OK changes nothing.
    /// @return the status
    status_t NoteError(status_t status);
    /// Everything is about to be put into the store anew.
    void ForgetErrors() { fError = B_OK; }

    /// The operations below need a file, else they return B_NO_INIT. Each tries six times to lock the file, 0.1 seconds
    /// apart, and then gives up with B_BUSY and everything as it was.

    /// Replaces the store's file by what the store holds; B_OK when that is on the disk. After an error the file from
    /// before is in its place again; if there was none, a part of the new one may stay.
    status_t Sync();
    /// Writes the store to an open file, at its position: the counterpart of LoadFrom().
    status_t SaveTo(BFile* file);
    /// Takes contents and code of the message in an open file; the store is unchanged when there is no whole one in it.
    status_t LoadFrom(BFile* file);
    /// Loads the store's file again, and puts in order what a writer that was killed left behind. The contents stay as
    /// they are when there is no whole store.
    status_t Revert();

private:
    void initialise(const char* name, bool common);

    entry_ref fRef;
    status_t fInitStatus = B_NO_INIT;
    status_t fUnreadStatus = B_OK;
    status_t fError = B_OK;
    bool fCommon;
    bool fReadOnly;
    std::vector<StoreNote> fNotes;
    std::shared_ptr<StoreFile> fFile; ///< what this store and its copies know of the file
};

/// The store that all users share, and the user's own. Made by the application; null where there is none.
extern Preferences* prefs_common;
extern Preferences* prefs_user;
