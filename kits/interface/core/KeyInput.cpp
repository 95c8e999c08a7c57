// SPDX-License-Identifier: MIT
#include "kits/interface/core/KeyInput.h"

#include "kits/application/Message.h"
#include "kits/interface/Fields.h"
#include "kits/interface/Window.h"
#include "kits/interface/core/ViewImpl.h"
#include "kits/kernel/Clock.h"

#include <QKeyEvent>

namespace kits::KeyInput {

namespace {

/// Returns the byte of a key without a printable character, or 0.
char ByteOf(int key)
{
    switch (key) {
    case Qt::Key_Home:
        return B_HOME;
    case Qt::Key_End:
        return B_END;
    case Qt::Key_Insert:
        return B_INSERT;
    case Qt::Key_Backspace:
        return B_BACKSPACE;
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
        return B_TAB;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return B_ENTER;
    case Qt::Key_PageUp:
        return B_PAGE_UP;
    case Qt::Key_PageDown:
        return B_PAGE_DOWN;
    case Qt::Key_Escape:
        return B_ESCAPE;
    case Qt::Key_Left:
        return B_LEFT_ARROW;
    case Qt::Key_Right:
        return B_RIGHT_ARROW;
    case Qt::Key_Up:
        return B_UP_ARROW;
    case Qt::Key_Down:
        return B_DOWN_ARROW;
    case Qt::Key_Delete:
        return B_DELETE;
    default:
        return 0;
    }
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
