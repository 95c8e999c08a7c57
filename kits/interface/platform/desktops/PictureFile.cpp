// SPDX-License-Identifier: MIT
#include "kits/interface/platform/desktops/PictureFile.h"

#include "kits/interface/platform/desktops/Slideshow.h"
#include "kits/interface/platform/desktops/Tool.h"
#include "kits/kernel/Bounds.h"
#include "kits/storage/ReadSmallFile.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <cstdio>
#include <ctime>
#include <deque>
#include <filesystem>
#include <mutex>
#include <string_view>
#include <utility>
#include <vector>

namespace kits {

namespace {

constexpr const char* kProgram = "average-picture";

thread_local int sStop = -1;

/// Components from 0 to 65535, the colours multiplied by the opacity.
struct Average {
    unsigned red = 0;
    unsigned green = 0;
    unsigned blue = 0;
    unsigned alpha = 0;
};

/// The state of files, which differs if their contents may differ.
using State = std::string;

/// The last answers, newest first, and the program that reads.
struct Memory {
    std::mutex mutex;
    std::string program;
    std::deque<std::pair<State, std::optional<Average>>> answers;

    static Memory& Get()
    {
        // Never destroyed: threads may still ask while the process ends.
        static Memory& memory = *new Memory;
        return memory;
    }
};

/// Returns the byte for which "%41" stands at a place of the text; nothing if there is no coded byte.
std::optional<char> CodedAt(std::string_view text, size_t place)
{
    unsigned value = 0;
    const char* const end = text.data() + place + 3;
    if (place + 2 >= text.size() || text[place] != '%' || std::from_chars(end - 2, end, value, 16).ptr != end)
        return std::nullopt;
    return static_cast<char>(value);
}

/// Returns the path of the picture that a slideshow shows now; for any other file its own path.
std::string PictureOf(const std::string& path)
{
    std::error_code error;
    if (!path.ends_with(".xml") || !std::filesystem::is_regular_file(path, error))
        return path;
    const std::string text = ReadSmallFile(path, bounds::kMostForeignSettings).value_or("");
    const time_t now = std::time(nullptr);
    tm local{};
    localtime_r(&now, &local);
    return SlideAt(text, int64{now} + local.tm_gmtoff);
}

/// Returns the files that may be the picture, in the order in which they are tried.
std::vector<std::string> FilesAt(const std::string& location)
{
    const std::string path = PictureOf(location);
    std::error_code error;
    if (!std::filesystem::is_directory(path, error))
        return {path};
    std::vector<std::string> files;
    for (const char* folder : {"/contents/images", ""}) {
        const std::vector<std::string> found = FilesOf(path + folder);
        const size_t count = std::min(found.size(), bounds::kMostPictureFiles);
        files.insert(files.end(), found.begin(), found.begin() + static_cast<ptrdiff_t>(count));
    }
    return files;
}

/// Removes everything except regular files.
State StateOf(std::vector<std::string>* files)
{
    State state;
    std::erase_if(*files, [&](const std::string& file) {
        struct stat status;
        if (stat(file.c_str(), &status) != 0 || !S_ISREG(status.st_mode))
            return true;
        char numbers[128];
        std::snprintf(numbers, sizeof(numbers), "/%ju/%ju/%jd/%jd.%09ld/", uintmax_t{status.st_dev},
                      uintmax_t{status.st_ino}, intmax_t{status.st_size}, intmax_t{status.st_mtim.tv_sec},
                      status.st_mtim.tv_nsec);
        state += file + numbers;
        return false;
    });
    return state;
}

std::string FindProgram()
{
    std::error_code error;
    const std::filesystem::path folder = std::filesystem::read_symlink("/proc/self/exe", error).parent_path();
    for (const std::filesystem::path& place : {folder / KITS_PROGRAMS_FOLDER, folder})
        if (access((place / kProgram).c_str(), X_OK) == 0)
            return (place / kProgram).string();
    return {};
}

std::optional<Average> Parse(const std::string& printed)
{
    Average average;
    const bool isWhole =
        std::sscanf(printed.c_str(), "%u %u %u %u", &average.red, &average.green, &average.blue, &average.alpha) == 4;
    const unsigned most = std::max({average.red, average.green, average.blue, average.alpha});
    return isWhole && most <= 65535 ? std::optional(average) : std::nullopt;
}

std::optional<Average> AverageOfFiles(std::vector<std::string> files)
{
    const State state = StateOf(&files);
    if (files.empty())
        return std::nullopt;
    Memory& memory = Memory::Get();
    std::string program;
    {
        const std::lock_guard lock(memory.mutex);
        const auto kept = std::find_if(memory.answers.begin(), memory.answers.end(),
                                       [&](const auto& answer) { return answer.first == state; });
        if (kept != memory.answers.end())
            return kept->second;
        program = memory.program;
    }
    if (program.empty())
        program = FindProgram();
    if (program.empty())
        return std::nullopt;
    std::vector<std::string> arguments = {program};
    arguments.insert(arguments.end(), files.begin(), files.end());
    std::string printed;
    const Tool::Ending ending = Tool::Run(arguments, bounds::kLongestPicture, sStop, &printed);
    // Next time the machine may be less busy.
    if (ending == Tool::Ending::kGivenUp)
        return std::nullopt;
    const std::optional<Average> average = ending == Tool::Ending::kGood ? Parse(printed) : std::nullopt;
    const std::lock_guard lock(memory.mutex);
    memory.answers.emplace_front(state, average);
    memory.answers.resize(std::min(memory.answers.size(), bounds::kMostPictureAnswers));
    return average;
}

} // namespace

std::string PathOf(const std::string& location)
{
    constexpr std::string_view kScheme = "file:";
    if (!location.starts_with(kScheme))
        return location;
    std::string_view text = std::string_view(location).substr(kScheme.size());
    // "file://host/path", if the host is this one.
    if (text.starts_with("//"))
        text.remove_prefix(std::min(text.find('/', 2), text.size()));
    std::string path;
    for (size_t i = 0; i < text.size(); i++) {
        const std::optional<char> coded = CodedAt(text, i);
        path += coded.value_or(text[i]);
        i += coded ? 2 : 0;
    }
    return path;
}

std::vector<std::string> FilesOf(const std::string& folder)
{
    std::vector<std::string> files;
    std::error_code error;
    size_t count = 0;
    for (auto entry = std::filesystem::directory_iterator(folder, error);
         !error && entry != std::filesystem::directory_iterator() && count < bounds::kMostWallpaperEntries;
         entry.increment(error), ++count) {
        std::error_code none;
        if (entry->is_regular_file(none))
            files.push_back(entry->path().string());
    }
    std::sort(files.begin(), files.end());
    return files;
}

std::optional<rgb_color> AverageOfFile(const std::string& location, rgb_color behind)
{
    const std::optional<Average> average = AverageOfFiles(FilesAt(PathOf(location)));
    if (!average)
        return std::nullopt;
    const auto part = [&](unsigned own, uint8 below) {
        const unsigned shining = below * 257 * (65535 - average->alpha) / 65535;
        return static_cast<uint8>(std::min((own + shining + 128) / 257, 255u));
    };
    return make_color(part(average->red, behind.red), part(average->green, behind.green),
                      part(average->blue, behind.blue));
}

PictureStop::PictureStop(int descriptor)
    : fOuter(std::exchange(sStop, descriptor))
{
}

PictureStop::~PictureStop()
{
    sStop = fOuter;
}

void SetPictureReader(const std::string& program)
{
    Memory& memory = Memory::Get();
    const std::lock_guard lock(memory.mutex);
    memory.program = program;
    memory.answers.clear();
}

} // namespace kits
