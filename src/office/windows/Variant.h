#pragma once

#include <cstdint>
#include <utility>

#include "office/windows/ComHeaders.h"
#include "platform/String.h"

namespace tessarine::windows
{

/// A VARIANT that lets go of what it holds. One that holds an object belongs to the thread of the apartment
/// (ComThread); all others may go anywhere.
class Variant
{
public:
    Variant() noexcept { VariantInit(&value_); }  ///< Empty.
    explicit Variant(bool value) noexcept;
    explicit Variant(std::int16_t value) noexcept;
    explicit Variant(std::int32_t value) noexcept;
    explicit Variant(std::int64_t value) noexcept;
    explicit Variant(double value) noexcept;
    explicit Variant(const String& value);  ///< With any NULs that it holds. Raises `SystemOutOfMemory`.
    static Variant Date(DATE value) noexcept;

    Variant(Variant&& other) noexcept : Variant() { std::swap(value_, other.value_); }
    Variant& operator=(Variant&& other) noexcept;
    ~Variant() { VariantClear(&value_); }

    const VARIANT& Raw() const { return value_; }
    VARIANT* Receive();  ///< For the system to put a value into; lets go of the one before.
    VARTYPE Type() const { return value_.vt; }

    /// The value as another type, as the system converts it under the user's locale: 0 or "" for no value. Raises
    /// `TypeMismatch` or `Overflow` for what doesn't convert.
    std::int32_t ToInteger() const;
    double ToNumber() const;
    String ToText() const;

    /// The object, with a reference that is the caller's; null for no value and for no object. Raises `TypeMismatch`
    /// for any other value.
    IDispatch* ToObject() const;

private:
    Variant As(VARTYPE type) const;

    VARIANT value_;
};

}  // namespace tessarine::windows
