// SPDX-License-Identifier: MIT
#include "kits/interface/platform/x11/XSelections.h"

#include "kits/application/EventLoop.h"
#include "kits/application/MainThread.h"
#include "kits/application/Timer.h"
#include "kits/interface/platform/x11/XConversion.h"
#include "kits/interface/platform/x11/XWindows.h"
#include "kits/kernel/Bounds.h"

#include <QAbstractNativeEventFilter>
#include <QByteArray>
#include <QClipboard>
#include <QGuiApplication>
#include <QString>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstring>
#include <map>
#include <optional>
#include <utility>

namespace kits::XSelections {

namespace {

/// A late answer can be mistaken for the answer to a new question only after this many questions.
constexpr uint32 kProperties = 32;

constexpr const char* kDrag = "XdndSelection";
constexpr const char* kTargets = "TARGETS";
constexpr const char* kIncremental = "INCR";
constexpr const char* kUtf8 = "UTF8_STRING";
constexpr const char* kTypeList = "XdndTypeList";

/// The window that asks, and the unanswered questions.
class Asker : public QAbstractNativeEventFilter, public XConversion::Port {
public:
    using Answered = std::function<void(const XConversion&)>;

    explicit Asker(xcb_connection_t* server)
        : fServer(server)
        , fWindow(xcb_generate_id(server))
    {
        // One round trip for all atoms whose names are known.
        const std::initializer_list<const char*> names = {kClipboard,   kPrimary, kDrag,    kTargets,
                                                          kIncremental, kUtf8,    kTypeList};
        const std::vector<xcb_atom_t> atoms = XWindows::Atoms(server, names);
        for (size_t i = 0; i < atoms.size(); i++)
            fAtoms[names.begin()[i]] = atoms[i];
        const std::array<uint32_t, 2> values{1, XCB_EVENT_MASK_PROPERTY_CHANGE};
        xcb_create_window(server, XCB_COPY_FROM_PARENT, fWindow, XWindows::Root(server), -1, -1, 1, 1, 0,
                          XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT,
                          XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK, values.data());
        qGuiApp->installNativeEventFilter(this);
    }
    ~Asker() override { xcb_destroy_window(fServer, fWindow); }

    xcb_connection_t* Server() const { return fServer; }

    xcb_atom_t AtomOf(const std::string& name)
    {
        const auto known = fAtoms.find(name);
        if (known != fAtoms.end())
            return known->second;
        return fAtoms.emplace(name, XWindows::Atoms(fServer, {name.c_str()})[0]).first->second;
    }

    /// @param answered  called once, in a turn of the event loop
    /// @return a number with which to withdraw the question
    uint64 Ask(xcb_atom_t selection, xcb_atom_t target, xcb_timestamp_t time, size_t limit, Answered answered)
    {
        const xcb_atom_t property = AtomOf("KITS_SELECTION_" + std::to_string(fAsked++ % kProperties));
        xcb_delete_property(fServer, fWindow, property);
        xcb_convert_selection(fServer, fWindow, selection, target, property, time);
        xcb_flush(fServer);
        fOpen.emplace(fAsked, Open{XConversion({selection, target, property}, AtomOf(kIncremental), limit, *this),
                                   std::move(answered)});
        return fAsked;
    }
    void TakeBack(uint64 question) { fOpen.erase(question); }

    XConversion::Piece Take(uint32 property, size_t most) override
    {
        // One byte more than allowed reveals an oversized answer; the unit is words of four bytes.
        const size_t words = most / 4 + 1;
        const auto answer = XWindows::Await(fServer, xcb_get_property_reply,
                                            xcb_get_property(fServer, 0, fWindow, property, XCB_GET_PROPERTY_TYPE_ANY,
                                                             0, static_cast<uint32_t>(words)));
        xcb_delete_property(fServer, fWindow, property);
        xcb_flush(fServer);
        XConversion::Piece piece;
        if (answer == nullptr)
            return piece;
        piece.type = answer->type;
        const auto length = static_cast<size_t>(xcb_get_property_value_length(answer.get()));
        piece.isWhole = answer->bytes_after == 0 && length <= most;
        if (piece.isWhole)
            piece.bytes.assign(static_cast<const char*>(xcb_get_property_value(answer.get())), length);
        return piece;
    }

    bool nativeEventFilter(const QByteArray&, void* event, qintptr*) override
    {
        switch (static_cast<const xcb_generic_event_t*>(event)->response_type & ~XWindows::kSentByClient) {
        case XCB_SELECTION_NOTIFY: {
            const auto* const notice = static_cast<const xcb_selection_notify_event_t*>(event);
            if (notice->requestor != fWindow)
                return false;
            Tell([notice](XConversion& open) { open.Answered(notice->selection, notice->target, notice->property); });
            return true;
        }
        case XCB_PROPERTY_NOTIFY: {
            const auto* const notice = static_cast<const xcb_property_notify_event_t*>(event);
            if (notice->window != fWindow)
                return false;
            if (notice->state == XCB_PROPERTY_NEW_VALUE)
                NewValue(notice->atom);
            return true;
        }
        default:
            return false;
        }
    }

private:
    struct Open {
        XConversion conversion;
        Answered answered;
        bool isToldOf = false;
    };

    void NewValue(xcb_atom_t property)
    {
        const auto isOf = [property](const auto& open) { return open.second.conversion.Asked().property == property; };
        // A late answer is removed.
        if (std::none_of(fOpen.begin(), fOpen.end(), isOf))
            xcb_delete_property(fServer, fWindow, property);
        else
            Tell([property](XConversion& open) { open.Changed(property); });
    }

    template <class Function> void Tell(Function function)
    {
        for (auto& [number, open] : fOpen) {
            function(open.conversion);
            if (!open.conversion.IsOver() || std::exchange(open.isToldOf, true))
                continue;
            // The display's events come without the interface lock.
            RunOnMainThread([number = number] { Finish(number); });
        }
    }

    static void Finish(uint64 question);

    xcb_connection_t* const fServer;
    const xcb_window_t fWindow;
    std::map<std::string, xcb_atom_t> fAtoms;
    uint64 fAsked = 0;
    std::map<uint64, Open> fOpen;
};

std::unique_ptr<Asker> sAsker;

void Asker::Finish(uint64 question)
{
    if (sAsker == nullptr)
        return;
    auto open = sAsker->fOpen.extract(question);
    if (!open.empty())
        open.mapped().answered(open.mapped().conversion);
}

Asker& TheAsker()
{
    if (sAsker == nullptr)
        sAsker = std::make_unique<Asker>(XServer());
    return *sAsker;
}

bool HasOwner(xcb_atom_t selection)
{
    return XWindows::Owner(TheAsker().Server(), selection) != XCB_NONE;
}

bool IsText(const std::string& form)
{
    return form == "STRING" || form == kUtf8 || form.starts_with("text/");
}

class Source : public SelectionSource {
public:
    Source(const char* selection, xcb_timestamp_t time, std::optional<std::vector<xcb_atom_t>> forms)
        : fSelection(TheAsker().AtomOf(selection))
        , fTime(time)
        , fForms(std::move(forms))
    {
    }
    ~Source() override
    {
        if (sAsker != nullptr)
            sAsker->TakeBack(fQuestion);
    }

    void AskOffers(std::function<void(Offers)> answer) override
    {
        if (fForms.has_value()) {
            answer(NamesOf(*fForms));
            return;
        }
        fQuestion = TheAsker().Ask(
            fSelection, TheAsker().AtomOf(kTargets), fTime, bounds::kMostForms * sizeof(xcb_atom_t),
            [answer = std::move(answer)](const XConversion& conversion) { answer(OffersIn(conversion)); });
    }

    void Ask(const SelectionForm& form, std::function<void(Data)> answer) override
    {
        const xcb_atom_t target = TheAsker().AtomOf(form.name);
        fQuestion = TheAsker().Ask(fSelection, target, fTime, form.limit,
                                   [answer = std::move(answer), name = form.name](const XConversion& conversion) {
                                       answer(DataIn(conversion, name));
                                   });
    }

private:
    static Offers OffersIn(const XConversion& conversion)
    {
        // Some owners give the list the name of the question as its type.
        if (conversion.Current() != XConversion::State::kDone ||
            (conversion.Type() != XCB_ATOM_ATOM && conversion.Type() != TheAsker().AtomOf(kTargets)))
            return std::nullopt;
        std::vector<xcb_atom_t> atoms(conversion.Bytes().size() / sizeof(xcb_atom_t));
        std::memcpy(atoms.data(), conversion.Bytes().data(), atoms.size() * sizeof(xcb_atom_t));
        return NamesOf(atoms);
    }

    /// Returns the names of those forms that we may ask for.
    static std::vector<std::string> NamesOf(const std::vector<xcb_atom_t>& atoms)
    {
        std::vector<std::string> names;
        for (const char* const name : kForms)
            if (std::find(atoms.begin(), atoms.end(), TheAsker().AtomOf(name)) != atoms.end())
                names.emplace_back(name);
        return names;
    }

    static Data DataIn(const XConversion& conversion, const std::string& name)
    {
        if (conversion.Current() != XConversion::State::kDone)
            return std::nullopt;
        const xcb_atom_t type = conversion.Type();
        const bool isText = IsText(name);
        if (isText && type == XCB_ATOM_STRING)
            return QString::fromLatin1(conversion.Bytes().data(), static_cast<qsizetype>(conversion.Bytes().size()))
                .toUtf8()
                .toStdString();
        if (type == conversion.Asked().target || (isText && type == TheAsker().AtomOf(kUtf8)))
            return conversion.Bytes();
        return std::nullopt;
    }

    static constexpr const char* kForms[] = {"application/x-kits-message",
                                             "application/x-color",
                                             "UTF8_STRING",
                                             "text/plain;charset=utf-8",
                                             "text/plain",
                                             "STRING",
                                             "text/uri-list"};

    const xcb_atom_t fSelection;
    const xcb_timestamp_t fTime;
    const std::optional<std::vector<xcb_atom_t>> fForms;
    uint64 fQuestion = 0;
};

} // namespace

std::unique_ptr<SelectionSource> SourceOf(const char* selection)
{
    if (!HasOwner(TheAsker().AtomOf(selection)))
        return nullptr;
    return std::make_unique<Source>(selection, XCB_CURRENT_TIME, std::nullopt);
}

std::unique_ptr<SelectionSource> SourceOf(const Drag& drag)
{
    std::vector<xcb_atom_t> forms = drag.forms;
    if (drag.hasMoreForms)
        forms = XWindows::Property(TheAsker().Server(), drag.source, TheAsker().AtomOf(kTypeList));
    return std::make_unique<Source>(kDrag, drag.time, std::move(forms));
}

void HandOver()
{
    QClipboard& clipboard = *QGuiApplication::clipboard();
    if (XServer() == nullptr || (!clipboard.ownsClipboard() && !clipboard.ownsSelection()))
        return;
    const xcb_atom_t keeper = TheAsker().AtomOf("CLIPBOARD_MANAGER");
    if (!HasOwner(keeper))
        return;
    const uint64 question = TheAsker().Ask(
        keeper, TheAsker().AtomOf("SAVE_TARGETS"), XCB_CURRENT_TIME, 0,
        [](const XConversion&) { EventLoop::Current().Quit(); });
    Timer deadline([] { EventLoop::Current().Quit(); });
    deadline.Start(std::chrono::microseconds(bounds::kLongestHandover).count(), false);
    EventLoop::Current().Run();
    TheAsker().TakeBack(question);
    if (clipboard.ownsClipboard())
        clipboard.clear(QClipboard::Clipboard);
    if (clipboard.ownsSelection())
        clipboard.clear(QClipboard::Selection);
}

void Stop()
{
    sAsker.reset();
}

} // namespace kits::XSelections
