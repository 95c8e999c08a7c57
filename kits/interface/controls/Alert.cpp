// SPDX-License-Identifier: MIT
#include "kits/interface/Alert.h"

#include "kits/application/Invoker.h"
#include "kits/application/MainThread.h"
#include "kits/application/Message.h"
#include "kits/interface/Fields.h"
#include "kits/interface/View.h"
#include "kits/interface/controls/AlertWidget.h"
#include "kits/interface/core/Content.h"
#include "kits/interface/core/ViewPrivate.h"
#include "kits/interface/core/WindowImpl.h"

#include <QApplication>
#include <QEventLoop>
#include <QPushButton>
#include <QScreen>

#include <algorithm>

namespace {

constexpr uint32 kAlertFlags = B_NOT_RESIZABLE | B_NOT_ZOOMABLE | B_NOT_MINIMIZABLE;

std::vector<std::string> LabelsOf(std::initializer_list<const char*> labels)
{
    std::vector<std::string> result;
    for (const char* label : labels)
        if (label != nullptr && *label != '\0')
            result.emplace_back(label);
    return result;
}

} // namespace

/// Fills the alert.
class BAlert::Face : public BView {
public:
    Face(BAlert* alert, button_width width, button_spacing spacing)
        : BView(BRect(0, 0, 0, 0), "alert", B_FOLLOW_ALL_SIDES, B_WILL_DRAW | B_NAVIGABLE)
        , fWidget(new kits::AlertWidget(kits::ToText(alert->Text()), alert->fButtons, width, spacing, alert->Type(),
                                        [alert](int index) { alert->Answer(index); }))
    {
        fContent.SetWidget(fWidget);
        SetViewUIColor(B_PANEL_BACKGROUND_COLOR);
        SetAccessibleName(alert->Text());
        float textWidth = 0;
        float height = 0;
        kits::GetSizeHint(fWidget, &textWidth, &height);
        ResizeTo(textWidth, height);
    }

    kits::AlertWidget* Widget() const { return fWidget; }

private:
    void WidgetCreated(QWidget*) override
    {
        kits::FillView(this, fWidget);
        fWidget->AnswerCloseOf(kits::WindowWidget(Window()));
    }

    kits::Content fContent;
    kits::AlertWidget* fWidget;
};

BAlert::BAlert(const char* title, const char* text, const char* button0, const char* button1, const char* button2,
               button_width width, button_spacing spacing, alert_type type)
    : BWindow(BRect(0, 0, 0, 0), title, B_MODAL_WINDOW_LOOK, B_MODAL_APP_WINDOW_FEEL, kAlertFlags)
    , fButtons(LabelsOf({button0, button1, button2}))
    , fText(text == nullptr ? "" : text)
    , fType(type)
{
    if (fButtons.empty())
        fButtons.emplace_back("OK");
    fFace = new Face(this, width, spacing);
    ResizeTo(fFace->Bounds().Width(), fFace->Bounds().Height());
    AddChild(fFace);
    const auto last = static_cast<int>(fButtons.size()) - 1;
    kits::SetDefaultButton(this, fFace, [this, last] { fFace->Widget()->Button(last)->click(); });
}

BAlert::BAlert(const char* title, const char* text, const char* button0, const char* button1, const char* button2,
               button_width width, alert_type type)
    : BAlert(title, text, button0, button1, button2, width, B_EVEN_SPACING, type)
{
}

BAlert::~BAlert() = default;

void BAlert::Place()
{
    const QWidget* active = QApplication::activeWindow();
    const QScreen* screen = active != nullptr ? active->screen() : QGuiApplication::primaryScreen();
    if (screen == nullptr)
        return;
    const QRect room = screen->availableGeometry();
    const QRect around = active != nullptr ? active->frameGeometry() : room;
    const QSize size = kits::ToQRect(Bounds()).size();
    const int left = around.center().x() - size.width() / 2;
    const int top = around.top() + (around.height() - size.height()) / 3;
    MoveTo(static_cast<float>(std::clamp(left, room.left(), std::max(room.left(), room.right() - size.width()))),
           static_cast<float>(std::clamp(top, room.top(), std::max(room.top(), room.bottom() - size.height()))));
}

bool BAlert::Open()
{
    if (!kits::IsMainThread()) {
        Quit();
        return false;
    }
    Place();
    Show();
    fFace->MakeFocus();
    return true;
}

int32 BAlert::Go()
{
    if (!Open())
        return 0;
    bool canceled = false;
    {
        QEventLoop loop;
        fAnswered = [&loop] { loop.quit(); };
        const kits::NestedLoop nested(fAnswered);
        if (!nested.WasCanceled())
            loop.exec();
        canceled = nested.WasCanceled();
        fAnswered = nullptr;
    }
    const int32 answer = canceled ? 0 : fAnswer;
    // Quit() would wait for the outermost loop, and would cancel the next alert on its way there. No code of the alert
    // is on the stack any more, so it is destroyed here, unless something else is quitting it already.
    if (BMessenger(this).IsValid())
        delete this;
    return answer;
}

status_t BAlert::Go(BInvoker* invoker)
{
    fInvoker.reset(invoker);
    return Open() ? B_OK : B_NOT_ALLOWED;
}

void BAlert::Answer(int32 index)
{
    if (fIsAnswered)
        return;
    fIsAnswered = true;
    fAnswer = index;
    if (fAnswered) {
        fAnswered();
        return;
    }
    if (fInvoker != nullptr && fInvoker->Message() != nullptr) {
        BMessage answer(*fInvoker->Message());
        kits::kWhichField.Add(&answer, index);
        fInvoker->Invoke(&answer);
    }
    // The code of the pressed button is still running, so its destruction comes as a message.
    PostMessage(B_QUIT_REQUESTED);
}

void BAlert::ActivateOpen()
{
    BAlert* open = nullptr;
    for (kits::WindowImpl* window : kits::WindowImpl::All()) {
        auto* const alert = dynamic_cast<BAlert*>(window->fWindow);
        if (alert != nullptr && !alert->IsHidden() && !alert->fIsAnswered)
            open = alert;
    }
    if (open == nullptr)
        return;
    open->SetWorkspaces(B_CURRENT_WORKSPACE);
    open->Activate();
}

bool BAlert::QuitRequested()
{
    if (fIsAnswered)
        return true;
    Answer(0);
    return true;
}
