#pragma once

#include <cstddef>

/// Counts the fields of a plain struct at compile time, so that a table with one row per field can assert that no field
/// was forgotten.
namespace tessarine
{

/// Stands for a value of any type. Declared only: fields are counted, never filled.
struct AnyFieldValue {
    template <class Field>
    constexpr operator Field() const;
};

/// How many fields a struct without constructors has. Arrays and nested structs are counted wrongly: they would take
/// one value for each of their own elements.
template <class Struct, class... Values>
consteval std::size_t FieldCount()
{
    // One value more each time, until the struct takes no further one.
    if constexpr (requires { Struct{Values()..., AnyFieldValue()}; })
        return FieldCount<Struct, Values..., AnyFieldValue>();
    else
        return sizeof...(Values);
}

}  // namespace tessarine
