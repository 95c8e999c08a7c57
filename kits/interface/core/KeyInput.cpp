// SPDX-License-Identifier: MIT
#include "kits/interface/core/KeyInput.h"

#include "kits/application/Message.h"
#include "kits/interface/Fields.h"
#include "kits/interface/Window.h"
#include "kits/interface/core/ViewImpl.h"
#include "kits/kernel/Clock.h"

#include <QKeyEvent>

#include <utility>

namespace kits::KeyInput {

namespace {

/// Returns the byte of a key without a printable character, or 0.
char ByteOf(int key)
{
    constexpr std::pair<int, char> kKeys[] = {
        {Qt::Key_Home, B_HOME},           {Qt::Key_End, B_END},       {Qt::Key_Insert, B_INSERT},
        {Qt::Key_Backspace, B_BACKSPACE}, {Qt::Key_Tab, B_TAB},       {Qt::Key_Backtab, B_TAB},
        {Qt::Key_Return, B_ENTER},        {Qt::Key_Enter, B_ENTER},   {Qt::Key_PageUp, B_PAGE_UP},
        {Qt::Key_PageDown, B_PAGE_DOWN},  {Qt::Key_Escape, B_ESCAPE}, {Qt::Key_Left, B_LEFT_ARROW},
        {Qt::Key_Right, B_RIGHT_ARROW},   {Qt::Key_Up, B_UP_ARROW},   {Qt::Key_Down, B_DOWN_ARROW},
        {Qt::Key_Delete, B_DELETE}};
    for (const auto& [special, byte] : kKeys)
        if (special == key)
            return byte;
    return 0;
}

} // namespace

uint32 ModifiersOf(Qt::KeyboardModifiers modifiers)
{
    // The platform's command key is the key that shortcuts use here.
    constexpr std::pair<Qt::KeyboardModifier, uint32> kKeys[] = {{Qt::ShiftModifier, B_SHIFT_KEY},
                                                                 {Qt::ControlModifier, B_COMMAND_KEY},
                                                                 {Qt::MetaModifier, B_CONTROL_KEY},
                                                                 {Qt::AltModifier, B_OPTION_KEY}};
    uint32 bits = 0;
    for (const auto& [key, bit] : kKeys)
        bits |= modifiers.testFlag(key) ? bit : 0;
    return bits;
}

bool Deliver(ViewImpl& view, const QKeyEvent& event)
{
    const char special = ByteOf(event.key());
    const QByteArray bytes = special != 0 ? QByteArray(1, special) : event.text().toUtf8();
    if (bytes.isEmpty() || bytes.at(0) == '\0' || view.fWindow == nullptr)
        return false;
    auto message = std::make_unique<BMessage>(B_KEY_DOWN);
    kBytesField.Add(message.get(), bytes.constData());
    kKeyField.Add(message.get(), event.key());
    kModifiersField.Add(message.get(), static_cast<int32>(ModifiersOf(event.modifiers())));
    kWhenField.Add(message.get(), system_time());
    view.fKeyIgnored = false;
    const std::weak_ptr<ViewImpl*> self = view.fSelf;
    view.fWindow->DeliverNow(std::move(message), view.fView);
    return self.expired() || !view.fKeyIgnored;
}

} // namespace kits::KeyInput
