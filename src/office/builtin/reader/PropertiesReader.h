#pragma once

#include <cstddef>
#include <optional>

#include "model/PowerPoint.h"
#include "office/builtin/reader/BuiltInProperty.h"
#include "platform/String.h"

namespace tessarine::builtin
{

/// The built-in document properties as a file stores them. What a missing one reads as and which may be changed is the
/// same for all formats and is decided by the objects.
class BuiltInPropertiesReader
{
public:
    virtual ~BuiltInPropertiesReader() = default;

    /// The stored value: a text, a whole number or a date, as the property is one. Nothing when the file doesn't hold
    /// the property, or holds a date that can't be read.
    virtual std::optional<powerpoint::Value> Read(BuiltInProperty property) const = 0;

    /// Stores a text in one of the properties that may be changed, which are texts all of them. Putting "" where the
    /// file holds nothing is no edit.
    virtual void Put(BuiltInProperty property, const String& text) = 0;
};

/// The custom document properties of a file, in its order. Two may have the same name. Indices count from 0.
class CustomPropertiesReader
{
public:
    virtual ~CustomPropertiesReader() = default;

    virtual std::size_t Count() const = 0;  ///< Stays the same: properties are changed, never added or removed.
    /// As the file has it. Lives as long as the reader.
    virtual const String& NameOf(std::size_t index) const = 0;

    /// A kind of value that a person can't edit (a blob, a list) reads as "".
    virtual powerpoint::Value Read(std::size_t index) const = 0;

    /// Never called with a value whose text is the one that is there. A text makes the property a text. A number keeps
    /// the kind of a number where it fits, becomes the text of a text, and otherwise a floating-point number. Raises
    /// `Unspecified` for a kind of value that a person can't edit.
    virtual void Put(std::size_t index, const powerpoint::Value& value) = 0;
};

}  // namespace tessarine::builtin
