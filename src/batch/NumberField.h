#pragma once

#include <charconv>
#include <string>

namespace tessarine::batch
{

/// The number in a field of a plan or a record; 0 where there is none.
template <class Number>
Number NumberIn(const std::string& field)
{
    Number number = 0;
    std::from_chars(field.data(), field.data() + field.size(), number);
    return number;
}

}  // namespace tessarine::batch
