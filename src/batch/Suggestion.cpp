#include "batch/Suggestion.h"

#include <algorithm>
#include <vector>

#include "batch/LineText.h"

namespace tessarine::batch
{

namespace
{

// A longer word is none that somebody meant to type, and would make the table of distances large.
constexpr std::size_t longestWord = 64;

/// How many letters have to be put in, left out, changed, or exchanged with the next one to get from one to the other.
std::size_t Distance(std::string_view from, std::string_view to)
{
    // steps[i][j] is that of the first i letters to the first j.
    std::vector steps(from.size() + 1, std::vector<std::size_t>(to.size() + 1));
    for (std::size_t i = 0; i <= from.size(); ++i) {
        for (std::size_t j = 0; j <= to.size(); ++j) {
            if (i == 0 || j == 0) {
                steps[i][j] = i + j;
                continue;
            }
            const std::size_t changed = steps[i - 1][j - 1] + (from[i - 1] == to[j - 1] ? 0 : 1);
            steps[i][j] = std::min({changed, steps[i - 1][j] + 1, steps[i][j - 1] + 1});
            if (i > 1 && j > 1 && from[i - 1] == to[j - 2] && from[i - 2] == to[j - 1])
                steps[i][j] = std::min(steps[i][j], steps[i - 2][j - 2] + 1);
        }
    }
    return steps[from.size()][to.size()];
}

/// Up to which distance a word of this length is near: a word of three letters has many others one letter away.
std::size_t Reach(std::size_t length)
{
    return length < 4 ? 1 : length < 8 ? 2 : 3;
}

/// The letters that tell it from others: the dashes of options would make each two options alike.
std::string_view WithoutDashes(std::string_view name)
{
    return name.substr(std::min(name.size(), name.find_first_not_of('-')));
}

}  // namespace

std::string DidYouMean(std::string_view word, std::span<const std::string_view> names)
{
    const std::string_view typed = WithoutDashes(word);
    if (typed.empty() || typed.size() > longestWord)
        return {};

    std::string_view nearest;
    std::size_t least = Reach(typed.size()) + 1;
    for (const std::string_view name : names) {
        const std::string_view bare = WithoutDashes(name);
        std::size_t distance = Distance(typed, bare);
        // The start of a name is nearer than any mistyped one; one letter could be the start of many.
        if (typed.size() > 1 && bare.starts_with(typed))
            distance = std::min<std::size_t>(distance, 1);
        // A name that shares no letter with the word is not what was meant, however short both are.
        if (distance < least && distance < std::max(typed.size(), bare.size())) {
            least = distance;
            nearest = name;
        }
    }
    return nearest.empty() ? std::string() : "; did you mean " + Quoted(FromUtf8(nearest)) + "?";
}

}  // namespace tessarine::batch
