// SPDX-License-Identifier: MIT
#include "kits/storage/files/Attributes.h"

#include "kits/kernel/Bounds.h"
#include "kits/storage/files/FileCallsPrivate.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <compare>
#include <map>
#include <mutex>
#include <string>

namespace kits {

namespace {

/// Identifies a file for as long as it exists: its place on the disk may be given to another file later, which has
/// another time of birth.
struct FileKey {
    uint32 major = 0;
    uint32 minor = 0;
    uint64 inode = 0;
    int64 birthSeconds = 0;
    uint32 birthNanoseconds = 0;

    auto operator<=>(const FileKey&) const = default;
};

/// Attributes that this process remembers for file systems without attributes.
class Table {
public:
    bool Find(const FileKey& key, const std::string& name, std::vector<uint8>* bytes)
    {
        const std::lock_guard lock(fLock);
        const auto found = fValues.find({key, name});
        if (found == fValues.end())
            return false;
        *bytes = found->second;
        return true;
    }

    status_t Put(const FileKey& key, const std::string& name, const std::vector<uint8>& bytes)
    {
        const std::lock_guard lock(fLock);
        std::vector<uint8>& value = fValues[{key, name}];
        if (fTotal - value.size() + bytes.size() > bounds::kMostAttributes)
            return B_DEVICE_FULL;
        fTotal += bytes.size() - value.size();
        value = bytes;
        return B_OK;
    }

    bool Remove(const FileKey& key, const std::string& name)
    {
        const std::lock_guard lock(fLock);
        const auto found = fValues.find({key, name});
        if (found == fValues.end())
            return false;
        fTotal -= found->second.size();
        fValues.erase(found);
        return true;
    }

private:
    /// Deleted files leave their values here, so the size is limited.

    std::mutex fLock;
    std::map<std::pair<FileKey, std::string>, std::vector<uint8>> fValues;
    size_t fTotal = 0;
};

Table& ProcessTable()
{
    static Table sTable;
    return sTable;
}

status_t KeyOf(int descriptor, FileKey* key)
{
    struct statx info;
    if (statx(descriptor, "", AT_EMPTY_PATH, STATX_INO | STATX_BTIME, &info) != 0)
        return StatusFromErrno(errno);
    *key = {.major = info.stx_dev_major, .minor = info.stx_dev_minor, .inode = info.stx_ino};
    if ((info.stx_mask & STATX_BTIME) != 0) {
        key->birthSeconds = info.stx_btime.tv_sec;
        key->birthNanoseconds = info.stx_btime.tv_nsec;
    }
    return B_OK;
}

/// Determines the key of an attribute, here and in the file system.
status_t Identify(int descriptor, const char* name, FileKey* key, std::string* systemName)
{
    if (name == nullptr || *name == '\0')
        return B_BAD_VALUE;
    *systemName = std::string("user.") + name;
    return systemName->size() < B_FILE_NAME_LENGTH ? KeyOf(descriptor, key) : B_NAME_TOO_LONG;
}

/// Puts the type before the value, first character first.
std::vector<uint8> Pack(const Attribute& attribute)
{
    std::vector<uint8> bytes = {static_cast<uint8>(attribute.type >> 24), static_cast<uint8>(attribute.type >> 16),
                                static_cast<uint8>(attribute.type >> 8), static_cast<uint8>(attribute.type)};
    bytes.insert(bytes.end(), attribute.value.begin(), attribute.value.end());
    return bytes;
}

/// Another program may have stored anything under the name.
status_t Unpack(const std::vector<uint8>& bytes, Attribute* attribute)
{
    if (bytes.size() < sizeof(type_code))
        return B_BAD_VALUE;
    attribute->type = static_cast<type_code>(bytes[0]) << 24 | static_cast<type_code>(bytes[1]) << 16 |
                      static_cast<type_code>(bytes[2]) << 8 | bytes[3];
    attribute->value.assign(bytes.begin() + sizeof(type_code), bytes.end());
    return B_OK;
}

} // namespace

status_t LoadAttribute(int descriptor, const char* name, Attribute* attribute)
{
    std::string systemName;
    FileKey key;
    if (const status_t status = Identify(descriptor, name, &key, &systemName); status != B_OK)
        return status;
    std::vector<uint8> bytes;
    // A remembered value is newer: it was written when the file system refused it.
    if (!ProcessTable().Find(key, systemName, &bytes)) {
        bytes.resize(sizeof(type_code) + kMaxAttributeSize);
        const ssize_t size = ReadAttribute(descriptor, systemName.c_str(), bytes.data(), bytes.size());
        if (size < 0)
            return size == B_UNSUPPORTED ? B_ENTRY_NOT_FOUND : static_cast<status_t>(size);
        bytes.resize(static_cast<size_t>(size));
    }
    return Unpack(bytes, attribute);
}

status_t StoreAttribute(int descriptor, const char* name, const Attribute& attribute)
{
    std::string systemName;
    FileKey key;
    status_t status = Identify(descriptor, name, &key, &systemName);
    if (status != B_OK)
        return status;
    const std::vector<uint8> bytes = Pack(attribute);
    status = WriteAttribute(descriptor, systemName.c_str(), bytes.data(), bytes.size());
    if (status == B_UNSUPPORTED)
        return ProcessTable().Put(key, systemName, bytes);
    if (status == B_OK)
        ProcessTable().Remove(key, systemName);
    return status;
}

} // namespace kits
