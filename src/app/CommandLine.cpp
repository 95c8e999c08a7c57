// SPDX-License-Identifier: MIT
#include "src/app/CommandLine.h"

#include "src/sampling/Sysinfo.h"
#include "src/support/OneLine.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <filesystem>
#include <iterator>
#include <optional>
#include <string_view>
#include <system_error>

namespace {

constexpr double kLongestWait = 86'400;
constexpr double kShortestInterval = 0.001;
constexpr int32 kMostSamples = 1'000'000'000;
constexpr double kShortestDelay = Sysinfo::kMinDelay / 1e6;
constexpr double kLongestDelay = Sysinfo::kMaxDelay / 1e6;

template <typename Number> std::optional<Number> ParseNumber(std::string_view text)
{
    Number value{};
    auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size())
        return std::nullopt;
    return value;
}

/// Steps through the arguments, with the values of options.
class Arguments {
public:
    Arguments(int count, const char* const* values)
        : fCount(count)
        , fValues(values)
    {
    }

    bool Next()
    {
        if (fIndex + 1 >= fCount)
            return false;
        fArgument = fValues[++fIndex];
        fInline.reset();
        if (size_t equals = fArgument.find('='); fArgument.starts_with("--") && equals != std::string_view::npos) {
            fInline = fArgument.substr(equals + 1);
            fArgument = fArgument.substr(0, equals);
        }
        return true;
    }

    std::string_view Option() const { return fArgument; }
    bool HasInlineValue() const { return fInline.has_value(); }

    std::optional<std::string_view> Value()
    {
        if (fInline)
            return fInline;
        if (fIndex + 1 >= fCount)
            return std::nullopt;
        return fValues[++fIndex];
    }

private:
    int fCount;
    const char* const* fValues;
    int fIndex = 0;
    std::string_view fArgument;
    std::optional<std::string_view> fInline;
};

std::string Quoted(std::string_view text)
{
    return "'" + OneLine(std::string(text)) + "'";
}

bigtime_t Microseconds(double seconds)
{
    return std::llround(seconds * 1'000'000);
}

/// Options seen so far, beyond their final meaning.
struct Seen {
    bool help = false, version = false, snapshot = false, read = false;
    std::string_view snapshotOption, readOption; // the last options that require those two; empty if there was none
    std::string_view tellOption;                 // the last option for the running program; empty if there was none
};

/// An option whose value is a number.
struct NumberOption {
    std::string_view name;
    std::string_view Seen::*seenAs; // takes its name
    bool isWhole;
    double least;
    double most;
    const char* range; // in words
    void (*set)(CommandLine& line, double number);
};

constexpr NumberOption kNumberOptions[] = {
    {"--after", &Seen::snapshotOption, false, 0, kLongestWait, "seconds from 0 to 86400",
     [](CommandLine& line, double number) { line.snapshotAfter = Microseconds(number); }},
    {"--samples", &Seen::readOption, true, 1, kMostSamples, "a whole number from 1 to 1000000000",
     [](CommandLine& line, double number) { line.samples = static_cast<int32>(number); }},
    {"--interval", &Seen::readOption, false, kShortestInterval, kLongestWait, "seconds from 0.001 to 86400",
     [](CommandLine& line, double number) { line.interval = Microseconds(number); }},
    {"--set-delay", &Seen::tellOption, false, kShortestDelay, kLongestDelay, "seconds from 0.01 to 5",
     [](CommandLine& line, double number) { line.setDelay = Microseconds(number); }},
    {"--set-history", &Seen::tellOption, true, 2, Sysinfo::kMaxNodesToKeep, "a whole number from 2 to 200",
     [](CommandLine& line, double number) { line.setHistory = static_cast<int16>(number); }},
};

/// @return an error message, or an empty text if the value is valid
std::string ReadNumber(const NumberOption& option, std::string_view value, CommandLine& line, Seen& seen)
{
    seen.*option.seenAs = option.name;
    const std::optional<double> number =
        option.isWhole ? std::optional<double>(ParseNumber<int32>(value)) : ParseNumber<double>(value);
    if (!number || !(*number >= option.least && *number <= option.most))
        return std::string(option.name) + " needs " + option.range + ", not " + Quoted(value);
    option.set(line, *number);
    return {};
}

/// @return an error message, or an empty text if the value is valid
std::string ReadOption(Arguments& arguments, CommandLine& line, Seen& seen)
{
    const std::string_view option = arguments.Option();
    bool* const noValue = option == "--help"      ? &seen.help
                          : option == "--version" ? &seen.version
                          : option == "--read"    ? &seen.read
                          : option == "--json"    ? &line.json
                          : option == "--quit"    ? &line.quit
                                                  : nullptr;
    if (noValue != nullptr) {
        if (arguments.HasInlineValue())
            return std::string(option) + " takes no value";
        *noValue = true;
        if (option == "--json")
            seen.readOption = option;
        return {};
    }
    const NumberOption* numberOption = std::ranges::find(kNumberOptions, option, &NumberOption::name);
    const bool isNumber = numberOption != std::end(kNumberOptions);
    if (!isNumber && option != "--snapshot")
        return (option.starts_with('-') ? "unknown option " : "unexpected argument ") + Quoted(option);

    const std::optional<std::string_view> value = arguments.Value();
    if (!value || value->empty())
        return std::string(option) + " needs a value";
    if (isNumber)
        return ReadNumber(*numberOption, *value, line, seen);
    seen.snapshot = true;
    std::error_code error;
    line.snapshotFile = std::filesystem::absolute(*value, error).string();
    return error ? "cannot tell the working directory: " + error.message() : std::string();
}

} // namespace

CommandLine ParseCommandLine(int argc, const char* const* argv)
{
    CommandLine line;
    Seen seen;
    Arguments arguments(argc, argv);
    while (line.error.empty() && arguments.Next())
        line.error = ReadOption(arguments, line, seen);
    if (!line.error.empty())
        return line;

    const bool tells = line.quit || !seen.tellOption.empty();
    if (seen.help) {
        line.action = CommandLine::Action::kHelp;
    } else if (seen.version) {
        line.action = CommandLine::Action::kVersion;
    } else if (seen.snapshot + seen.read + tells > 1) {
        line.error = tells ? "what tells the running program something excludes --snapshot and --read"
                           : "--snapshot and --read exclude each other";
    } else if (!seen.snapshotOption.empty() && !seen.snapshot) {
        line.error = std::string(seen.snapshotOption) + " needs --snapshot";
    } else if (!seen.readOption.empty() && !seen.read) {
        line.error = std::string(seen.readOption) + " needs --read";
    } else if (seen.snapshot) {
        line.action = CommandLine::Action::kSnapshot;
    } else if (seen.read) {
        line.action = CommandLine::Action::kRead;
    } else if (tells) {
        line.action = CommandLine::Action::kTell;
    }
    return line;
}

const char* HelpText()
{
    return "Usage: qel [OPTION]...\n"
           "Shows what this machine is doing, as charts in a window.\n"
           "\n"
           "  --snapshot FILE      open the window, save a picture of it, and quit\n"
           "    --after SECONDS    how long the charts run before that (2)\n"
           "  --read               print what the charts would show, without a window\n"
           "    --samples N        how many samples (1)\n"
           "    --interval SECONDS time between samples (as set in the window, else 0.2)\n"
           "    --json             one line of JSON a sample, with the averaged sources too\n"
           "  --set-delay SECONDS  have the running program take a sample this often (0.01 to 5)\n"
           "  --set-history N      have it average over so many samples (2 to 200)\n"
           "  --quit               have it quit\n"
           "  --help               print this and quit\n"
           "  --version            print the version and quit\n"
           "\n"
           "A second start brings the window of the first one to the front.\n"
           "--snapshot and --read use the settings of the window and change nothing.\n"
           "Exit status: 0 when all went well, 1 when something failed (no display, a file\n"
           "that cannot be written, no running program to tell), 2 when an option is wrong.\n";
}
