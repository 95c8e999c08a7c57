// SPDX-License-Identifier: MIT
#include "kits/interface/platform/x11/XSettings.h"

#include "kits/interface/platform/x11/DesktopScale.h"
#include "kits/interface/platform/x11/XWindows.h"
#include "kits/kernel/Bounds.h"

#include <QAbstractNativeEventFilter>
#include <QGuiApplication>

#include <xcb/xcb.h>

#include <memory>
#include <utility>
#include <vector>

namespace kits {

namespace {

/// Takes numbers out of bytes, in the byte order that the first one names. Beyond the end everything is 0 and the
/// reader is broken.
class Reader {
public:
    explicit Reader(std::span<const uint8> bytes)
        : fRest(bytes)
    {
        constexpr uint8 kHighFirst = 1;
        fHighFirst = Number(1) == kHighFirst;
        Skip(3);
    }

    bool IsBroken() const { return fIsBroken; }

    uint32 Number(size_t size)
    {
        const std::span<const uint8> bytes = Take(size);
        uint32 number = 0;
        for (size_t i = 0; i < bytes.size(); i++)
            number = number << 8 | bytes[fHighFirst ? i : bytes.size() - 1 - i];
        return number;
    }

    std::string Text(size_t length)
    {
        const std::span<const uint8> bytes = Take(length);
        Skip((4 - length % 4) % 4);
        return {bytes.begin(), bytes.end()};
    }

    void Skip(size_t size) { Take(size); }

private:
    std::span<const uint8> Take(size_t size)
    {
        if (fIsBroken || size > fRest.size()) {
            fIsBroken = true;
            return {};
        }
        const std::span<const uint8> taken = fRest.first(size);
        fRest = fRest.subspan(size);
        return taken;
    }

    std::span<const uint8> fRest;
    bool fHighFirst = false;
    bool fIsBroken = false;
};

} // namespace

XSettings::XSettings(std::span<const uint8> bytes)
{
    enum Type : uint32 { kInteger, kText, kColor };
    Reader reader(bytes);
    reader.Skip(4); // the number of changes
    for (uint32 count = reader.Number(4); count > 0 && !reader.IsBroken(); count--) {
        const uint32 type = reader.Number(1);
        reader.Skip(1);
        const std::string name = reader.Text(reader.Number(2));
        reader.Skip(4); // its last change
        if (type == kInteger) {
            const auto value = static_cast<int32>(reader.Number(4));
            if (!reader.IsBroken())
                fIntegers[name] = value;
        } else if (type == kText) {
            std::string value = reader.Text(reader.Number(4));
            if (!reader.IsBroken())
                fTexts[name] = std::move(value);
        } else if (type == kColor) {
            reader.Skip(8);
        } else {
            break;
        }
    }
}

std::optional<int32> XSettings::Integer(const std::string& name) const
{
    const auto found = fIntegers.find(name);
    return found != fIntegers.end() ? std::optional(found->second) : std::nullopt;
}

std::optional<std::string> XSettings::Text(const std::string& name) const
{
    const auto found = fTexts.find(name);
    return found != fTexts.end() ? std::optional(found->second) : std::nullopt;
}

XSettingsSource FindXSettings(xcb_connection_t* server)
{
    const std::vector<xcb_atom_t> atoms = XWindows::Atoms(server, {"_XSETTINGS_S0", "_XSETTINGS_SETTINGS", "MANAGER"});
    return {atoms[0], atoms[1], atoms[2], XWindows::Owner(server, atoms[0])};
}

XSettings ReadXSettings(xcb_connection_t* server, const XSettingsSource& source)
{
    if (source.owner == XCB_NONE)
        return {};
    const auto answer = XWindows::Await(
        server, xcb_get_property_reply,
        xcb_get_property(server, 0, source.owner, source.property, source.property, 0, bounds::kMostSettings));
    if (answer == nullptr || answer->format != 8)
        return {};
    const auto* const bytes = static_cast<const uint8*>(xcb_get_property_value(answer.get()));
    return XSettings({bytes, static_cast<size_t>(xcb_get_property_value_length(answer.get()))});
}

namespace {

class Watch : public QAbstractNativeEventFilter {
public:
    Watch(xcb_connection_t* server, const XSettingsSource& source, XSettings settings)
        : fServer(server)
        , fSource(source)
        , fSettings(std::move(settings))
    {
        // The toolkit selects the events of the owner that it has found, and those of the root window.
        qGuiApp->installNativeEventFilter(this);
    }

    const XSettings& Settings() const { return fSettings; }
    void CallOnChange(std::function<void()> changed) { fChanged.push_back(std::move(changed)); }

    bool nativeEventFilter(const QByteArray&, void* event, qintptr*) override
    {
        switch (static_cast<const xcb_generic_event_t*>(event)->response_type & ~XWindows::kSentByClient) {
        case XCB_PROPERTY_NOTIFY: {
            const auto* const notice = static_cast<const xcb_property_notify_event_t*>(event);
            if (notice->window == fSource.owner && notice->atom == fSource.property)
                Read();
            break;
        }
        case XCB_CLIENT_MESSAGE: {
            const auto* const message = static_cast<const xcb_client_message_event_t*>(event);
            if (message->type == fSource.manager && message->format == 32 &&
                message->data.data32[1] == fSource.selection)
                TakeOwner(message->data.data32[2]);
            break;
        }
        default:
            break;
        }
        return false;
    }

private:
    void TakeOwner(xcb_window_t owner)
    {
        fSource.owner = owner;
        constexpr uint32_t kEvents = XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_PROPERTY_CHANGE;
        // It may have gone again: the toolkit would report the error.
        const xcb_void_cookie_t cookie =
            xcb_change_window_attributes_checked(fServer, owner, XCB_CW_EVENT_MASK, &kEvents);
        xcb_discard_reply(fServer, cookie.sequence);
        // The toolkit follows only the first owner.
        DesktopScale::ToolkitIsDeaf();
        Read();
    }

    void Read()
    {
        fSettings = ReadXSettings(fServer, fSource);
        // The toolkit, too, repaints at any scale as soon as it has read the settings.
        if (DesktopScale::OfToolkit(fSettings, 1) > DesktopScale::kMost)
            DesktopScale::Apply(fSettings);
        // Otherwise the scale, and everything painted with it, would change between two events.
        QMetaObject::invokeMethod(
            qGuiApp,
            [changed = fChanged] {
                DesktopScale::Apply(XSettingsWatch::Current());
                for (const std::function<void()>& function : changed)
                    function();
            },
            Qt::QueuedConnection);
    }

    xcb_connection_t* const fServer;
    XSettingsSource fSource;
    XSettings fSettings;
    std::vector<std::function<void()>> fChanged;
};

std::unique_ptr<Watch> sWatch;

} // namespace

void XSettingsWatch::Start(const XSettingsSource& source, XSettings settings)
{
    xcb_connection_t* const server = XServer();
    if (server == nullptr || source.selection == XCB_ATOM_NONE)
        return;
    DesktopScale::Apply(settings);
    sWatch = std::make_unique<Watch>(server, source, std::move(settings));
}

void XSettingsWatch::Stop()
{
    sWatch.reset();
    DesktopScale::Forget();
}

const XSettings& XSettingsWatch::Current()
{
    static const XSettings kNone;
    return sWatch != nullptr ? sWatch->Settings() : kNone;
}

void XSettingsWatch::CallOnChange(std::function<void()> changed)
{
    if (sWatch != nullptr)
        sWatch->CallOnChange(std::move(changed));
}

} // namespace kits
