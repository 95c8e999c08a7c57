// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/Field.h"
#include "kits/storage/Entry.h"
#include "src/prefs/store/StoreNote.h"

#include <memory>
#include <string>
#include <vector>

class BFile;
class StoreFile;

/// A settings store: a message that knows its file, reads itself from it and writes itself back. It knows nothing about
/// its keys: code that reads a value provides the default. It is read with BMessage's own finders.
///
/// The file lies in the settings folder (B_COMMON_SETTINGS_DIRECTORY) and is named after the last part of the store's
/// name, with ".common" for what all users share and ".user" for the user's own; both lie in the same folder. It holds
/// the flattened message and nothing else. While it is written, the previous file is kept beside it, with ".backup" at
/// its end, and removed only when the new one is on the disk: whatever happens in between, the next start finds one of
/// the two whole (StoreFile has the steps). A file that cannot be read is never lost either: it is kept beside the new
/// one, with ".kept" at its end, and a line on stderr says so.
///
/// Destroying a store writes nothing. It has no lock: one thread at a time. A copy is a store of its own over the same
/// file, for writing on another thread (StoreWriter).
class Preferences : public BMessage {
public:
    /// Finds the file and loads it; if it is missing, the store is empty. Without a settings folder the store works in
    /// memory. Waits for another process that holds the file locked, half a second at most.
    /// @param name      for example the application's signature; the part after its last slash is used
    /// @param common    whether it is the store that all users share
    /// @param readOnly  changes nothing on the disk: creates no folder, repairs nothing, and Sync() refuses
    Preferences(const char* name, bool common, bool readOnly = false);
    Preferences(const Preferences& other);
    Preferences& operator=(const Preferences& other) = delete;
    ~Preferences() override;

    /// B_OK if the store has a file, which need not exist; otherwise the error of finding or creating the folder.
    status_t InitCheck() const { return fInitStatus; }
    /// Returns the path of the file; B_NO_INIT if the store has none.
    status_t GetRef(entry_ref* ref) const;
    /// Returns the path of the file, or the path that it would have. Empty without any folder.
    const entry_ref& Place() const { return fRef; }
    bool IsCommon() const { return fCommon; }

    /// Why the file could not be read at the last attempt, if it was left in place: another process has it locked, it
    /// may not be read, or the disk fails. B_OK if it was read, was kept aside, or does not exist. The next Sync()
    /// keeps it aside before it writes.
    status_t UnreadStatus() const { return fUnreadStatus; }
    /// Returns the files that could not be read since the last call, and what was done with them.
    std::vector<StoreNote> TakeNotes();
    /// Makes the next Sync() keep the store's present file beside the new one: named after its version, or numbered if
    /// that is not 1 to 20 of 0-9, a-z and dots.
    void KeepOld(const char* version);

    /// The owner of a key calls it before reading the key: removes a field of another type. Nobody can read such a
    /// field, and while it is there, every Set call of the owner fails. It comes from a damaged file or another
    /// version. Keys without an owner stay.
    /// @return whether there is such a field now
    bool Claim(const kits::AnyField& field);

    /// Replaces the first value of the field, whatever its length, or adds the field. If a field of the same name has
    /// another type, that stays, and the message's error is returned.
    template <class Field, class Value> status_t Set(const Field& field, const Value& value)
    {
        return NoteError(field.Set(this, value));
    }

    /// Returns the first error of Set() or NoteError() since ForgetErrors(), or B_OK.
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
    /// Takes contents and code of the message in an open file; the store stays unchanged if the file contains no whole
    /// one.
    status_t LoadFrom(BFile* file);
    /// Loads the store's file again, and repairs what a killed writer has left. The contents stay unchanged if there is
    /// no whole store.
    status_t Revert();

private:
    entry_ref fRef;
    status_t fInitStatus = B_NO_INIT;
    status_t fUnreadStatus = B_OK;
    status_t fError = B_OK;
    bool fCommon;
    bool fReadOnly;
    std::vector<StoreNote> fNotes;
    std::shared_ptr<StoreFile> fFile; ///< what this store and its copies know of the file
};

/// The version of the program that wrote the store.
inline const kits::Field<std::string> kVersionField("Version", 0, kits::kMostNumber);

/// The store that all users share, and the user's own. Made by the application; null where there is none.
extern Preferences* prefs_common;
extern Preferences* prefs_user;
