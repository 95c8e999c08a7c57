// SPDX-License-Identifier: MIT
#include "src/app/Snapshot.h"

#include "kits/kernel/Errors.h"
#include "src/support/ui/SmartWindow.h"

#include <algorithm>
#include <cstdio>
#include <utility>

SnapshotApp::SnapshotApp(std::string file, bigtime_t after)
    : QelApp(Mode::kPicture)
    , fFile(std::move(file))
    , fAfter(after)
    , fTimer([this] { Save(); })
{
}

void SnapshotApp::ReadyToRun()
{
    QelApp::ReadyToRun();
    fTimer.Start(std::max<bigtime_t>(fAfter, 1), false);
}

void SnapshotApp::Save()
{
    const status_t status = Window() != nullptr ? Window()->SavePicture(fFile.c_str()) : B_ERROR;
    if (status == B_OK)
        fExitStatus = 0;
    else
        std::fprintf(stderr, "qel: cannot save the picture as %s: %s\n", fFile.c_str(), kits::StatusText(status));
    PostMessage(B_QUIT_REQUESTED);
}
