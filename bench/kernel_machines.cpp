// SPDX-License-Identifier: MIT
#include "bench/kernel_machines.h"

#include <dirent.h>
#include <fcntl.h>
#include <stdlib.h>
#include <sys/sem.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <random>

namespace fs = std::filesystem;

namespace {

constexpr int kMoments = 16;
constexpr int kFields = 10;

void Check(bool isGood, const char* what)
{
    if (isGood)
        return;
    perror(what);
    exit(1);
}

} // namespace

BusyMachine::BusyMachine(int processors)
{
    fRoot = (fs::temp_directory_path() / "bench-XXXXXX").string();
    Check(mkdtemp(fRoot.data()) != nullptr, "mkdtemp");

    std::mt19937 random(static_cast<unsigned>(processors));
    std::vector<unsigned long long> ticks(static_cast<size_t>(processors) * kFields);
    // A machine that has been up for some days: most time is idle, some fields never count.
    const unsigned largest[kFields] = {4000000, 60000, 900000, 200000000, 80000, 0, 90000, 300, 0, 0};
    for (size_t i = 0; i < ticks.size(); ++i)
        ticks[i] = largest[i % kFields] != 0 ? random() % largest[i % kFields] : 0;
    for (int moment = 0; moment < kMoments; ++moment) {
        std::string text = "cpu  0 0 0 0 0 0 0 0 0 0\n";
        for (int i = 0; i < processors; ++i) {
            text += "cpu" + std::to_string(i);
            for (int field = 0; field < kFields; ++field) {
                unsigned long long& count = ticks[static_cast<size_t>(i * kFields + field)];
                count += largest[field] != 0 ? random() % 20 : 0;
                text += ' ' + std::to_string(count);
            }
            text += '\n';
        }
        fMoments.push_back(text + "intr 182779 0 0 0 0 0 0 0 0\nctxt 395719\nbtime 1735725600\n");
    }

    Write("proc/stat", fMoments[0]);
    Write("proc/meminfo", "MemTotal:       24684084 kB\nMemFree:        24494312 kB\nMemAvailable:   24412500 kB\n");
    std::string vmstat;
    for (int i = 0; i < 95; ++i)
        vmstat += "nr_some_counter_" + std::to_string(i) + " 1234567\n";
    Write("proc/vmstat", vmstat + "pgfault 2888467\npgmajfault 12\n");
    Write("proc/loadavg", "0.31 0.24 0.19 2/412 48213\n");
    Write("proc/net/sockstat", "sockets: used 231\nTCP: inuse 9 orphan 0 tw 1 alloc 14 mem 2\n");
    Write("proc/sysvipc/sem", "       key      semid perms      nsems   uid   gid  cuid  cgid      otime      ctime\n");
    for (int process : {1, 2, 812})
        Write("proc/" + std::to_string(process) + "/comm", "some\n");
    fStat = open((fRoot + "/proc/stat").c_str(), O_WRONLY | O_CLOEXEC);
    Check(fStat >= 0, "proc/stat");
}

BusyMachine::~BusyMachine()
{
    close(fStat);
    fs::remove_all(fRoot);
}

void BusyMachine::Write(const std::string& name, const std::string& text) const
{
    const fs::path path = fs::path(fRoot) / name;
    fs::create_directories(path.parent_path());
    std::ofstream(path) << text;
}

void BusyMachine::Advance()
{
    fNext = (fNext + 1) % fMoments.size();
    const std::string& text = fMoments[fNext];
    Check(pwrite(fStat, text.data(), text.size(), 0) == static_cast<ssize_t>(text.size()) &&
              ftruncate(fStat, static_cast<off_t>(text.size())) == 0,
          "proc/stat");
}

BareReads::BareReads(const std::string& root)
    : fIsRecorded(!root.empty())
    , fBuffer(1 << 18)
{
    for (const char* name : {"/proc/stat", "/proc/meminfo", "/proc/vmstat", "/proc/loadavg", "/proc/net/sockstat"})
        fFiles.push_back(open((root + name).c_str(), O_RDONLY | O_CLOEXEC));
    if (fIsRecorded)
        fFiles.push_back(open((root + "/proc/sysvipc/sem").c_str(), O_RDONLY | O_CLOEXEC));
    fFolder = open((root + "/proc").c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    for (int file : fFiles)
        Check(file >= 0, "a file of the machine");
    Check(fFolder >= 0, "proc");
}

BareReads::~BareReads()
{
    for (int file : fFiles)
        close(file);
    close(fFolder);
}

void BareReads::Read()
{
    for (int file : fFiles)
        Check(pread(file, fBuffer.data(), fBuffer.size(), 0) > 0, "pread");
    if (fIsRecorded) {
        Check(lseek(fFolder, 0, SEEK_SET) == 0, "lseek");
        while (getdents64(fFolder, fBuffer.data(), 8192) > 0) {
        }
    } else {
        struct stat status;
        Check(fstat(fFolder, &status) == 0, "fstat");
        seminfo figures;
        Check(semctl(0, 0, SEM_INFO, &figures) >= 0, "semctl");
    }
}
