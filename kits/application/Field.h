// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/Message.h"
#include "kits/support/Flattenable.h"
#include "kits/support/Point.h"
#include "kits/support/Rect.h"
#include "kits/support/TypeConstants.h"

#include <cstring>
#include <limits>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

namespace kits {

/// How to treat a value outside its range.
enum class Outside {
    kLeftOut, ///< it counts as absent
    kHeld     ///< the nearest value of the range is used; NaN becomes the lowest
};

/// No screen is larger: a rectangle whose left or top lies beyond that counts as absent. Pixels.
inline constexpr float kFarthestPlace = 100'000;

/// For ranges that only the type of the value limits.
inline constexpr int32 kMostNumber = std::numeric_limits<int32>::max();

/// Returns the length of the longest prefix of a UTF-8 text that has at most `limit` bytes and ends between two
/// characters.
size_t CutLength(std::string_view text, size_t limit);

/// The properties of every declared field, whatever the type of its values. Immutable: any thread.
class AnyField {
public:
    AnyField(const AnyField&) = delete;
    AnyField& operator=(const AnyField&) = delete;

    const char* Name() const { return fName; }
    type_code Type() const { return fType; }
    /// Both ends belong to the range. It is the range of a number, of both coordinates of a point, of a rectangle's
    /// width and height, or of a font's size; for a text, bytes or a record, the number of bytes; otherwise 0 to 1.
    double Low() const { return fLow; }
    double High() const { return fHigh; }
    /// The maximum number of values: values with an index of this number or more count as absent.
    int32 Most() const { return fMost; }

    /// The first declared field of all those in the linked program, in no particular order, and the field after this
    /// one; null at the end.
    static const AnyField* All();
    const AnyField* Next() const { return fNext; }

    /// False for NaN.
    bool InRange(double value) const { return value >= fLow && value <= fHigh; }

    /// Returns the number of values that a message has of this field; values of another type count as absent.
    int32 Count(const BMessage& from) const;
    bool IsIn(const BMessage& from) const { return Count(from) > 0; }
    void Remove(BMessage* from) const;

    /// Adds to a message the value that Find() takes from another one. For callers that go through all fields without
    /// knowing their types, such as a test.
    /// @return false if there is nothing to take
    virtual bool Copy(const BMessage& from, BMessage* into, int32 index = 0) const = 0;

protected:
    /// @param name  not copied; must stay valid
    AnyField(const char* name, type_code type, double low, double high, Outside outside, int32 most);
    ~AnyField() = default;

    /// Finds the bytes of a value, for a text without its terminating zero; they belong to the message.
    bool FindBytes(const BMessage& from, int32 index, std::string_view* bytes) const;

    // Each of these brings a value into the range, if the field holds values to it. Returns false if the value counts
    // as absent.

    bool Take(BPoint* value) const;
    bool Take(BRect* value) const;
    /// Cuts a text between two characters.
    bool Take(std::string_view* bytes) const;
    template <class T> bool Take(T* value) const
    {
        if constexpr (std::is_arithmetic_v<T>) {
            const auto number = static_cast<double>(*value);
            if (!InRange(number)) {
                *value = static_cast<T>(number > fHigh ? fHigh : fLow);
                return fOutside == Outside::kHeld;
            }
        }
        return true;
    }

private:
    const char* const fName;
    const AnyField* const fNext;
    const double fLow;
    const double fHigh;
    const type_code fType;
    const int32 fMost;
    const Outside fOutside;
};

/// The type code for values of a C++ type in a message, unless a field specifies another one.
template <class T> inline constexpr type_code kTypeOf = B_RAW_TYPE;
template <> inline constexpr type_code kTypeOf<bool> = B_BOOL_TYPE;
template <> inline constexpr type_code kTypeOf<int16> = B_INT16_TYPE;
template <> inline constexpr type_code kTypeOf<int32> = B_INT32_TYPE;
template <> inline constexpr type_code kTypeOf<int64> = B_INT64_TYPE;
template <> inline constexpr type_code kTypeOf<float> = B_FLOAT_TYPE;
template <> inline constexpr type_code kTypeOf<BPoint> = B_POINT_TYPE;
template <> inline constexpr type_code kTypeOf<BRect> = B_RECT_TYPE;
template <> inline constexpr type_code kTypeOf<std::string> = B_STRING_TYPE;
template <> inline constexpr type_code kTypeOf<void*> = B_POINTER_TYPE;
template <> inline constexpr type_code kTypeOf<BMessage> = B_MESSAGE_TYPE;
template <> inline constexpr type_code kTypeOf<BMessenger> = B_MESSENGER_TYPE;

/// One key of an archive or of a message: its name, the type of its values, their range and the default. Each key is
/// declared once, as a constant next to the class that owns the setting:
///
///     inline const kits::Field<int16> kSkipValueField("SkipValue", 0, 50);
///
/// and all code reads and writes it through that constant. Messages may come from anywhere: an older or newer version,
/// a damaged file, another program. Find() accepts only a value of this type that is in the range or can be held to it,
/// so callers need not check it again.
///
/// T is one of
///     bool, int16, int32, int64, float, BPoint, BRect
///     std::string       a text
///     std::string_view  any number of bytes; they belong to the message, and are valid until it changes
///     void*             an address within this process
///     BMessage, BMessenger
///     a class derived from BFlattenable; the range is that of its Size()
///     any other trivially copyable type, as a record: its bytes
/// @tparam kType the type code, if it is not that of T
template <class T, type_code kType = kTypeOf<T>> class Field final : public AnyField {
    static constexpr bool kIsSwitch = std::is_same_v<T, bool>;
    static constexpr bool kIsNumber = std::is_arithmetic_v<T> || std::is_same_v<T, BPoint> || std::is_same_v<T, BRect>;
    static constexpr bool kIsText = std::is_same_v<T, std::string>;
    static constexpr bool kIsBytes = std::is_same_v<T, std::string_view>;
    static constexpr bool kIsFlat = std::is_base_of_v<BFlattenable, T>;
    static constexpr bool kIsMessage = kType == B_MESSAGE_TYPE;
    static constexpr bool kIsMessenger = kType == B_MESSENGER_TYPE;
    static constexpr bool kIsAddress = kType == B_POINTER_TYPE;
    static constexpr bool kIsRecord =
        !(kIsNumber || kIsText || kIsBytes || kIsFlat || kIsMessage || kIsMessenger || kIsAddress);

public:
    /// A number, a point or a rectangle. Of a rectangle, only the size is held to the range.
    Field(const char* name, double low, double high, T fallback = {}, Outside outside = Outside::kLeftOut,
          int32 most = 1) requires(kIsNumber)
        : AnyField(name, kType, low, high, outside, most)
        , fFallback(fallback)
    {
    }

    /// A text, bytes or a flattened object. A field that holds values to the range cuts texts and bytes that are too
    /// long.
    Field(const char* name, double low, double high, Outside outside = Outside::kLeftOut,
          int32 most = 1) requires(kIsText || kIsBytes || kIsFlat)
        : AnyField(name, kType, low, high, outside, most)
    {
    }

    /// A switch.
    explicit Field(const char* name, bool fallback = false) requires(kIsSwitch)
        : AnyField(name, kType, 0, 1, Outside::kLeftOut, 1)
        , fFallback(fallback)
    {
    }

    /// A message, a messenger, an address, or a record, which has exactly this size.
    explicit Field(const char* name, int32 most = 1) requires(kIsMessage || kIsMessenger || kIsAddress || kIsRecord)
        : AnyField(name, kType, kIsRecord ? sizeof(T) : 0, kIsRecord ? sizeof(T) : 1, Outside::kLeftOut, most)
    {
    }

    /// Returns whether this value lies in the range, for setters.
    bool Holds(const T& value) const requires(kIsNumber || kIsFlat)
    {
        if constexpr (kIsFlat)
            return InRange(static_cast<double>(value.Size()));
        else if constexpr (std::is_arithmetic_v<T>)
            return InRange(static_cast<double>(value));
        else {
            T same = value;
            return Take(&same);
        }
    }

    /// Reads the value with this index. If there is none, `value` stays unchanged and the result is false.
    bool Find(const BMessage& from, T* value, int32 index = 0) const
    {
        if (index >= Most())
            return false;
        if constexpr (kIsMessage)
            return from.FindMessage(Name(), value, index) == B_OK;
        else if constexpr (kIsMessenger)
            return from.FindMessenger(Name(), value, index) == B_OK;
        else {
            T found{};
            if (!Read(from, &found, index))
                return false;
            *value = std::move(found);
            return true;
        }
    }

    /// Returns the value with this index, or the default; for a field without a default, an empty value.
    T Get(const BMessage& from, int32 index = 0) const
    {
        T value{};
        if constexpr (kIsNumber)
            value = fFallback;
        Find(from, &value, index);
        return value;
    }

    /// Adds a value after the existing ones; returns the result of BMessage's Add call.
    status_t Add(BMessage* into, const T& value) const
    {
        if constexpr (kIsMessage)
            return into->AddMessage(Name(), &value);
        else if constexpr (kIsMessenger)
            return into->AddMessenger(Name(), value);
        else if constexpr (kIsFlat)
            return into->AddFlat(Name(), &value);
        else {
            const std::string_view bytes = BytesOf(value);
            return into->AddData(Name(), kType, bytes.data(), static_cast<ssize_t>(bytes.size()));
        }
    }

    /// Replaces the value with this index, whatever its length, or adds one if it is missing.
    /// @return as Add: `B_BAD_TYPE` if the message has a field of this name and another type
    status_t Set(BMessage* into, const T& value, int32 index = 0) const requires(!kIsFlat && !kIsMessenger)
    {
        if (!into->HasData(Name(), kType, index))
            return Add(into, value);
        if constexpr (kIsMessage)
            return into->ReplaceMessage(Name(), &value, index);
        else {
            const std::string_view bytes = BytesOf(value);
            return into->ReplaceData(Name(), kType, bytes.data(), static_cast<ssize_t>(bytes.size()), index);
        }
    }

    bool Copy(const BMessage& from, BMessage* into, int32 index = 0) const override
    {
        T value{};
        return Find(from, &value, index) && Add(into, value) == B_OK;
    }

private:
    struct None {};

    static std::string_view BytesOf(const T& value)
    {
        if constexpr (kIsText || kIsBytes)
            return value;
        else
            return {reinterpret_cast<const char*>(&value), sizeof(value)};
    }

    bool Read(const BMessage& from, T* value, int32 index) const
    {
        if constexpr (kIsFlat)
            return from.FindFlat(Name(), value, index) == B_OK && Holds(*value);
        else {
            std::string_view bytes;
            if (!FindBytes(from, index, &bytes))
                return false;
            if constexpr (kIsText || kIsBytes) {
                if (!Take(&bytes))
                    return false;
                *value = bytes;
                return true;
            } else {
                if constexpr (kIsSwitch)
                    *value = bytes.front() != 0;
                else if (bytes.size() == sizeof(T))
                    std::memcpy(static_cast<void*>(value), bytes.data(), sizeof(T));
                else
                    return false;
                return Take(value);
            }
        }
    }

    [[no_unique_address]] const std::conditional_t<kIsNumber, T, None> fFallback{};
};

} // namespace kits
