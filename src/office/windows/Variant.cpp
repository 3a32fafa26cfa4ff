#include "office/windows/Variant.h"

#include <limits>

#include "office/windows/AutomationNumbers.h"

namespace tessarine::windows
{

namespace
{

static_assert(sizeof(OLECHAR) == sizeof(char16_t), "a BSTR holds UTF-16 units, as String does");

BSTR NewText(const String& text)
{
    if (text.size() > std::numeric_limits<UINT>::max() / sizeof(OLECHAR) - sizeof(OLECHAR))
        throw FailureOfCall(E_OUTOFMEMORY, u"SysAllocStringLen");
    const BSTR made = SysAllocStringLen(reinterpret_cast<const OLECHAR*>(text.data()), static_cast<UINT>(text.size()));
    if (!made)
        throw FailureOfCall(E_OUTOFMEMORY, u"SysAllocStringLen");
    return made;
}

String TextOf(BSTR text)
{
    // A null pointer is a valid empty text.
    return text ? String(reinterpret_cast<const char16_t*>(text), SysStringLen(text)) : String();
}

}  // namespace

Variant::Variant(bool value) noexcept : Variant()
{
    value_.vt = VT_BOOL;
    value_.boolVal = value ? VARIANT_TRUE : VARIANT_FALSE;
}

Variant::Variant(std::int16_t value) noexcept : Variant()
{
    value_.vt = VT_I2;
    value_.iVal = value;
}

Variant::Variant(std::int32_t value) noexcept : Variant()
{
    value_.vt = VT_I4;
    value_.lVal = value;
}

Variant::Variant(std::int64_t value) noexcept : Variant()
{
    value_.vt = VT_I8;
    value_.llVal = value;
}

Variant::Variant(double value) noexcept : Variant()
{
    value_.vt = VT_R8;
    value_.dblVal = value;
}

Variant::Variant(const String& value) : Variant()
{
    value_.bstrVal = NewText(value);
    value_.vt = VT_BSTR;
}

Variant Variant::Date(DATE value) noexcept
{
    Variant made(value);
    made.value_.vt = VT_DATE;
    return made;
}

Variant& Variant::operator=(Variant&& other) noexcept
{
    std::swap(value_, other.value_);
    return *this;
}

VARIANT* Variant::Receive()
{
    VariantClear(&value_);
    return &value_;
}

Variant Variant::As(VARTYPE type) const
{
    Variant converted;
    // Null has no form of any other type, while no value has.
    if (Type() == VT_NULL)
        return converted;
    const HRESULT result =
        VariantChangeType(converted.Receive(), const_cast<VARIANT*>(&value_), VARIANT_ALPHABOOL, type);
    if (result == DISP_E_OVERFLOW)
        throw Failure(FailureNumber::Overflow, u"Overflow");
    if (FAILED(result))
        throw Failure(FailureNumber::TypeMismatch, u"Type mismatch");
    return converted;
}

std::int32_t Variant::ToInteger() const
{
    const Variant converted = As(VT_I4);
    return converted.Type() == VT_I4 ? converted.value_.lVal : 0;
}

double Variant::ToNumber() const
{
    const Variant converted = As(VT_R8);
    return converted.Type() == VT_R8 ? converted.value_.dblVal : 0;
}

String Variant::ToText() const
{
    if (Type() == VT_BSTR)
        return TextOf(value_.bstrVal);
    const Variant converted = As(VT_BSTR);
    return converted.Type() == VT_BSTR ? TextOf(converted.value_.bstrVal) : String();
}

IDispatch* Variant::ToObject() const
{
    if (Type() == VT_EMPTY || Type() == VT_NULL)
        return nullptr;
    if (Type() != VT_DISPATCH)
        throw Failure(FailureNumber::TypeMismatch, u"Type mismatch: a value was given in place of an object");
    if (value_.pdispVal)
        value_.pdispVal->AddRef();
    return value_.pdispVal;
}

}  // namespace tessarine::windows
