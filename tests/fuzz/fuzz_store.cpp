// SPDX-License-Identifier: MIT
#include "kits/application/Message.h"
#include "src/prefs/store/Preferences.h"
#include "tests/fuzz/Fuzz.h"
#include "tests/support/Disks.h"
#include "tests/support/MemoryStream.h"
#include "tests/support/TempFolder.h"

#include <cstdio>
#include <string>

namespace {

constexpr const char* kName = "fuzz";
constexpr const char* kFile = "fuzz.user";
constexpr const char* kBackup = "fuzz.user.backup";

/// Lines about kept files would drown those of the fuzzer.
class Quiet {
public:
    Quiet() { stderr = sNothing; }
    ~Quiet() { stderr = fBefore; }

private:
    static inline std::FILE* const sNothing = std::fopen("/dev/null", "w");
    std::FILE* const fBefore = stderr;
};

bool IsWhole(const std::string& bytes, BMessage* message)
{
    test::MemoryStream stream;
    stream.bytes = bytes;
    return message->Unflatten(&stream) == B_OK;
}

bool IsKept(const TempFolder& folder, const std::string& bytes)
{
    for (const std::string& name : folder.Names())
        if (folder.Get(name) == bytes)
            return true;
    return false;
}

void CheckStart(const TempFolder& folder, const std::string& main, const std::string& backup, int failAt)
{
    folder.Clear();
    folder.Put(kFile, main);
    folder.Put(kBackup, backup);
    BMessage wholeMain;
    BMessage wholeBackup;
    const bool isMainWhole = IsWhole(main, &wholeMain);
    const bool isBackupWhole = IsWhole(backup, &wholeBackup);

    const Quiet quiet;
    FailingDisk disk(failAt, EIO, 1);
    {
        const WithDisk with(disk);
        const Preferences first(kName, false);
    }
    Preferences store(kName, false);
    const bool hasFailed = failAt < disk.Calls();
    if (!hasFailed) {
        if (isMainWhole)
            Expect(store.HasSameData(wholeMain));
        else if (isBackupWhole)
            Expect(store.HasSameData(wholeBackup));
        else
            Expect(store.IsEmpty());
    }
    store.AddInt32("Number", 1);
    Expect(store.Sync() == B_OK || store.FlattenedSize() < 0);
    Expect(!folder.Has(kBackup));
    // Whole files were read, and everything else is still there.
    if (!isMainWhole && !main.empty())
        Expect(IsKept(folder, main));
    if (!isMainWhole && !isBackupWhole && !backup.empty())
        Expect(IsKept(folder, backup));
}

} // namespace

// The first byte says which call fails, the next two give the length of the file; then come the file and its backup.
int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    if (size < 3)
        return 0;
    static const TempFolder sFolder(TempFolder::Place::kMemory);
    setenv("XDG_CONFIG_HOME", sFolder.Path().c_str(), 1);
    const std::string bytes(TextOf(data + 3, size - 3));
    const size_t length = std::min<size_t>(data[1] | data[2] << 8, bytes.size());
    CheckStart(sFolder, bytes.substr(0, length), bytes.substr(length), data[0]);
    return 0;
}
