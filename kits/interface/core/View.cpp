// SPDX-License-Identifier: MIT
#include "kits/interface/View.h"

#include "kits/application/Message.h"
#include "kits/application/Messenger.h"
#include "kits/interface/Bitmap.h"
#include "kits/interface/core/ViewImpl.h"

#include <algorithm>
#include <string_view>

BView::BView(BRect frame, const char* name, uint32 resizingMode, uint32 flags)
    : BHandler(name)
    , fImpl(std::make_unique<kits::ViewImpl>(this, frame, resizingMode, flags))
{
}

BView::~BView()
{
    RemoveSelf();
    // Destroys the children before the surface on which they draw.
    while (!fImpl->fChildren.empty()) {
        const std::unique_ptr<BView> child = std::move(fImpl->fChildren.back());
        fImpl->fChildren.pop_back();
        kits::ViewImpl::Of(child.get()).fParent = nullptr;
    }
}

void BView::AddChild(BView* child, BView* before)
{
    if (child == nullptr)
        return;
    for (BView* view = this; view != nullptr; view = view->fImpl->fParent)
        if (view == child)
            return;
    if (!kits::ViewImpl::Insert(fImpl->fChildren, child, before))
        return;
    child->fImpl->fParent = this;
    if (fImpl->fWindow != nullptr)
        child->fImpl->Attach(fImpl->fWindow);
    else if (fImpl->fBitmap != nullptr)
        child->fImpl->SetBitmap(fImpl->fBitmap);
}

bool BView::RemoveChild(BView* child)
{
    return child != nullptr && child->fImpl->fParent == this && child->RemoveSelf();
}

bool BView::RemoveSelf()
{
    kits::ViewImpl& impl = *fImpl;
    if (!impl.IsAttached())
        return false;
    if (impl.fBitmap != nullptr && impl.fParent == nullptr)
        return impl.fBitmap->RemoveChild(this);
    std::vector<std::unique_ptr<BView>>* siblings = impl.SiblingList();
    impl.Detach();
    const auto place = std::find_if(siblings->begin(), siblings->end(),
                                    [this](const std::unique_ptr<BView>& view) { return view.get() == this; });
    // A detach hook may have removed it already.
    if (place == siblings->end())
        return false;
    static_cast<void>(place->release()); // the caller's from here on
    siblings->erase(place);
    impl.fParent = nullptr;
    if (impl.fBitmap != nullptr)
        impl.SetBitmap(nullptr);
    return true;
}

BView* BView::ChildAt(int32 index) const
{
    return index >= 0 && index < CountChildren() ? fImpl->fChildren[static_cast<size_t>(index)].get() : nullptr;
}

int32 BView::CountChildren() const
{
    return static_cast<int32>(fImpl->fChildren.size());
}

BView* BView::NextSibling() const
{
    const std::vector<std::unique_ptr<BView>>* siblings = fImpl->SiblingList();
    if (siblings == nullptr)
        return nullptr;
    for (size_t i = 0; i + 1 < siblings->size(); i++)
        if ((*siblings)[i].get() == this)
            return (*siblings)[i + 1].get();
    return nullptr;
}

BView* BView::Parent() const
{
    return fImpl->fParent;
}

BWindow* BView::Window() const
{
    return fImpl->fWindow;
}

BView* BView::FindView(const char* name) const
{
    if (name == nullptr)
        return nullptr;
    if (std::string_view(name) == Name())
        return const_cast<BView*>(this);
    for (const std::unique_ptr<BView>& child : fImpl->fChildren)
        if (BView* found = child->FindView(name))
            return found;
    return nullptr;
}

void BView::SetFlags(uint32 flags)
{
    fImpl->fFlags = flags;
    fImpl->WidgetChanged();
}

uint32 BView::Flags() const
{
    return fImpl->fFlags;
}

void BView::KeyDown(const char*, int32)
{
    fImpl->fKeyIgnored = true;
}

void BView::GetPreferredSize(float* width, float* height)
{
    const BRect bounds = Bounds();
    if (width != nullptr)
        *width = bounds.Width();
    if (height != nullptr)
        *height = bounds.Height();
}

void BView::ResizeToPreferred()
{
    float width = 0;
    float height = 0;
    GetPreferredSize(&width, &height);
    ResizeTo(width, height);
}

void BView::MessageReceived(BMessage* message)
{
    // An unwanted drop goes back to its sender, so that nobody waits for an answer.
    if (message->WasDropped() && message->ReturnAddress().IsValid())
        message->SendReply(B_MESSAGE_NOT_UNDERSTOOD);
    else
        BHandler::MessageReceived(message);
}
