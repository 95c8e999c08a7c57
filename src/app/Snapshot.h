// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/Timer.h"
#include "src/app/QelApp.h"

#include <string>

/// The application of `--snapshot`: opens the window as usual, lets the charts run for a while, saves a picture of the
/// window and quits. Writes nothing else.
class SnapshotApp : public QelApp {
public:
    /// @param file   the path of the picture; its suffix selects the format, PNG without one
    /// @param after  how long the charts run, microseconds
    SnapshotApp(std::string file, bigtime_t after);

    void ReadyToRun() override;

    /// 0 if the picture was saved.
    int ExitStatus() const { return fExitStatus; }

private:
    void Save();

    std::string fFile;
    bigtime_t fAfter;
    kits::Timer fTimer;
    int fExitStatus = 1;
};
