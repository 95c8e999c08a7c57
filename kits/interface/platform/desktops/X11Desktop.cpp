// SPDX-License-Identifier: MIT
#include "kits/interface/platform/desktops/X11Desktop.h"

#include "kits/interface/platform/desktops/RootPicture.h"

#include <random>

namespace kits {

namespace {

constexpr const char* kId = "Id";
constexpr const char* kPicture = "Picture";
constexpr const char* kOwned = "Owned";
constexpr const char* kOther = "OtherPicture";
constexpr const char* kIsPicture = "IsPicture";
constexpr const char* kColor = "Color";

/// For the life of this object, other programs see all changes as one step.
class ServerGrab {
public:
    explicit ServerGrab(xcb_connection_t* connection)
        : fConnection(connection)
    {
        xcb_grab_server(fConnection);
    }
    ~ServerGrab()
    {
        xcb_ungrab_server(fConnection);
        xcb_flush(fConnection);
    }
    ServerGrab(const ServerGrab&) = delete;
    ServerGrab& operator=(const ServerGrab&) = delete;

private:
    xcb_connection_t* fConnection;
};

xcb_pixmap_t Kept(const BMessage& kept, const char* name)
{
    int32 pixmap = XCB_NONE;
    kept.FindInt32(name, &pixmap);
    return static_cast<xcb_pixmap_t>(pixmap);
}

class RootWindow : public DesktopBackend {
public:
    explicit RootWindow(XWindows::Connection connection)
        : fConnection(std::move(connection))
        , fPicture(fConnection.get())
        , fRoot(fPicture.Screen()->root)
    {
        xcb_connection_t* server = fConnection.get();
        const std::vector<xcb_atom_t> atoms =
            XWindows::Atoms(server, {"_XROOTPMAP_ID", "ESETROOT_PMAP_ID", "_XSETROOT_ID", "_KITS_DESKTOP_PAINT"});
        fAtoms = {atoms[0], atoms[1], atoms[2], atoms[3]};
        const uint32 events = XCB_EVENT_MASK_PROPERTY_CHANGE;
        xcb_change_window_attributes(server, fRoot, XCB_CW_EVENT_MASK, &events);
        xcb_flush(server);
    }

    std::optional<rgb_color> Read() override
    {
        const xcb_pixmap_t picture = NamedPicture();
        const std::optional<RootPicture::Background> background = fPicture.ReadBackground(picture);
        fIsNamed = picture != XCB_NONE && (!background || background->isPicture);
        if (fIsNamed)
            return fPicture.AverageOf(picture);
        return background ? std::optional(background->average) : std::nullopt;
    }

    std::optional<BMessage> Keep() override
    {
        const xcb_pixmap_t picture = NamedPicture();
        const std::optional<RootPicture::Background> background = fPicture.ReadBackground(picture);
        const bool isPicture = picture != XCB_NONE && (!background || background->isPicture);
        uint32 pixel = 0;
        if (isPicture) {
            if (const auto average = fPicture.AverageOf(picture))
                pixel = fPicture.PixelOf(*average);
        } else {
            if (!background || !background->isPlain)
                return std::nullopt;
            pixel = background->pixel;
        }
        BMessage kept;
        std::random_device random;
        kept.AddInt64(kId, static_cast<int64>(static_cast<uint64>(random()) << 32 | random()));
        kept.AddInt32(kPicture, static_cast<int32>(PropertyOf(fAtoms.picture)));
        kept.AddInt32(kOwned, static_cast<int32>(PropertyOf(fAtoms.owned)));
        kept.AddInt32(kOther, static_cast<int32>(PropertyOf(fAtoms.otherPicture)));
        kept.AddBool(kIsPicture, isPicture);
        kept.AddInt32(kColor, static_cast<int32>(pixel));
        return kept;
    }

    bool Paint(rgb_color color, const BMessage& kept) override
    {
        const xcb_pixmap_t pixmap = MakePixmap(fPicture.PixelOf(color));
        if (pixmap == XCB_NONE)
            return false;
        int64 id = 0;
        kept.FindInt64(kId, &id);
        const uint64 bits = static_cast<uint64>(id);
        const std::vector<uint32_t> mark = {static_cast<uint32>(bits >> 32), static_cast<uint32>(bits), pixmap};
        const ServerGrab grab(fConnection.get());
        const xcb_pixmap_t before =
            fPainted != XCB_NONE && IsPainted() ? fPainted : static_cast<xcb_pixmap_t>(XCB_NONE);
        XWindows::SetProperty(fConnection.get(), fRoot, fAtoms.paint, XCB_ATOM_CARDINAL, mark);
        SetBackground(XCB_CW_BACK_PIXMAP, pixmap);
        SetNames(pixmap, pixmap, XCB_NONE);
        Free(before);
        fPainted = pixmap;
        return true;
    }

    bool Restore(const BMessage& kept) override
    {
        const ServerGrab grab(fConnection.get());
        fPainted = XCB_NONE;
        int64 id = 0;
        const std::optional<PaintMark> mark = Mark();
        // Another server, or a picture that is not ours.
        if (kept.FindInt64(kId, &id) != B_OK || !mark || mark->id != static_cast<uint64>(id))
            return xcb_connection_has_error(fConnection.get()) == 0;
        xcb_delete_property(fConnection.get(), fRoot, fAtoms.paint);
        if (PropertyOf(fAtoms.picture) != mark->pixmap)
            return true;
        const bool isShown = Shows(mark->pixmap);
        const xcb_pixmap_t ours = PropertyOf(fAtoms.owned) == mark->pixmap ? mark->pixmap : XCB_NONE;
        SetNames(Kept(kept, kPicture), Kept(kept, kOwned), Kept(kept, kOther));
        bool wasPicture = true;
        kept.FindBool(kIsPicture, &wasPicture);
        const xcb_pixmap_t picture = wasPicture ? NamedPicture() : static_cast<xcb_pixmap_t>(XCB_NONE);
        if (isShown && picture != XCB_NONE)
            SetBackground(XCB_CW_BACK_PIXMAP, picture);
        else if (isShown)
            SetBackground(XCB_CW_BACK_PIXEL, Kept(kept, kColor));
        Free(ours);
        return true;
    }

    bool Change(rgb_color color, const BMessage* kept) override
    {
        const xcb_pixmap_t pixmap = MakePixmap(fPicture.PixelOf(color));
        if (pixmap == XCB_NONE)
            return false;
        const ServerGrab grab(fConnection.get());
        const xcb_pixmap_t named = PropertyOf(fAtoms.picture);
        // A pixmap that we painted for a while is ours, and the user's picture waits below it.
        const bool isOurs = kept != nullptr && named == fPainted;
        const xcb_pixmap_t before = isOurs ? Kept(*kept, kPicture) : named;
        const xcb_pixmap_t owned = isOurs ? Kept(*kept, kOwned) : PropertyOf(fAtoms.owned);
        xcb_delete_property(fConnection.get(), fRoot, fAtoms.paint);
        SetBackground(XCB_CW_BACK_PIXMAP, pixmap);
        SetNames(pixmap, pixmap, XCB_NONE);
        if (isOurs)
            Free(fPainted);
        // By custom, the program that sets the next picture frees one that both properties name.
        if (before == owned)
            Free(owned);
        fPainted = XCB_NONE;
        return true;
    }

    bool IsPainted() const override { return PropertyOf(fAtoms.picture) == fPainted && Shows(fPainted); }

    std::vector<int> Descriptors() const override
    {
        // The connection to a server that is gone stays readable.
        if (xcb_connection_has_error(fConnection.get()) != 0)
            return {};
        return {xcb_get_file_descriptor(fConnection.get())};
    }

    bool TakeNews() override
    {
        bool isNews = false;
        for (;;) {
            const XWindows::Answer<xcb_generic_event_t> event(xcb_poll_for_event(fConnection.get()));
            if (event == nullptr)
                return isNews;
            if ((event->response_type & ~XWindows::kSentByClient) != XCB_PROPERTY_NOTIFY)
                continue;
            const xcb_atom_t atom = reinterpret_cast<const xcb_property_notify_event_t*>(event.get())->atom;
            isNews = isNews || atom == fAtoms.picture || atom == fAtoms.owned || atom == fAtoms.otherPicture;
        }
    }

    const char* Name() const override { return "x11"; }
    /// The root window ends with its server.
    bool OutlivesSession() const override { return false; }
    bool NeedsLooking() const override { return !fIsNamed; }

private:
    struct Atoms {
        xcb_atom_t picture;      ///< the picture's pixmap
        xcb_atom_t owned;        ///< the same pixmap, for the next program that sets a picture to free
        xcb_atom_t otherPicture; ///< some programs use this one instead of `picture`
        xcb_atom_t paint;        ///< a PaintMark: our pixmap, and the id of the kept background that it covers
    };
    /// The contents of the property `paint`.
    struct PaintMark {
        uint64 id;
        xcb_pixmap_t pixmap;
    };

    xcb_pixmap_t PropertyOf(xcb_atom_t atom) const
    {
        const std::vector<uint32_t> values = XWindows::Property(fConnection.get(), fRoot, atom, XCB_ATOM_PIXMAP);
        return values.empty() ? static_cast<xcb_pixmap_t>(XCB_NONE) : values.front();
    }

    /// Returns the root window's pixmap, if a property names it and it is still alive.
    xcb_pixmap_t NamedPicture() const
    {
        for (const xcb_atom_t atom : {fAtoms.picture, fAtoms.owned, fAtoms.otherPicture}) {
            const xcb_pixmap_t pixmap = PropertyOf(atom);
            if (pixmap == XCB_NONE)
                continue;
            const auto geometry =
                XWindows::Await(fConnection.get(), xcb_get_geometry_reply, xcb_get_geometry(fConnection.get(), pixmap));
            if (geometry != nullptr && geometry->depth == fPicture.Screen()->root_depth)
                return pixmap;
        }
        return XCB_NONE;
    }

    std::optional<PaintMark> Mark() const
    {
        const std::vector<uint32_t> values =
            XWindows::Property(fConnection.get(), fRoot, fAtoms.paint, XCB_ATOM_CARDINAL);
        if (values.size() < 3)
            return std::nullopt;
        return PaintMark{static_cast<uint64>(values[0]) << 32 | values[1], values[2]};
    }

    /// Makes a pixmap of one pixel, which a background repeats. It survives this process.
    xcb_pixmap_t MakePixmap(uint32 pixel)
    {
        // A program that sets the next background frees this pixmap by ending the client that made it. So a connection
        // of its own makes it.
        const XWindows::Connection painter = XWindows::Connect();
        if (painter == nullptr)
            return XCB_NONE;
        const xcb_pixmap_t pixmap = xcb_generate_id(painter.get());
        const xcb_gcontext_t context = xcb_generate_id(painter.get());
        xcb_set_close_down_mode(painter.get(), XCB_CLOSE_DOWN_RETAIN_PERMANENT);
        xcb_create_pixmap(painter.get(), fPicture.Screen()->root_depth, pixmap, fRoot, 1, 1);
        xcb_create_gc(painter.get(), context, pixmap, XCB_GC_FOREGROUND, &pixel);
        const xcb_rectangle_t all{0, 0, 1, 1};
        xcb_poly_fill_rectangle(painter.get(), pixmap, context, 1, &all);
        xcb_free_gc(painter.get(), context);
        // The pixmap must exist before the other connection uses it.
        const auto made =
            XWindows::Await(painter.get(), xcb_get_geometry_reply, xcb_get_geometry(painter.get(), pixmap));
        return made != nullptr ? pixmap : static_cast<xcb_pixmap_t>(XCB_NONE);
    }

    void SetNames(xcb_pixmap_t picture, xcb_pixmap_t owned, xcb_pixmap_t otherPicture)
    {
        for (const auto& [atom, pixmap] :
             {std::pair(fAtoms.otherPicture, otherPicture), {fAtoms.owned, owned}, {fAtoms.picture, picture}})
            if (pixmap == XCB_NONE)
                xcb_delete_property(fConnection.get(), fRoot, atom);
            else
                XWindows::SetProperty(fConnection.get(), fRoot, atom, XCB_ATOM_PIXMAP, {pixmap});
    }

    /// @param what  XCB_CW_BACK_PIXMAP or XCB_CW_BACK_PIXEL
    void SetBackground(uint32 what, uint32 value)
    {
        xcb_change_window_attributes(fConnection.get(), fRoot, what, &value);
        xcb_clear_area(fConnection.get(), 0, fRoot, 0, 0, 0, 0);
    }

    /// Kills the client that has made a pixmap, which frees it; does nothing for XCB_NONE.
    void Free(xcb_pixmap_t pixmap)
    {
        // XCB_NONE would mean all clients that have left something behind.
        if (pixmap != XCB_NONE)
            xcb_kill_client(fConnection.get(), pixmap);
    }

    /// Returns whether the root window shows this pixmap, as far as that can be found out.
    bool Shows(xcb_pixmap_t pixmap) const
    {
        const std::optional<RootPicture::Background> background = fPicture.ReadBackground(pixmap);
        return !background || background->isPicture;
    }

    XWindows::Connection fConnection;
    RootPicture fPicture;
    xcb_window_t fRoot;
    Atoms fAtoms{};
    bool fIsNamed = true;
    xcb_pixmap_t fPainted = XCB_NONE;
};

} // namespace

std::unique_ptr<DesktopBackend> X11Desktop::Connect()
{
    XWindows::Connection connection = XWindows::Connect();
    if (connection == nullptr || !RootPicture(connection.get()).HasTrueColor())
        return nullptr;
    return std::make_unique<RootWindow>(std::move(connection));
}

int32 X11Desktop::CurrentWorkspace()
{
    const XWindows::Connection connection = XWindows::Connect();
    if (connection == nullptr)
        return 0;
    xcb_connection_t* const server = connection.get();
    const std::vector<uint32_t> current = XWindows::Property(
        server, XWindows::Root(server), XWindows::Atoms(server, {"_NET_CURRENT_DESKTOP"})[0], XCB_ATOM_CARDINAL);
    return current.empty() ? 0 : static_cast<int32>(current.front());
}

std::optional<std::pair<int, int>> X11Desktop::Size()
{
    const XWindows::Connection connection = XWindows::Connect();
    if (connection == nullptr)
        return std::nullopt;
    const xcb_screen_t* screen = xcb_setup_roots_iterator(xcb_get_setup(connection.get())).data;
    return std::pair(screen->width_in_pixels, screen->height_in_pixels);
}

} // namespace kits
