// SPDX-License-Identifier: MIT
#include "kits/interface/platform/desktops/PlainPicture.h"

#include "kits/interface/platform/desktops/Environment.h"
#include "kits/storage/FindDirectory.h"
#include "kits/storage/Path.h"
#include "kits/storage/ReplaceFile.h"

#include <sys/stat.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>

namespace kits::PlainPicture {

namespace {

constexpr const char* kFolder = "/kits-desktop";
constexpr const char* kStart = "plain-";
constexpr const char* kKind = ".bmp";
constexpr size_t kDigits = 6;

constexpr int kLargest = 32767;

std::string Folder()
{
    const std::string settings = Environment::OwnSettings();
    return settings.empty() ? "" : settings + kFolder;
}

bool IsName(const std::string& name)
{
    const std::string start = kStart;
    return name.size() == start.size() + kDigits + std::string(kKind).size() && name.rfind(start, 0) == 0 &&
           name.find_first_not_of("0123456789abcdef", start.size()) == start.size() + kDigits &&
           name.compare(start.size() + kDigits, name.npos, kKind) == 0;
}

void Append(std::string& bytes, unsigned value, int size)
{
    for (int i = 0; i < size; i++)
        bytes += static_cast<char>(value >> (8 * i));
}

/// Returns a BMP whose palette has the colour as its only entry: each row is a few runs of that entry.
std::string BytesOf(rgb_color color, int width, int height)
{
    std::string row;
    for (int left = width; left > 0; left -= 255) {
        Append(row, static_cast<unsigned>(std::min(left, 255)), 1);
        Append(row, 0, 1);
    }
    std::string rows;
    for (int i = 0; i < height; i++) {
        rows += row;
        Append(rows, i + 1 < height ? 0x0000 : 0x0100, 2); // the end of a row, or of the picture
    }
    constexpr unsigned kHeader = 14;
    constexpr unsigned kFormat = 40;
    constexpr unsigned kStartOfRows = kHeader + kFormat + 4;
    std::string bytes = "BM";
    Append(bytes, kStartOfRows + static_cast<unsigned>(rows.size()), 4);
    Append(bytes, 0, 4);
    Append(bytes, kStartOfRows, 4);
    Append(bytes, kFormat, 4);
    Append(bytes, static_cast<unsigned>(width), 4);
    Append(bytes, static_cast<unsigned>(height), 4);
    Append(bytes, 1, 2); // planes
    Append(bytes, 8, 2); // bits per pixel
    Append(bytes, 1, 4); // runs of 8 bits
    Append(bytes, static_cast<unsigned>(rows.size()), 4);
    Append(bytes, 2835, 4); // pixels per metre
    Append(bytes, 2835, 4);
    Append(bytes, 1, 4); // entries
    Append(bytes, 0, 4);
    for (const uint8 part : {color.blue, color.green, color.red})
        Append(bytes, part, 1);
    Append(bytes, 0, 1);
    return bytes + rows;
}

} // namespace

std::string Put(rgb_color color, int width, int height)
{
    BPath settings;
    if (find_directory(B_COMMON_SETTINGS_DIRECTORY, &settings, true) != B_OK)
        return "";
    mkdir(Folder().c_str(), 0700);
    char name[32];
    std::snprintf(name, sizeof(name), "/%s%02x%02x%02x%s", kStart, color.red, color.green, color.blue, kKind);
    const std::string path = Folder() + name;
    const std::string bytes = BytesOf(color, std::clamp(width, 1, kLargest), std::clamp(height, 1, kLargest));
    return ReplaceFile(path.c_str(), bytes.data(), bytes.size()) == B_OK ? path : "";
}

std::string WithoutKind(const std::string& path)
{
    return path.substr(0, path.size() - std::string(kKind).size());
}

bool IsOne(const std::string& path)
{
    const std::string folder = Folder() + "/";
    return folder.size() > 1 && path.rfind(folder, 0) == 0 && IsName(path.substr(folder.size()));
}

void RemoveOthers(const std::vector<std::string>& used)
{
    std::error_code error;
    std::vector<std::string> unused;
    for (std::filesystem::directory_iterator entry(Folder(), error), end; !error && entry != end;
         entry.increment(error)) {
        const std::string path = entry->path();
        if (IsOne(path) && std::find(used.begin(), used.end(), path) == used.end())
            unused.push_back(path);
    }
    for (const std::string& path : unused)
        std::filesystem::remove(path, error);
    // Removes the folder only if it is empty.
    std::filesystem::remove(Folder(), error);
}

} // namespace kits::PlainPicture
