#pragma once

#include "office/builtin/reader/BuiltInProperty.h"

namespace tessarine::builtin
{

/// What a built-in property reads as that the file doesn't hold.
enum class UnsetProperty {
    ReadsEmpty,    ///< An empty text.
    ReadsZero,     ///< The number 0.
    CountsSlides,  ///< The number of slides that the file has.
    Raises         ///< `Unspecified`: PowerPoint doesn't define the property for such a file.
};

/// What PowerPoint makes of a built-in property, whatever the format of the file.
struct BuiltInPropertyRule {
    BuiltInProperty property;
    const char16_t* name;  ///< English in every language of PowerPoint.
    UnsetProperty unset;
    bool isWritable;  ///< Dates and counts are not, so that a replacement of digits can't falsify them.
};

/// The rule of a property. It lives as long as the program.
const BuiltInPropertyRule& RuleOf(BuiltInProperty property);

}  // namespace tessarine::builtin
