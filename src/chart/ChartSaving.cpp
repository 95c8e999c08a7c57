// SPDX-License-Identifier: MIT
#include "src/chart/ChartSaving.h"

#include "kits/application/MainThread.h"
#include "kits/interface/FilePanel.h"
#include "kits/interface/InterfaceDefs.h"
#include "kits/kernel/Errors.h"
#include "kits/storage/ReplaceFile.h"
#include "src/sampling/ThreadMagic.h"
#include "src/support/Tr.h"
#include "src/support/ui/ShowAlert.h"

#include <utility>

namespace {

constexpr int32 kPriority = 5;

/// The work of the thread that writes, and the alert when writing fails.
class Saving : public FunctionObject {
public:
    Saving(std::string path, std::string bytes)
        : fPath(std::move(path))
        , fBytes(std::move(bytes))
    {
    }

    void operator()() override
    {
        const status_t status = kits::ReplaceFile(fPath.c_str(), fBytes.data(), fBytes.size());
        if (status == B_OK)
            return;
        kits::RunOnMainThread([path = fPath, status] {
            ShowAlert(
                kits::Filled(Tr("The file could not be saved:\n\n%1\n\n%2"), {path, Tr(kits::StatusText(status))}),
                B_STOP_ALERT);
        });
    }

private:
    std::string fPath;
    std::string fBytes;
};

} // namespace

ChartSaving::ChartSaving() = default;

ChartSaving::~ChartSaving()
{
    Finish();
}

void ChartSaving::Ask(const char* title, const char* kind, const std::string& name, BWindow* window,
                      std::function<std::string()> bytes)
{
    fPanel = std::make_unique<BFilePanel>(title, kind, name.c_str() + name.rfind('.') + 1);
    fPanel->Show(name.c_str(), window,
                 [this, bytes = std::move(bytes)](const std::string& path) { Save(path, bytes()); });
}

void ChartSaving::Save(const std::string& path, std::string bytes)
{
    if (bytes.empty()) {
        beep();
        return;
    }
    Finish();
    fThread = FireAndForgetThread::Launch(std::make_unique<Saving>(path, std::move(bytes)), "Chart saving", kPriority);
    if (fThread == nullptr)
        beep();
}

void ChartSaving::Finish()
{
    if (fThread != nullptr)
        fThread->Join();
}
