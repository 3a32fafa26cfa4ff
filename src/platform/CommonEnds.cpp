#include "platform/CommonEnds.h"

#include <algorithm>

#include "platform/Utf16.h"

namespace tessarine
{

CommonEnds CommonEndsOf(StringView before, StringView after)
{
    const std::size_t shorter = std::min(before.size(), after.size());
    std::size_t front = 0;
    while (front < shorter && before[front] == after[front])
        ++front;
    // A difference that began inside a pair would hold half a character.
    if (DividesPair(before, front) || DividesPair(after, front))
        --front;

    // What is common at the front is not looked at again: "aa" and "aaa" have two units in common, not four.
    std::size_t back = 0;
    while (back < shorter - front && before[before.size() - 1 - back] == after[after.size() - 1 - back])
        ++back;
    if (DividesPair(before, before.size() - back) || DividesPair(after, after.size() - back))
        --back;
    return {front, back};
}

}  // namespace tessarine
