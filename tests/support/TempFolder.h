// SPDX-License-Identifier: MIT
#pragma once

#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <string>

/// A folder of the test's own, removed with everything in it when the test ends.
class TempFolder {
public:
    /// In memory, if the system has a folder there, writing to the disk takes no time.
    enum class Place { kDisk, kMemory };

    explicit TempFolder(Place place = Place::kDisk)
    {
        const std::filesystem::path memory = "/dev/shm";
        const bool inMemory = place == Place::kMemory && access(memory.c_str(), W_OK) == 0;
        std::string name = ((inMemory ? memory : std::filesystem::temp_directory_path()) / "qel-test-XXXXXX").string();
        if (mkdtemp(name.data()) == nullptr)
            std::abort();
        fPath = name;
    }
    ~TempFolder()
    {
        std::error_code ignored;
        std::filesystem::remove_all(fPath, ignored);
    }
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    const std::string& Path() const { return fPath; }
    std::string Path(const std::string& name) const { return fPath + "/" + name; }

    bool Has(const std::string& name) const
    {
        return std::filesystem::symlink_status(Path(name)).type() != std::filesystem::file_type::not_found;
    }

    /// The names in the folder.
    std::set<std::string> Names() const
    {
        std::set<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(fPath))
            names.insert(entry.path().filename().string());
        return names;
    }

    void Put(const std::string& name, const std::string& bytes) const
    {
        std::ofstream(Path(name), std::ios::binary | std::ios::trunc) << bytes;
    }

    std::string Get(const std::string& name) const
    {
        std::ifstream file(Path(name), std::ios::binary);
        return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    }

    /// Removes everything in the folder.
    void Clear() const
    {
        for (const auto& entry : std::filesystem::directory_iterator(fPath))
            std::filesystem::remove_all(entry.path());
    }

private:
    std::string fPath;
};
