// SPDX-License-Identifier: MIT
#include "kits/interface/platform/wayland/WaylandSource.h"

#include "kits/interface/platform/selections/PipeReader.h"
#include "kits/interface/platform/selections/ToolkitSource.h"

#include <QString>

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/uio.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <optional>
#include <typeinfo>

namespace kits::WaylandSource {

namespace {

/// Asks the owner of the offer to write data of this form to the descriptor.
using StartReceiving = void (*)(void* offer, const QString& form, int descriptor);

struct Offer {
    void* object = nullptr;
    StartReceiving start = nullptr;
};

/// Stands in for the toolkit's interface of all kinds of offers, which also begins with a destructor.
struct Polymorphic {
    virtual ~Polymorphic() = default;
};

/// Reads words of this process's memory; returns nothing if there is no memory: the toolkit may be built differently
/// than expected.
template <size_t kCount> std::optional<std::array<uintptr_t, kCount>> WordsAt(const void* place)
{
    std::array<uintptr_t, kCount> words{};
    const iovec to{words.data(), sizeof words};
    const iovec from{const_cast<void*>(place), sizeof words};
    if (process_vm_readv(getpid(), &to, 1, &from, 1, 0) != static_cast<ssize_t>(sizeof words))
        return std::nullopt;
    return words;
}

bool IsOf(const char* name, std::initializer_list<const char*> classes)
{
    return std::any_of(
        classes.begin(), classes.end(), [name](const char* known) { return std::strcmp(name, known) == 0; });
}

/// Finds the index of startReceiving among the virtual functions of the interface, by looking it up in the table of the
/// one kind of offer that the library exports.
std::optional<size_t> FindSlot(const void* ofLibrary)
{
    Dl_info info{};
    if (dladdr(ofLibrary, &info) == 0)
        return std::nullopt;
    void* const library = dlopen(info.dli_fname, RTLD_LAZY | RTLD_NOLOAD);
    if (library == nullptr)
        return std::nullopt;
    const void* const table = dlsym(library, "_ZTVN15QtWaylandClient17QWaylandDataOfferE");
    const auto type = reinterpret_cast<uintptr_t>(dlsym(library, "_ZTIN15QtWaylandClient17QWaylandDataOfferE"));
    dlclose(library);
    constexpr size_t kWords = 32;
    constexpr const char* kName = "_N15QtWaylandClient17QWaylandDataOffer14startReceivingERK7QStringi";
    const auto words = table != nullptr ? WordsAt<kWords>(table) : std::nullopt;
    if (!words.has_value() || type == 0)
        return std::nullopt;
    size_t first = 0;
    for (size_t i = 0; i < kWords; i++) {
        if ((*words)[i] == type) {
            first = i + 1;
            continue;
        }
        Dl_info function{};
        const auto* const place = reinterpret_cast<const void*>((*words)[i]);
        if (dladdr(place, &function) != 0 && function.dli_saddr == place && function.dli_sname != nullptr &&
            std::strncmp(function.dli_sname, "_ZThn", 5) == 0 && std::strstr(function.dli_sname, kName) != nullptr)
            return first != 0 ? std::optional(i - first) : std::nullopt;
    }
    return std::nullopt;
}

std::optional<Offer> OfferIn(const QMimeData& data)
{
    if (!IsOf(typeid(data).name(), {"N15QtWaylandClient16QWaylandMimeDataE"}))
        return std::nullopt;
    const auto object = WordsAt<1>(&data);
    // The first member of the toolkit's class points to the offer.
    const auto member = WordsAt<1>(reinterpret_cast<const char*>(&data) + sizeof(QMimeData));
    static const std::optional<size_t> sSlot =
        object.has_value() ? FindSlot(reinterpret_cast<const void*>((*object)[0])) : std::nullopt;
    constexpr size_t kMostSlots = 8;
    if (!sSlot.has_value() || *sSlot >= kMostSlots || !member.has_value())
        return std::nullopt;
    auto* const offer = reinterpret_cast<void*>((*member)[0]);
    const auto table = WordsAt<1>(offer);
    if (!table.has_value() || !WordsAt<2>(reinterpret_cast<const uintptr_t*>((*table)[0]) - 2).has_value())
        return std::nullopt;
    const char* const kind = typeid(*static_cast<const Polymorphic*>(offer)).name();
    const auto functions = WordsAt<kMostSlots>(reinterpret_cast<const void*>((*table)[0]));
    if (!functions.has_value() ||
        !IsOf(kind, {"N15QtWaylandClient17QWaylandDataOfferE", "N15QtWaylandClient31QWaylandPrimarySelectionOfferV1E"}))
        return std::nullopt;
    return Offer{offer, reinterpret_cast<StartReceiving>((*functions)[*sSlot])};
}

/// The toolkit knows the forms at once, but waits for the data.
class Source : public ToolkitSource {
public:
    using ToolkitSource::ToolkitSource;

    void Ask(const SelectionForm& form, std::function<void(Data)> answer) override
    {
        fReader.reset();
        // The toolkit drops an offer when another one comes.
        const std::optional<Offer> offer = Offered() != nullptr ? OfferIn(*Offered()) : std::nullopt;
        std::array<int, 2> ends{};
        if (!offer.has_value() || pipe2(ends.data(), O_CLOEXEC) != 0) {
            answer(std::nullopt);
            return;
        }
        offer->start(offer->object, QString::fromStdString(form.name), ends[1]);
        close(ends[1]);
        fReader = std::make_unique<PipeReader>(ends[0], form.limit, std::move(answer));
    }

private:
    std::unique_ptr<PipeReader> fReader;
};

} // namespace

std::unique_ptr<SelectionSource> Of(const QMimeData& offered)
{
    return OfferIn(offered).has_value() ? std::make_unique<Source>(offered) : nullptr;
}

} // namespace kits::WaylandSource
