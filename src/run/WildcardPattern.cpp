#include "run/WildcardPattern.h"

#include <algorithm>
#include <utility>

#include "platform/Failure.h"

namespace tessarine
{

namespace
{

Failure InvalidPattern()
{
    return {InvalidPatternString, u"Invalid pattern string"};
}

}  // namespace

WildcardPattern::WildcardPattern(StringView pattern)
{
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        switch (const char16_t unit = pattern[i]) {
            case u'*':
                elements_.push_back({.isAnyRun = true});
                break;
            case u'?':
                elements_.push_back({.isNegated = true});  // excludes nothing, so it matches any one character
                break;
            case u'#':
                elements_.push_back({.ranges = {{u'0', u'9'}}});
                break;
            case u'[': {
                const std::size_t end = pattern.find(u']', i + 1);
                if (end == StringView::npos)
                    throw InvalidPattern();
                // "[]" stands for no character at all and takes none.
                if (end > i + 1)
                    elements_.push_back(SetOf(pattern.substr(i + 1, end - i - 1)));
                i = end;
                break;
            }
            default:
                elements_.push_back({.ranges = {{unit, unit}}});
        }
    }
}

WildcardPattern::Element WildcardPattern::SetOf(StringView content)
{
    Element element;
    // A "!" alone between brackets is an ordinary character.
    if (content.size() > 1 && content.front() == u'!') {
        element.isNegated = true;
        content.remove_prefix(1);
    }
    for (std::size_t i = 0; i < content.size(); ++i) {
        Range range{content[i], content[i]};
        if (i + 2 < content.size() && content[i + 1] == u'-') {
            range.last = content[i + 2];
            i += 2;
        }
        if (range.last < range.first)
            throw InvalidPattern();
        element.ranges.push_back(range);
    }
    return element;
}

bool WildcardPattern::Element::Takes(char16_t unit) const
{
    const bool isInSet = std::any_of(ranges.begin(), ranges.end(),
                                     [&](const Range& range) { return range.first <= unit && unit <= range.last; });
    return isInSet != isNegated;
}

bool WildcardPattern::Matches(StringView subject) const
{
    // Only the last run met has to be tried longer: whatever an earlier one could take, the last one can take too.
    std::size_t element = 0;
    std::size_t unit = 0;
    std::size_t afterRun = elements_.size() + 1;  // beyond the end while no run has been met
    std::size_t runEnd = 0;
    while (unit < subject.size()) {
        if (element < elements_.size() && elements_[element].isAnyRun) {
            afterRun = ++element;
            runEnd = unit;
        } else if (element < elements_.size() && elements_[element].Takes(subject[unit])) {
            ++element;
            ++unit;
        } else if (afterRun <= elements_.size()) {
            element = afterRun;
            unit = ++runEnd;
        } else {
            return false;
        }
    }
    // What is left of the pattern must be able to stand for nothing.
    return std::all_of(elements_.begin() + static_cast<std::ptrdiff_t>(element), elements_.end(),
                       [](const Element& rest) { return rest.isAnyRun; });
}

}  // namespace tessarine
