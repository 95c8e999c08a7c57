// SPDX-License-Identifier: MIT
#include "tests/src/prefs/store/StoreFixture.h"

#include <sys/stat.h>

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace {

/// One change of the disk, as it was requested.
struct Change {
    kits::FileCall call;
    int file = 0; ///< number of the file concerned
    std::string name{};
    std::string newName{};
    std::string data{};
    size_t position = 0; ///< also the size of a truncation
};

/// The content of a folder, by name.
using Files = std::map<std::string, std::string>;

/// Lists the changes made to one folder.
class Recorder : public kits::FailingDevice {
public:
    /// @param numbers  the numbers of the existing files, by name
    Recorder(const TempFolder& folder, const std::map<std::string, int>& numbers)
    {
        for (const auto& [name, number] : numbers) {
            struct stat info;
            EXPECT_EQ(stat(folder.Path(name).c_str(), &info), 0);
            fNumbers[info.st_ino] = number;
            fNextNumber = std::max(fNextNumber, number + 1);
        }
    }

    int Before(kits::FileAction&) override { return 0; }
    void After(const kits::FileAction& action, int64 result) override
    {
        using kits::FileCall;
        if (result < 0)
            return;
        Change change{.call = action.call, .name = Leaf(action.path), .newName = Leaf(action.newPath)};
        switch (action.call) {
        case FileCall::kCreate:
            change.file = NumberOf(static_cast<int>(result));
            break;
        case FileCall::kWrite:
            change.data.assign(static_cast<const char*>(action.data), static_cast<size_t>(result));
            change.position = static_cast<size_t>(action.position);
            change.file = NumberOf(action.descriptor);
            break;
        case FileCall::kTruncate:
            change.position = action.size;
            change.file = NumberOf(action.descriptor);
            break;
        case FileCall::kSync:
            change.file = NumberOf(action.descriptor);
            break;
        case FileCall::kRename:
        case FileCall::kRemove:
        case FileCall::kSyncDirectory:
            break;
        default:
            return;
        }
        fChanges.push_back(change);
    }

    const std::vector<Change>& Changes() const { return fChanges; }

private:
    static std::string Leaf(const char* path)
    {
        const std::string whole = path != nullptr ? path : "";
        return whole.substr(whole.rfind('/') + 1);
    }
    int NumberOf(int descriptor)
    {
        struct stat info;
        EXPECT_EQ(fstat(descriptor, &info), 0);
        const auto [found, isNew] = fNumbers.try_emplace(info.st_ino, fNextNumber);
        fNextNumber += isNew ? 1 : 0;
        return found->second;
    }

    std::map<ino_t, int> fNumbers;
    int fNextNumber = 0;
    std::vector<Change> fChanges;
};

/// A disk that may lose what was not synced: any of the names that were made, changed and removed, and all or some
/// bytes of a file, independently of its name.
class Disk {
public:
    using Names = std::map<std::string, int>;

    explicit Disk(const Files& files)
    {
        for (const auto& [name, content] : files) {
            const int number = static_cast<int>(fContents.size());
            fNames[name] = number;
            fContents[number] = {content, content};
        }
    }

    void Apply(const Change& change)
    {
        using kits::FileCall;
        Content& content = fContents[change.file];
        switch (change.call) {
        case FileCall::kCreate:
        case FileCall::kRename:
        case FileCall::kRemove:
            fPending.push_back(change);
            break;
        case FileCall::kWrite:
            content.now.resize(std::max(content.now.size(), change.position + change.data.size()));
            content.now.replace(change.position, change.data.size(), change.data);
            break;
        case FileCall::kTruncate:
            content.now.resize(change.position);
            break;
        case FileCall::kSync:
            content.synced = content.now;
            break;
        case FileCall::kSyncDirectory:
            fNames = CurrentNames();
            fPending.clear();
            break;
        default:
            break;
        }
    }

    /// Returns the names as running programs see them.
    Names CurrentNames() const { return With(~size_t{0}); }
    /// Returns the files as running programs see them.
    Files Current() const
    {
        Files files;
        for (const auto& [name, number] : CurrentNames())
            files[name] = fContents.at(number).now;
        return files;
    }
    /// Returns the possible states after a loss of power at this moment.
    std::set<Files> AfterPowerLoss() const
    {
        std::set<Files> all;
        for (size_t chosen = 0; chosen < size_t{1} << fPending.size(); ++chosen) {
            std::set<Files> some = {{}};
            for (const auto& [name, number] : With(chosen)) {
                std::set<Files> more;
                for (const Files& files : some) {
                    for (const std::string& content : Remains(fContents.at(number))) {
                        Files with = files;
                        with[name] = content;
                        more.insert(with);
                    }
                }
                some = more;
            }
            all.merge(some);
        }
        return all;
    }

private:
    struct Content {
        std::string now;
        std::string synced;
    };

    static std::set<std::string> Remains(const Content& content)
    {
        if (content.now == content.synced)
            return {content.now};
        const size_t half = content.now.size() / 2;
        return {content.now, content.synced, std::string(content.now.size(), '\0'), content.now.substr(0, half),
                content.now.substr(0, half) + std::string(content.now.size() - half, '\0')};
    }

    /// Returns the names with some of the changes that may not be on the disk yet, one bit for each.
    Names With(size_t chosen) const
    {
        Names names = fNames;
        for (size_t number = 0; number < fPending.size(); ++number) {
            const Change& change = fPending[number];
            if ((chosen >> number & 1) == 0)
                continue;
            if (change.call == kits::FileCall::kCreate) {
                names.try_emplace(change.name, change.file);
            } else if (change.call == kits::FileCall::kRemove) {
                names.erase(change.name);
            } else if (names.contains(change.name)) {
                names[change.newName] = names.at(change.name);
                names.erase(change.name);
            }
        }
        return names;
    }

    Names fNames; ///< those certainly on the disk
    std::vector<Change> fPending;
    std::map<int, Content> fContents;
};

/// The machine loses power at any moment while a store is written or put in order.
class StorePowerLossTest : public StoreFixture {
protected:
    void Make(const Files& files) const
    {
        fFolder.Clear();
        for (const auto& [name, content] : files)
            fFolder.Put(name, content);
    }

    /// Returns the changes that a function makes to a folder with the disk's content.
    template <class Body> std::vector<Change> Record(const Disk& disk, Body body) const
    {
        Make(disk.Current());
        Recorder recorder(fFolder, disk.CurrentNames());
        const WithDisk with(recorder);
        body();
        return recorder.Changes();
    }

    /// Checks what a start finds after any loss of power.
    void CheckAfterPowerLoss(const Disk& disk, int32 oldest, const std::string& moment)
    {
        for (const Files& files : disk.AfterPowerLoss()) {
            if (!fChecked.insert(files).second)
                continue;
            Make(files);
            const int32 number = NumberAtStart();
            std::string names;
            for (const auto& [name, content] : files)
                names += " " + name + ":" + std::to_string(content.size());
            ASSERT_TRUE(number == oldest || number == 2) << moment << ":" << names << ": " << number;
        }
    }

    std::set<Files> fChecked;
};

} // namespace

TEST_F(StorePowerLossTest, WhileAStoreIsReplaced)
{
    const std::string old = BytesOf(1);
    Disk disk({{kFile, old}});
    const std::vector<Change> changes = Record(disk, [] {
        Preferences store(kName, false);
        Fill(store, 2);
        ASSERT_EQ(store.Sync(), B_OK);
    });
    EXPECT_GT(changes.size(), 6u);
    testing::internal::CaptureStderr();
    for (size_t step = 0; step < changes.size(); ++step) {
        disk.Apply(changes[step]);
        CheckAfterPowerLoss(disk, 1, "after step " + std::to_string(step));
    }
    testing::internal::GetCapturedStderr();
    for (const Files& files : disk.AfterPowerLoss()) {
        Make(files);
        EXPECT_EQ(NumberAtStart(), 2) << "what Sync has promised is there";
    }
}

TEST_F(StorePowerLossTest, WhileTheFirstStoreEverIsWritten)
{
    Disk disk(Files{});
    const std::vector<Change> changes = Record(disk, [] {
        Preferences store(kName, false);
        Fill(store, 2);
        ASSERT_EQ(store.Sync(), B_OK);
    });
    testing::internal::CaptureStderr();
    for (size_t step = 0; step < changes.size(); ++step) {
        disk.Apply(changes[step]);
        CheckAfterPowerLoss(disk, -1, "after step " + std::to_string(step));
    }
    testing::internal::GetCapturedStderr();
    for (const Files& files : disk.AfterPowerLoss()) {
        Make(files);
        EXPECT_EQ(NumberAtStart(), 2);
    }
}

TEST_F(StorePowerLossTest, WhileAStartPutsInOrderWhatAKilledWriterLeft)
{
    const std::string old = BytesOf(1);
    Disk disk({{kFile, old}});
    const std::vector<Change> changes = Record(disk, [] {
        Preferences store(kName, false);
        Fill(store, 2);
        store.Sync();
    });
    testing::internal::CaptureStderr();
    for (size_t killedAt = 0; killedAt < changes.size(); ++killedAt) {
        disk.Apply(changes[killedAt]);
        Disk repaired = disk;
        const std::vector<Change> repairs = Record(disk, [] { const Preferences store(kName, false); });
        for (size_t step = 0; step < repairs.size(); ++step) {
            repaired.Apply(repairs[step]);
            CheckAfterPowerLoss(repaired, 1,
                                "killed after step " + std::to_string(killedAt) + ", repaired up to " +
                                    std::to_string(step));
        }
    }
    testing::internal::GetCapturedStderr();
}

TEST_F(StorePowerLossTest, TheCheckFindsAWriterThatDoesNotSync)
{
    const std::string old = BytesOf(1);
    const std::string next = BytesOf(2);
    Disk disk({{kFile, old}});
    disk.Apply({.call = kits::FileCall::kTruncate});
    disk.Apply({.call = kits::FileCall::kWrite, .data = next});
    std::set<int32> found;
    testing::internal::CaptureStderr();
    for (const Files& files : disk.AfterPowerLoss()) {
        Make(files);
        found.insert(NumberAtStart());
    }
    testing::internal::GetCapturedStderr();
    EXPECT_EQ(found, (std::set<int32>{-1, 1, 2}));
}
