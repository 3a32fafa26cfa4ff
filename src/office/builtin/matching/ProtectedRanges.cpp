#include "office/builtin/matching/ProtectedRanges.h"

namespace tessarine::builtin
{

std::size_t ProtectedRanges::FirstFrom(std::size_t position) const
{
    std::size_t first = 0;
    std::size_t end = ranges_.size();
    while (first < end) {
        const std::size_t middle = first + (end - first) / 2;
        if (BeginOf(middle) < position)
            first = middle + 1;
        else
            end = middle;
    }
    return first;
}

bool ProtectedRanges::Touch(std::size_t begin, std::size_t end) const
{
    const std::size_t next = FirstFrom(begin + 1);
    if (next < ranges_.size() && BeginOf(next) < end)
        return true;
    // Of those that begin in front, the last alone can reach so far. A place may be where a hit begins.
    return next > 0 && begin < end && ranges_[next - 1].length > 0 &&
           begin < BeginOf(next - 1) + ranges_[next - 1].length;
}

bool ProtectedRanges::Move(std::size_t begin, std::size_t length, std::size_t inserted)
{
    if (ranges_.empty())
        return true;
    if (length == 0 || Touch(begin, begin + length))
        return false;
    const std::size_t after = FirstFrom(begin + length);
    for (; moved_ < after; ++moved_)
        ranges_[moved_].begin += shift_;
    for (; moved_ > after; --moved_)
        ranges_[moved_ - 1].begin -= shift_;
    shift_ += inserted - length;
    return true;
}

}  // namespace tessarine::builtin
