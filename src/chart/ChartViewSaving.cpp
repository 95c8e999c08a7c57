// SPDX-License-Identifier: MIT
#include "kits/application/MainThread.h"
#include "kits/interface/Alert.h"
#include "kits/interface/FilePanel.h"
#include "kits/interface/Window.h"
#include "kits/kernel/Clock.h"
#include "kits/kernel/Errors.h"
#include "kits/storage/ReplaceFile.h"
#include "src/chart/ChartExport.h"
#include "src/chart/ChartLocks.h"
#include "src/chart/ChartView.h"
#include "src/sampling/ThreadMagic.h"
#include "src/support/Tr.h"

#include <utility>

// A chart's picture and its figures as files.

namespace {

constexpr int32 kSavingPriority = 5;

/// What the thread writes, and what it says when it can't.
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
            const std::string text =
                kits::Filled(Tr("The file could not be saved:\n\n%1\n\n%2"), {path, Tr(kits::StatusText(status))});
            auto* alert =
                new BAlert(Tr("Qel alert"), text.c_str(), Tr("OK"), nullptr, nullptr, B_WIDTH_AS_USUAL, B_STOP_ALERT);
            alert->Go(nullptr);
        });
    }

private:
    std::string fPath;
    std::string fBytes;
};

} // namespace

void ChartView::SavePicture()
{
    fPanel = std::make_unique<BFilePanel>(Tr("Save picture"), Tr("PNG pictures"), "png");
    fPanel->Show(FileNameOf(fTitle, "png").c_str(), Window(),
                 [this](const std::string& path) { SaveFile(path, PictureAsPng()); });
}

void ChartView::SaveValues()
{
    fPanel = std::make_unique<BFilePanel>(Tr("Save values"), Tr("Tables of values"), "csv");
    // The figures of the moment when he asked for them.
    fPanel->Show(FileNameOf(fTitle, "csv").c_str(), Window(),
                 [this, table = ValuesAsCsv()](const std::string& path) { SaveFile(path, table); });
}

std::string ChartView::PictureAsPng()
{
    // Without the frame that shows the keyboard's focus.
    const bool byMouse = std::exchange(fFocusByMouse, true);
    Redraw();
    std::string png;
    if (GetPicture(&png) != B_OK)
        png.clear();
    fFocusByMouse = byMouse;
    Redraw();
    return png;
}

std::string ChartView::ValuesAsCsv()
{
    LooperLock lock(this);
    std::vector<std::string> names;
    for (const auto& provider : fProviders)
        names.push_back(ValueProvider::Name(provider->Target(), provider->Flags()));
    return ::ValuesAsCsv(fHistory, names, kits::MomentOfBoot());
}

// In a thread, for a disk may take its time.
void ChartView::SaveFile(const std::string& path, std::string bytes)
{
    if (bytes.empty()) {
        beep();
        return;
    }
    FinishSaving();
    fSaving =
        FireAndForgetThread::Launch(std::make_unique<Saving>(path, std::move(bytes)), "Chart saving", kSavingPriority);
    if (fSaving == nullptr)
        beep();
}

void ChartView::FinishSaving()
{
    if (fSaving != nullptr)
        fSaving->Join();
}
