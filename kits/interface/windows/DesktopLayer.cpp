#include "kits/interface/windows/DesktopLayer.h"

#include "kits/interface/screens/XServer.h"

#include <QAbstractNativeEventFilter>
#include <QGuiApplication>
#include <QScreen>
#include <QWindow>

#include <cstdlib>
#include <cstring>
#include <initializer_list>
#include <memory>
#include <string_view>
#include <utility>
#include <vector>
#include <xcb/xcb.h>

namespace kits::DesktopLayer {

namespace {

struct Free {
    void operator()(void* reply) const { std::free(reply); }
};
template <class Reply> using Answer = std::unique_ptr<Reply, Free>;

/// Marks windows of the desktop: the toolkit's type of such a window is a normal one.
constexpr const char* kMark = "_KITS_DESKTOP_WINDOW";
constexpr uint32_t kAllWorkspaces = 0xFFFFFFFF;
/// Windows within windows; a frame, what it holds, and what that holds.
constexpr int kDeepest = 16;

xcb_window_t RootOf(xcb_connection_t* server)
{
    const xcb_screen_iterator_t screens = xcb_setup_roots_iterator(xcb_get_setup(server));
    return screens.rem > 0 ? screens.data->root : XCB_NONE;
}

std::vector<xcb_atom_t> Atoms(xcb_connection_t* server, std::initializer_list<const char*> names)
{
    std::vector<xcb_intern_atom_cookie_t> cookies;
    for (const char* name : names)
        cookies.push_back(xcb_intern_atom(server, 0, static_cast<uint16_t>(std::strlen(name)), name));
    std::vector<xcb_atom_t> atoms;
    for (const xcb_intern_atom_cookie_t cookie : cookies) {
        const Answer<xcb_intern_atom_reply_t> answer(xcb_intern_atom_reply(server, cookie, nullptr));
        atoms.push_back(answer != nullptr ? answer->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE));
    }
    return atoms;
}

void SetProperty(xcb_connection_t* server, xcb_window_t window, xcb_atom_t property, xcb_atom_t type,
                 const std::vector<uint32_t>& values)
{
    xcb_change_property(server, XCB_PROP_MODE_REPLACE, window, property, type, 32, static_cast<uint32_t>(values.size()),
                        values.data());
}

std::vector<uint32_t> PropertyOf(xcb_connection_t* server, xcb_window_t window, xcb_atom_t property)
{
    constexpr uint32_t kMost = 32;
    const Answer<xcb_get_property_reply_t> answer(xcb_get_property_reply(
        server, xcb_get_property(server, 0, window, property, XCB_GET_PROPERTY_TYPE_ANY, 0, kMost), nullptr));
    if (answer == nullptr || answer->format != 32)
        return {};
    const auto* values = static_cast<const uint32_t*>(xcb_get_property_value(answer.get()));
    return {values, values + static_cast<size_t>(xcb_get_property_value_length(answer.get())) / sizeof(uint32_t)};
}

bool Holds(const std::vector<uint32_t>& values, uint32_t value)
{
    for (const uint32_t one : values) {
        if (one == value)
            return true;
    }
    return false;
}

/// In the server's pixels: the toolkit scales within screens and leaves their corners where they are.
QPoint ServerPoint(BPoint where)
{
    const QPoint point(static_cast<int>(where.x), static_cast<int>(where.y));
    const QScreen* const screen = QGuiApplication::screenAt(point);
    if (screen == nullptr)
        return point;
    const QPoint corner = screen->geometry().topLeft();
    return corner + (point - corner) * screen->devicePixelRatio();
}

/// The child of this window that shows at a place of the root window, NONE when none does.
xcb_window_t ChildAt(xcb_connection_t* server, xcb_window_t window, QPoint place)
{
    const Answer<xcb_translate_coordinates_reply_t> answer(xcb_translate_coordinates_reply(
        server,
        xcb_translate_coordinates(server, RootOf(server), window, static_cast<int16_t>(place.x()),
                                  static_cast<int16_t>(place.y())),
        nullptr));
    return answer != nullptr ? answer->child : static_cast<xcb_window_t>(XCB_NONE);
}

/// Windows that only take input show nothing: some window managers lay one over the whole desktop.
bool ShowsNothing(xcb_connection_t* server, xcb_window_t window)
{
    const Answer<xcb_get_window_attributes_reply_t> answer(
        xcb_get_window_attributes_reply(server, xcb_get_window_attributes(server, window), nullptr));
    return answer != nullptr && answer->_class == XCB_WINDOW_CLASS_INPUT_ONLY;
}

xcb_window_t OwnerOf(xcb_connection_t* server, xcb_atom_t selection)
{
    const Answer<xcb_get_selection_owner_reply_t> answer(
        xcb_get_selection_owner_reply(server, xcb_get_selection_owner(server, selection), nullptr));
    return answer != nullptr ? answer->owner : static_cast<xcb_window_t>(XCB_NONE);
}

/// Hears of compositors that come and go: the toolkit asks for those events for its own use.
class CompositorWatch : public QAbstractNativeEventFilter {
public:
    explicit CompositorWatch(xcb_connection_t* server)
        : fSelection(Atoms(server, {"_NET_WM_CM_S0"})[0])
        , fIsThere(OwnerOf(server, fSelection) != XCB_NONE)
    {
        constexpr std::string_view kExtension = "XFIXES";
        const Answer<xcb_query_extension_reply_t> answer(xcb_query_extension_reply(
            server, xcb_query_extension(server, kExtension.size(), kExtension.data()), nullptr));
        if (answer != nullptr && answer->present != 0)
            fEvent = answer->first_event;
        qGuiApp->installNativeEventFilter(this);
    }

    bool nativeEventFilter(const QByteArray&, void* event, qintptr*) override
    {
        /// A selection has another owner.
        struct Notice {
            uint8_t type;
            uint8_t subtype;
            uint16_t sequence;
            uint32_t window;
            uint32_t owner;
            uint32_t selection;
        } notice;
        constexpr uint8_t kSentByClient = 0x80;
        std::memcpy(&notice, event, sizeof(notice));
        if (fEvent == 0 || (notice.type & ~kSentByClient) != fEvent || notice.selection != fSelection)
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

/// Null without an X server. As long-lived as the toolkit's application object, whose connection it uses.
CompositorWatch* Compositor()
{
    static CompositorWatch* watch = nullptr;
    static const QGuiApplication* owner = nullptr;
    if (owner != qGuiApp) {
        owner = qGuiApp;
        watch = nullptr;
        if (XServer() != nullptr) {
            watch = new CompositorWatch(XServer());
            QObject::connect(qGuiApp, &QObject::destroyed, [] {
                delete watch;
                watch = nullptr;
                owner = nullptr;
            });
        }
    }
    return watch;
}

} // namespace

bool IsThere()
{
    return XServer() != nullptr;
}

void MarkAsDesktopWindow(const QWindow& window)
{
    xcb_connection_t* const server = XServer();
    if (server == nullptr)
        return;
    const auto id = static_cast<xcb_window_t>(window.winId());
    const std::vector<xcb_atom_t> atoms =
        Atoms(server, {"_NET_WM_STATE", "_NET_WM_STATE_BELOW", "_NET_WM_STATE_STICKY", "_NET_WM_STATE_SKIP_TASKBAR",
                       "_NET_WM_STATE_SKIP_PAGER", kMark});
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

bool IsDesktopAt(BPoint where)
{
    xcb_connection_t* const server = XServer();
    if (server == nullptr)
        return false;
    const QPoint place = ServerPoint(where);
    const xcb_window_t top = ChildAt(server, RootOf(server), place);
    if (top == XCB_NONE || ShowsNothing(server, top))
        return true;
    const std::vector<xcb_atom_t> atoms = Atoms(server, {"_NET_WM_WINDOW_TYPE", "_NET_WM_WINDOW_TYPE_DESKTOP", kMark});
    // The window itself may lie in a frame of the window manager's.
    xcb_window_t window = top;
    for (int depth = 0; depth < kDeepest && window != XCB_NONE; depth++) {
        if (Holds(PropertyOf(server, window, atoms[0]), atoms[1]) || !PropertyOf(server, window, atoms[2]).empty())
            return true;
        window = ChildAt(server, window, place);
    }
    return false;
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
