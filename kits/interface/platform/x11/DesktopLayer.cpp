// SPDX-License-Identifier: MIT
#include "kits/interface/platform/x11/DesktopLayer.h"

#include "kits/interface/platform/x11/DesktopPlace.h"
#include "kits/interface/platform/x11/XWindows.h"

#include <QAbstractNativeEventFilter>
#include <QGuiApplication>
#include <QPointer>
#include <QWindow>

#include <xcb/xcb.h>

#include <cstring>
#include <string_view>
#include <vector>

namespace kits::DesktopLayer {

namespace {

using namespace XWindows;

constexpr uint32_t kAllWorkspaces = 0xFFFFFFFF;

/// Notices compositors that come and go: the toolkit selects those events for its own use.
class CompositorWatch : public QObject, public QAbstractNativeEventFilter {
public:
    explicit CompositorWatch(xcb_connection_t* server)
        : QObject(qGuiApp)
        , fSelection(Atoms(server, {"_NET_WM_CM_S0"})[0])
        , fIsThere(Owner(server, fSelection) != XCB_NONE)
    {
        constexpr std::string_view kExtension = "XFIXES";
        const auto answer =
            Await(server, xcb_query_extension_reply, xcb_query_extension(server, kExtension.size(), kExtension.data()));
        if (answer != nullptr && answer->present != 0)
            fEvent = answer->first_event;
        qGuiApp->installNativeEventFilter(this);
    }

    bool nativeEventFilter(const QByteArray&, void* event, qintptr*) override
    {
        /// The event that a selection has another owner.
        struct Notice {
            uint8_t type;
            uint8_t subtype;
            uint16_t sequence;
            uint32_t window;
            uint32_t owner;
            uint32_t selection;
        } notice;
        std::memcpy(&notice, event, sizeof(notice));
        if (fEvent == 0 || (notice.type & ~XWindows::kSentByClient) != fEvent || notice.selection != fSelection)
            return false;
        fIsThere = notice.owner != XCB_NONE;
        if (fChanged)
            fChanged();
        return false;
    }

    bool IsThere() const { return fIsThere; }
    void SetChanged(std::function<void()> changed) { fChanged = std::move(changed); }

private:
    xcb_atom_t fSelection;
    bool fIsThere;
    uint8_t fEvent = 0; ///< 0: none
    std::function<void()> fChanged;
};

/// Returns null without an X server. Lives as long as the toolkit's application object, whose connection it uses.
CompositorWatch* Compositor()
{
    static QPointer<CompositorWatch> sWatch;
    if (sWatch == nullptr && XServer() != nullptr)
        sWatch = new CompositorWatch(XServer());
    return sWatch;
}

} // namespace

void MarkAsDesktopWindow(const QWindow& window)
{
    xcb_connection_t* const server = XServer();
    if (server == nullptr)
        return;
    const auto id = static_cast<xcb_window_t>(window.winId());
    const std::vector<xcb_atom_t> atoms =
        Atoms(server, {"_NET_WM_STATE", "_NET_WM_STATE_BELOW", "_NET_WM_STATE_STICKY", "_NET_WM_STATE_SKIP_TASKBAR",
                       "_NET_WM_STATE_SKIP_PAGER", DesktopPlace::kMark});
    // The toolkit adds its own states to these.
    SetProperty(server, id, atoms[0], XCB_ATOM_ATOM, {atoms[1], atoms[2], atoms[3], atoms[4]});
    SetProperty(server, id, atoms[5], XCB_ATOM_CARDINAL, {1});
}

void ShowOnAllWorkspaces(const QWindow& window)
{
    xcb_connection_t* const server = XServer();
    if (server == nullptr)
        return;
    const std::vector<xcb_atom_t> atoms = Atoms(server, {"_NET_WM_DESKTOP"});
    SetProperty(server, static_cast<xcb_window_t>(window.winId()), atoms[0], XCB_ATOM_CARDINAL, {kAllWorkspaces});
}

void ShowBorderOnly(const QWindow& window)
{
    xcb_connection_t* const server = XServer();
    if (server == nullptr)
        return;
    constexpr uint32_t kFunctionsAndDecorations = 3;
    constexpr uint32_t kMove = 4;
    constexpr uint32_t kBorder = 2;
    const std::vector<xcb_atom_t> atoms = Atoms(server, {"_MOTIF_WM_HINTS"});
    SetProperty(server, static_cast<xcb_window_t>(window.winId()), atoms[0], atoms[0],
                {kFunctionsAndDecorations, kMove, kBorder, 0, 0});
}

void MoveToCurrentWorkspace(const QWindow& window)
{
    xcb_connection_t* const server = XServer();
    if (server == nullptr)
        return;
    const auto id = static_cast<xcb_window_t>(window.winId());
    const std::vector<xcb_atom_t> atoms = Atoms(server, {"_NET_WM_DESKTOP", "_NET_CURRENT_DESKTOP"});
    const std::vector<uint32_t> its = Property(server, id, atoms[0]);
    const std::vector<uint32_t> current = Property(server, Root(server), atoms[1]);
    if (its.empty() || current.empty() || its[0] == kAllWorkspaces || its[0] == current[0])
        return;
    xcb_client_message_event_t request{};
    request.response_type = XCB_CLIENT_MESSAGE;
    request.format = 32;
    request.window = id;
    request.type = atoms[0];
    request.data.data32[0] = current[0];
    request.data.data32[1] = 1; // the request comes from an application, not from a task bar
    xcb_send_event(server, 0, Root(server), XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                   reinterpret_cast<const char*>(&request));
    xcb_flush(server);
}

Ground GroundAt(BPoint where)
{
    xcb_connection_t* const server = XServer();
    return server != nullptr ? DesktopPlace::GroundAt(server, where) : Ground::kProgram;
}

bool HasCompositor()
{
    const CompositorWatch* const watch = Compositor();
    return watch != nullptr && watch->IsThere();
}

void WatchCompositor(std::function<void()> changed)
{
    if (CompositorWatch* const watch = Compositor())
        watch->SetChanged(std::move(changed));
}

} // namespace kits::DesktopLayer
