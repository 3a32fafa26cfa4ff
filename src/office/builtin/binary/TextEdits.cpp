#include "office/builtin/binary/TextEdits.h"

#include <algorithm>
#include <numeric>

namespace tessarine::builtin
{

namespace
{

std::vector<std::uint32_t> FirstNumbers(std::size_t count)
{
    std::vector<std::uint32_t> numbers(count);
    std::iota(numbers.begin(), numbers.end(), 0);
    return numbers;
}

/// Goes along the runs of a text.
class RunCursor
{
public:
    explicit RunCursor(const std::vector<FormatRun>& runs) : runs_(runs), end_(runs.empty() ? 0 : runs.front().units) {}

    /// The run that a unit is in. Units must not go down. What no run reaches belongs to the last.
    std::size_t RunOf(std::uint32_t unit)
    {
        while (unit >= end_ && at_ + 1 < runs_.size())
            end_ += runs_[++at_].units;
        return at_;
    }

private:
    const std::vector<FormatRun>& runs_;
    std::size_t at_ = 0;
    std::uint64_t end_;
};

/// Of the runs as they were, those that are left.
std::vector<FormatRun> Counted(const std::vector<FormatRun>& runs, const std::vector<std::uint32_t>& units)
{
    std::vector<FormatRun> counted;
    for (std::size_t run = 0; run < runs.size(); ++run)
        if (units[run] > 0)
            counted.push_back({units[run], runs[run].format});
    return counted;
}

}  // namespace

TextEdits::TextEdits(StringView oldText)
    : oldText_(oldText), end_(static_cast<std::uint32_t>(oldText.size())), origins_(FirstNumbers(oldText.size()))
{
}

void TextEdits::Replace(std::size_t begin, std::size_t length, std::size_t inserted)
{
    const std::uint32_t origin = OriginOf(begin);
    origins_.Replace(begin, length, std::vector<std::uint32_t>(inserted, origin | isNew));
}

std::vector<FormatRun> TextEdits::Characters(const std::vector<FormatRun>& runs) const
{
    if (runs.empty())
        return {};
    std::vector<std::uint32_t> units(runs.size());
    RunCursor cursor(runs);
    for (std::size_t unit = 0; unit <= origins_.Size(); ++unit)
        ++units[cursor.RunOf(OriginOf(unit))];
    return Counted(runs, units);
}

std::vector<FormatRun> TextEdits::Paragraphs(const std::vector<FormatRun>& runs, StringView newText) const
{
    constexpr char16_t paragraphBreak = u'\r';
    if (runs.empty())
        return {};
    std::vector<std::uint32_t> units(runs.size());
    RunCursor cursor(runs);
    std::size_t oldBreak = oldText_.find(paragraphBreak);
    for (std::size_t begin = 0; begin <= newText.size();) {
        const std::size_t end = std::min(newText.find(paragraphBreak, begin), newText.size());
        const std::size_t first = OriginOf(begin);
        if (oldBreak < first)
            oldBreak = oldText_.find(paragraphBreak, first);
        // An old break between the units of one paragraph has gone.
        const bool isJoined = oldBreak < OriginOf(end);
        const std::size_t run = cursor.RunOf(static_cast<std::uint32_t>(first));
        for (std::size_t unit = begin; unit <= end; ++unit) {
            const std::size_t own = cursor.RunOf(OriginOf(unit));
            ++units[isJoined ? run : own];
        }
        begin = end + 1;
    }
    return Counted(runs, units);
}

std::size_t TextEdits::PositionOf(std::size_t position) const
{
    if (position > end_)
        return origins_.Size() + 1;
    std::size_t begin = 0;
    std::size_t end = origins_.Size();
    while (begin < end) {
        const std::size_t middle = begin + (end - begin) / 2;
        if (OriginOf(middle) < position)
            begin = middle + 1;
        else
            end = middle;
    }
    return begin;
}

bool TextEdits::Keeps(std::size_t unit) const
{
    const std::size_t now = PositionOf(unit);
    return now < origins_.Size() && origins_[now] == unit;
}

}  // namespace tessarine::builtin
