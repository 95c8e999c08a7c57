// SPDX-License-Identifier: MIT
#include "kits/interface/platform/x11/StayShown.h"

#include "kits/interface/platform/x11/XWindows.h"

#include <QAbstractNativeEventFilter>
#include <QGuiApplication>
#include <QPointer>
#include <QTimer>
#include <QWindow>

#include <chrono>
#include <optional>
#include <utility>
#include <vector>

namespace kits::StayShown {

namespace {

using namespace XWindows;

constexpr std::pair<std::string_view, Way> kManagers[] = {
    {"KWin", Way::kTransient},         {"Marco", Way::kTransientForAny},       {"Metacity", Way::kTransientForAny},
    {"Mutter", Way::kTransientForAny}, {"GNOME Shell", Way::kTransientForAny}, {"Muffin", Way::kTransientForAny},
    {"Openbox", Way::kSplash}};

/// By then, the window of a desktop that starts or restarts is there.
constexpr std::chrono::seconds kDesktopStarts{3};

/// A window that stays shown.
struct Kept {
    QPointer<QWindow> window;
    std::vector<uint32_t> types; ///< as the toolkit set them; empty until they were changed
};

/// Makes and shows an empty window of the type "desktop", for a session in which no program has one. It is one pixel
/// large, lies beside the screen, and takes neither focus nor pointer. The caller flushes the
/// connection. It destroys the window, or leaves that to the end of the connection.
xcb_window_t MakeOwnDesktop(xcb_connection_t* server)
{
    const xcb_window_t window = xcb_generate_id(server);
    xcb_create_window(server, XCB_COPY_FROM_PARENT, window, Root(server), -1, -1, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
    const std::vector<xcb_atom_t> atoms = Atoms(server, {"_NET_WM_WINDOW_TYPE", "_NET_WM_WINDOW_TYPE_DESKTOP"});
    SetProperty(server, window, atoms[0], XCB_ATOM_ATOM, {atoms[1]});
    // A window manager moves a window unless its place is marked as the user's.
    constexpr uint32_t kUsersPlace = 1;
    std::vector<uint32_t> hints(18);
    hints[0] = kUsersPlace;
    SetProperty(server, window, XCB_ATOM_WM_NORMAL_HINTS, XCB_ATOM_WM_SIZE_HINTS, hints);
    constexpr uint32_t kTellsOfInput = 1;
    constexpr uint32_t kTakesNone = 0;
    SetProperty(server, window, XCB_ATOM_WM_HINTS, XCB_ATOM_WM_HINTS, {kTellsOfInput, kTakesNone, 0, 0, 0, 0, 0, 0, 0});
    xcb_map_window(server, window);
    return window;
}

class Keeper : public QObject, public QAbstractNativeEventFilter {
public:
    explicit Keeper(xcb_connection_t* server)
        : QObject(qGuiApp)
        , fServer(server)
        , fRoot(Root(server))
        , fAtoms(Atoms(server, {"_NET_CLIENT_LIST", "_NET_SUPPORTING_WM_CHECK", "_NET_WM_NAME", "_NET_WM_WINDOW_TYPE",
                                "_NET_WM_WINDOW_TYPE_DESKTOP", "_NET_WM_WINDOW_TYPE_SPLASH",
                                "_NET_WM_WINDOW_TYPE_NORMAL", "_MOTIF_WM_HINTS"}))
    {
        fLook.setSingleShot(true);
        connect(&fLook, &QTimer::timeout, this, [this] { Look(); });
        fMiss.setSingleShot(true);
        connect(&fMiss, &QTimer::timeout, this, [this] {
            fOwn = MakeOwnDesktop(fServer);
            xcb_flush(fServer);
        });
        qGuiApp->installNativeEventFilter(this);
    }

    void Add(QWindow& window)
    {
        std::erase_if(fKept, [](const Kept& kept) { return kept.window == nullptr; });
        fKept.push_back({&window, {}});
        LookSoon();
    }

    /// Once for everything that has happened in this turn.
    void LookSoon()
    {
        if (!fLook.isActive())
            fLook.start(0);
    }

    /// The toolkit selects the root window's changes for its own use.
    bool nativeEventFilter(const QByteArray&, void* message, qintptr*) override
    {
        const auto* event = static_cast<const xcb_property_notify_event_t*>(message);
        if ((event->response_type & ~XWindows::kSentByClient) != XCB_PROPERTY_NOTIFY || event->window != fRoot ||
            (event->atom != fAtoms[kClients] && event->atom != fAtoms[kCheck]))
            return false;
        if (event->atom == fAtoms[kCheck])
            fWay.reset();
        LookSoon();
        return false;
    }

private:
    enum Atom { kClients, kCheck, kName, kType, kDesktop, kSplash, kNormal, kHints };

    void Look()
    {
        const std::vector<xcb_window_t> clients = Property(fServer, fRoot, fAtoms[kClients]);
        std::vector<Kept*> kept;
        std::vector<xcb_window_t> ids;
        for (Kept& one : fKept) {
            // The toolkit overwrites properties that are set before the window is shown.
            if (one.window == nullptr || one.window->handle() == nullptr ||
                !Holds(clients, static_cast<xcb_window_t>(one.window->winId())))
                continue;
            kept.push_back(&one);
            ids.push_back(static_cast<xcb_window_t>(one.window->winId()));
        }
        if (ids.empty())
            return;
        if (!fWay.has_value())
            fWay = AskWay();
        const bool isTransient = *fWay == Way::kTransient || *fWay == Way::kTransientForAny;
        const xcb_window_t desktop = isTransient ? DesktopAmong(clients) : static_cast<xcb_window_t>(XCB_NONE);
        const bool needsOwn = desktop == XCB_NONE && *fWay == Way::kTransientForAny;
        // Until the window manager manages our desktop window, nothing can be transient for it.
        const bool hasOwn = needsOwn && Holds(clients, fOwn);
        SetParent(ids, hasOwn ? fOwn : desktop);
        if (!needsOwn) {
            fMiss.stop();
            if (fOwn != XCB_NONE)
                xcb_destroy_window(fServer, fOwn);
            fOwn = XCB_NONE;
        } else if (fOwn == XCB_NONE && !fMiss.isActive())
            fMiss.start(kDesktopStarts);
        SetSplash(kept, ids, *fWay == Way::kSplash);
        xcb_flush(fServer);
    }

    Way AskWay() const
    {
        const std::vector<uint32_t> manager = Property(fServer, fRoot, fAtoms[kCheck]);
        return manager.empty() ? Way::kNone : WayFor(Text(fServer, manager.front(), fAtoms[kName]));
    }

    /// Returns the window of another program, or NONE.
    xcb_window_t DesktopAmong(const std::vector<xcb_window_t>& clients) const
    {
        const std::vector<std::vector<uint32_t>> types = Properties(fServer, clients, fAtoms[kType]);
        for (size_t i = 0; i < clients.size(); i++)
            if (Holds(types[i], fAtoms[kDesktop]) && clients[i] != fOwn)
                return clients[i];
        return XCB_NONE;
    }

    void SetParent(const std::vector<xcb_window_t>& windows, xcb_window_t parent) const
    {
        const std::vector<uint32_t> wanted =
            parent != XCB_NONE ? std::vector<uint32_t>{parent} : std::vector<uint32_t>{};
        const std::vector<std::vector<uint32_t>> set = Properties(fServer, windows, XCB_ATOM_WM_TRANSIENT_FOR);
        for (size_t i = 0; i < windows.size(); i++) {
            if (set[i] == wanted)
                continue;
            if (wanted.empty())
                xcb_delete_property(fServer, windows[i], XCB_ATOM_WM_TRANSIENT_FOR);
            else
                SetProperty(fServer, windows[i], XCB_ATOM_WM_TRANSIENT_FOR, XCB_ATOM_WINDOW, wanted);
        }
    }

    void SetSplash(const std::vector<Kept*>& kept, const std::vector<xcb_window_t>& windows, bool isSplash) const
    {
        const std::vector<std::vector<uint32_t>> types = Properties(fServer, windows, fAtoms[kType]);
        for (size_t i = 0; i < windows.size(); i++) {
            if (Holds(types[i], fAtoms[kSplash]) == isSplash)
                continue;
            if (isSplash)
                kept[i]->types = types[i];
            SetProperty(fServer, windows[i], fAtoms[kType], XCB_ATOM_ATOM,
                        isSplash ? std::vector<uint32_t>{fAtoms[kSplash], fAtoms[kNormal]} : kept[i]->types);
            // Window managers ignore a change of the type alone, and read the type again when the hints change.
            SetProperty(fServer, windows[i], fAtoms[kHints], fAtoms[kHints],
                        Property(fServer, windows[i], fAtoms[kHints]));
        }
    }

    xcb_connection_t* fServer;
    xcb_window_t fRoot;
    const std::vector<xcb_atom_t> fAtoms;
    std::vector<Kept> fKept;
    std::optional<Way> fWay; ///< of this window manager; empty until it is known
    QTimer fLook;
    QTimer fMiss;                 ///< from the moment when no program has a desktop window until ours is made
    xcb_window_t fOwn = XCB_NONE; ///< only while no other program has one and the window manager needs it
};

/// Lives as long as the toolkit's application object; null before the first window.
QPointer<Keeper> sKeeper;

} // namespace

Way WayFor(std::string_view manager)
{
    for (const auto& [name, way] : kManagers)
        if (manager.find(name) != std::string_view::npos)
            return way;
    return Way::kNone;
}

void Keep(QWindow& window)
{
    xcb_connection_t* const server = XServer();
    if (server == nullptr)
        return;
    if (sKeeper == nullptr)
        sKeeper = new Keeper(server);
    sKeeper->Add(window);
}

void LookAgain()
{
    if (sKeeper != nullptr)
        sKeeper->LookSoon();
}

} // namespace kits::StayShown
