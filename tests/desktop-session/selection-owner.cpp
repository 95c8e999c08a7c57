// SPDX-License-Identifier: MIT
#include <poll.h>
#include <xcb/xcb.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <deque>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

/// Another program that owns a selection, or drags something, and gives its data correctly or badly, for the tests on a
/// desktop:
///   selection_owner BEHAVIOUR FORM FILE SELECTION
///   selection_owner BEHAVIOUR FORM FILE XdndSelection WINDOW X Y
/// owns CLIPBOARD or PRIMARY, or drags over a window, at a place of the screen, and offers the file's content in this
/// form. A line on stdin drops it. It prints "ready"; "asked FORM" for each question; "over 1" or "over 0" for the
/// window's answer to the drag, and "dropped 1" or "dropped 0" for the end of the drop.
///
/// Behaviours: good; pieces (of 1000 bytes); silent; late (three seconds); trickle (a piece of one byte again and
/// again, for ever); flood (pieces of 64 KiB for ever); dies (when asked for the data); refuses; other (another type);
/// twice (the same answer again and again).

namespace {

using Clock = std::chrono::steady_clock;

void Tell(const std::string& line)
{
    std::puts(line.c_str());
    std::fflush(stdout);
}

struct Free {
    void operator()(void* reply) const { std::free(reply); }
};

class Owner {
public:
    Owner(std::string behaviour, const std::string& form, std::string data, const std::string& selection)
        : fBehaviour(std::move(behaviour))
        , fData(std::move(data))
        , fServer(xcb_connect(nullptr, nullptr))
        , fWindow(xcb_generate_id(fServer))
        , fForm(Atom(form))
        , fSelection(Atom(selection))
        , fTargets(Atom("TARGETS"))
        , fIncremental(Atom("INCR"))
    {
        const xcb_screen_t* const screen = xcb_setup_roots_iterator(xcb_get_setup(fServer)).data;
        const uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
        xcb_create_window(fServer, XCB_COPY_FROM_PARENT, fWindow, screen->root, 0, 0, 1, 1, 0,
                          XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &mask);
        xcb_set_selection_owner(fServer, fWindow, fSelection, XCB_CURRENT_TIME);
        xcb_flush(fServer);
    }

    void DragOver(xcb_window_t target, int x, int y)
    {
        fTarget = target;
        fPlace = static_cast<uint32_t>(x) << 16 | static_cast<uint32_t>(y);
        Send("XdndEnter", {fWindow, 5u << 24, fForm, 0, 0});
        Send("XdndPosition", {fWindow, 0, fPlace, kTime, Atom("XdndActionCopy")});
    }

    int Run()
    {
        Tell("ready");
        pollfd sources[] = {{xcb_get_file_descriptor(fServer), POLLIN, 0}, {0, POLLIN, 0}};
        while (xcb_connection_has_error(fServer) == 0) {
            while (const std::unique_ptr<xcb_generic_event_t, Free> event{xcb_poll_for_event(fServer)})
                Handle(*event);
            Continue();
            xcb_flush(fServer);
            poll(sources, std::size(sources), 20);
            char line[64];
            if ((sources[1].revents & POLLIN) != 0 && std::fgets(line, sizeof line, stdin) == nullptr)
                sources[1].fd = -1;
            else if ((sources[1].revents & POLLIN) != 0)
                Send("XdndDrop", {fWindow, 0, kTime, 0, 0});
        }
        return 0;
    }

private:
    static constexpr uint32_t kTime = 4711;

    struct Request {
        xcb_selection_request_event_t event;
        Clock::time_point due;
    };
    /// An answer in pieces.
    struct Stream {
        xcb_window_t window = 0;
        xcb_atom_t property = 0;
        size_t at = 0;
        Clock::time_point due;
        bool isFree = false;
        bool isOver = false;
    };

    xcb_atom_t Atom(const std::string& name)
    {
        const std::unique_ptr<xcb_intern_atom_reply_t, Free> reply{xcb_intern_atom_reply(
            fServer, xcb_intern_atom(fServer, 0, static_cast<uint16_t>(name.size()), name.c_str()), nullptr)};
        return reply->atom;
    }

    std::string NameOf(xcb_atom_t atom)
    {
        const std::unique_ptr<xcb_get_atom_name_reply_t, Free> reply{
            xcb_get_atom_name_reply(fServer, xcb_get_atom_name(fServer, atom), nullptr)};
        return {xcb_get_atom_name_name(reply.get()), static_cast<size_t>(xcb_get_atom_name_name_length(reply.get()))};
    }

    void Send(const char* type, const std::vector<uint32_t>& data)
    {
        xcb_client_message_event_t message{};
        message.response_type = XCB_CLIENT_MESSAGE;
        message.format = 32;
        message.window = fTarget;
        message.type = Atom(type);
        std::memcpy(message.data.data32, data.data(), data.size() * sizeof(uint32_t));
        xcb_send_event(fServer, 0, fTarget, 0, reinterpret_cast<const char*>(&message));
        xcb_flush(fServer);
    }

    void Write(xcb_window_t window, xcb_atom_t property, xcb_atom_t type, const std::string& bytes)
    {
        xcb_change_property(fServer, XCB_PROP_MODE_REPLACE, window, property, type, 8,
                            static_cast<uint32_t>(bytes.size()), bytes.data());
    }

    void Notify(const xcb_selection_request_event_t& request, bool isGiven)
    {
        xcb_selection_notify_event_t notice{};
        notice.response_type = XCB_SELECTION_NOTIFY;
        notice.requestor = request.requestor;
        notice.selection = request.selection;
        notice.target = request.target;
        notice.property = isGiven ? request.property : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
        notice.time = request.time;
        xcb_send_event(fServer, 0, request.requestor, 0, reinterpret_cast<const char*>(&notice));
    }

    void Handle(const xcb_generic_event_t& event)
    {
        switch (event.response_type & 0x7f) {
        case XCB_SELECTION_REQUEST:
            Asked(reinterpret_cast<const xcb_selection_request_event_t&>(event));
            break;
        case XCB_PROPERTY_NOTIFY: {
            const auto& notice = reinterpret_cast<const xcb_property_notify_event_t&>(event);
            if (notice.state == XCB_PROPERTY_DELETE && notice.window == fStream.window &&
                notice.atom == fStream.property)
                fStream.isFree = true;
            break;
        }
        case XCB_CLIENT_MESSAGE: {
            const auto& message = reinterpret_cast<const xcb_client_message_event_t&>(event);
            if (message.type == Atom("XdndStatus"))
                Tell("over " + std::to_string(message.data.data32[1] & 1));
            else if (message.type == Atom("XdndFinished"))
                Tell("dropped " + std::to_string(message.data.data32[1] & 1));
            break;
        }
        default:
            break;
        }
    }

    void Asked(const xcb_selection_request_event_t& request)
    {
        Tell("asked " + NameOf(request.target));
        if (fBehaviour == "silent")
            return;
        const auto delay = std::chrono::seconds(fBehaviour == "late" ? 3 : 0);
        fRequests.push_back({request, Clock::now() + delay});
    }

    void Continue()
    {
        while (!fRequests.empty() && fRequests.front().due <= Clock::now()) {
            Answer(fRequests.front().event);
            fRequests.pop_front();
        }
        if (fStream.window != 0 && fStream.isFree && !fStream.isOver && fStream.due <= Clock::now())
            NextPiece();
    }

    void Answer(const xcb_selection_request_event_t& request)
    {
        if (request.target == fTargets) {
            const xcb_atom_t offers[] = {fTargets, fForm};
            xcb_change_property(fServer, XCB_PROP_MODE_REPLACE, request.requestor, request.property, XCB_ATOM_ATOM, 32,
                                std::size(offers), offers);
            Notify(request, true);
        } else if (request.target != fForm || fBehaviour == "refuses") {
            Notify(request, false);
        } else if (fBehaviour == "dies") {
            std::_Exit(0);
        } else if (fBehaviour == "pieces" || fBehaviour == "trickle" || fBehaviour == "flood") {
            const uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
            xcb_change_window_attributes(fServer, request.requestor, XCB_CW_EVENT_MASK, &mask);
            fStream = {request.requestor, request.property, 0, Clock::now(), false, false};
            const uint32_t least = 1;
            xcb_change_property(fServer, XCB_PROP_MODE_REPLACE, request.requestor, request.property, fIncremental, 32,
                                1, &least);
            Notify(request, true);
        } else {
            Write(request.requestor, request.property, fBehaviour == "other" ? Atom("INTEGER") : fForm, fData);
            Notify(request, true);
            // Sends the same answer again.
            if (fBehaviour == "twice")
                fRequests.push_back({request, Clock::now() + std::chrono::milliseconds(100)});
        }
    }

    void NextPiece()
    {
        std::string piece;
        if (fBehaviour == "trickle")
            piece = "x";
        else if (fBehaviour == "flood")
            piece = std::string(65536, 'x');
        else
            piece = fData.substr(std::min(fStream.at, fData.size()), 1000);
        fStream.isFree = false;
        fStream.isOver = piece.empty();
        fStream.at += piece.size();
        fStream.due = Clock::now() + std::chrono::milliseconds(fBehaviour == "trickle" ? 100 : 0);
        Write(fStream.window, fStream.property, fForm, piece);
    }

    const std::string fBehaviour;
    const std::string fData;
    xcb_connection_t* const fServer;
    const xcb_window_t fWindow;
    const xcb_atom_t fForm;
    const xcb_atom_t fSelection;
    const xcb_atom_t fTargets;
    const xcb_atom_t fIncremental;
    xcb_window_t fTarget = 0;
    uint32_t fPlace = 0;
    std::deque<Request> fRequests;
    Stream fStream;
};

} // namespace

int main(int argc, char** argv)
{
    if (argc != 5 && argc != 8) {
        std::fprintf(stderr, "usage: %s BEHAVIOUR FORM FILE SELECTION [WINDOW X Y]\n", argv[0]);
        return 2;
    }
    std::ifstream file(argv[3], std::ios::binary);
    Owner owner(argv[1], argv[2], std::string(std::istreambuf_iterator<char>(file), {}), argv[4]);
    if (argc == 8)
        owner.DragOver(static_cast<xcb_window_t>(std::strtoul(argv[5], nullptr, 0)), std::atoi(argv[6]),
                       std::atoi(argv[7]));
    return owner.Run();
}
