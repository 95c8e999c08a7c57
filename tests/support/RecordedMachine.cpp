// SPDX-License-Identifier: MIT
#include "tests/support/RecordedMachine.h"

#include <gtest/gtest.h>
#include <stdlib.h>

#include <fstream>
#include <sstream>

namespace fs = std::filesystem;

namespace {

fs::path MakeFolder()
{
    std::string name = (fs::temp_directory_path() / "machine-XXXXXX").string();
    EXPECT_NE(mkdtemp(name.data()), nullptr);
    return name;
}

} // namespace

fs::path MachineFolder(const std::string& name)
{
    return fs::path(QEL_TEST_DATA) / "machines" / name;
}

RecordedMachine::RecordedMachine(const std::string& name)
    : fRoot(MakeFolder())
{
    fs::copy(MachineFolder(name), fRoot, fs::copy_options::recursive);
}

RecordedMachine::RecordedMachine(int processors)
    : fRoot(MakeFolder())
{
    WriteProcessors(std::vector<long long>(static_cast<size_t>(processors), 0));
}

RecordedMachine::~RecordedMachine()
{
    std::error_code ignored;
    fs::remove_all(fRoot, ignored);
}

void RecordedMachine::Write(const std::string& name, const std::string& text) const
{
    fs::create_directories((fRoot / name).parent_path());
    std::ofstream(fRoot / name, std::ios::trunc) << text;
}

std::string RecordedMachine::Text(const std::string& name) const
{
    std::ostringstream text;
    text << std::ifstream(fRoot / name).rdbuf();
    return text.str();
}

void RecordedMachine::Remove(const std::string& name) const
{
    fs::remove_all(fRoot / name);
}

void RecordedMachine::Replace(const std::string& name, const std::string& from, const std::string& to) const
{
    std::string text = Text(name);
    const size_t at = text.find(from);
    ASSERT_NE(at, std::string::npos) << name << " has no " << from;
    Write(name, text.replace(at, from.size(), to));
}

void RecordedMachine::WriteProcessors(const std::vector<long long>& userTicks) const
{
    std::ostringstream text;
    text << "cpu  0 0 0 0 0 0 0 0 0 0\n";
    for (size_t i = 0; i < userTicks.size(); ++i)
        if (userTicks[i] >= 0)
            text << "cpu" << i << ' ' << userTicks[i] << " 0 0 1000000 20 0 0 0 0 0\n";
    text << "intr 0\nctxt 1\nbtime 1735725600\n";
    Write("proc/stat", text.str());
}
