#include "support/TextAlignment.h"

#include <algorithm>
#include <set>
#include <utility>

#include "platform/CaseFolding.h"
#include "support/MarkupTokens.h"

namespace tessarine::test
{
namespace
{

constexpr std::size_t ShownBytes = 40;

bool Matches(StringView text, const Replacement& replacement)
{
    const String& find = replacement.find;
    if (find.empty() || text.size() < find.size())
        return false;
    const StringView candidate = text.substr(0, find.size());
    return replacement.matchCase ? candidate == find : FoldCase(candidate) == FoldCase(find);
}

/// A search through the pairs of positions, with a stack of its own since texts may be long. Each position tries the
/// replacements first, then the equal character.
class Alignment
{
public:
    Alignment(StringView before, StringView after, const std::vector<Replacement>& replacements)
        : before_(before), after_(after), replacements_(replacements)
    {
    }

    std::optional<std::vector<Hit>> Find()
    {
        steps_.push_back({0, 0, 0});
        while (!steps_.empty()) {
            Step& step = steps_.back();
            if (step.at == before_.size() && step.newAt == after_.size())
                return Hits();
            if (!Advance(step))
                steps_.pop_back();
        }
        return std::nullopt;
    }

private:
    struct Step {
        std::size_t at;
        std::size_t newAt;
        std::size_t choice;  ///< The next to try: a replacement, or after all of them the equal character.
    };

    bool Advance(Step& step)
    {
        const auto [at, newAt, tried] = step;
        for (std::size_t choice = tried; choice <= replacements_.size(); ++choice) {
            step.choice = choice + 1;
            std::size_t next = at;
            std::size_t newNext = newAt;
            if (choice < replacements_.size()) {
                const Replacement& replacement = replacements_[choice];
                if (!Matches(before_.substr(at), replacement) || !after_.substr(newAt).starts_with(replacement.with))
                    continue;
                next += replacement.find.size();
                newNext += replacement.with.size();
            } else {
                if (at == before_.size() || newAt == after_.size() || before_[at] != after_[newAt])
                    continue;
                ++next;
                ++newNext;
            }
            if (!visited_.emplace(next, newNext).second)
                continue;
            steps_.push_back({next, newNext, 0});
            return true;
        }
        return false;
    }

    std::vector<Hit> Hits() const
    {
        std::vector<Hit> hits;
        for (std::size_t i = 0; i + 1 < steps_.size(); ++i) {
            const std::size_t choice = steps_[i].choice - 1;
            if (choice < replacements_.size())
                hits.push_back({steps_[i].at, steps_[i + 1].at, replacements_[choice].with, steps_[i].newAt});
        }
        return hits;
    }

    StringView before_;
    StringView after_;
    const std::vector<Replacement>& replacements_;
    std::vector<Step> steps_;
    std::set<std::pair<std::size_t, std::size_t>> visited_;
};

/// A link target in one form: no "file:///", no percent escapes, forward slashes.
String PlainTarget(StringView target)
{
    std::string utf8 = ToUtf8(target);
    if (utf8.starts_with("file:///"))
        utf8.erase(0, 8);
    std::string plain;
    for (std::size_t i = 0; i < utf8.size(); ++i) {
        const bool isEscape =
            utf8[i] == '%' && i + 2 < utf8.size() && utf8.find_first_not_of("0123456789ABCDEFabcdef", i + 1) > i + 2;
        if (isEscape) {
            plain += static_cast<char>(std::stoi(utf8.substr(i + 1, 2), nullptr, 16));
            i += 2;
        } else {
            plain += utf8[i] == '\\' ? '/' : utf8[i];
        }
    }
    return FromUtf8(plain);
}

}  // namespace

std::optional<std::vector<Hit>> HitsBetween(StringView before, StringView after,
                                            const std::vector<Replacement>& replacements)
{
    return Alignment(before, after, replacements).Find();
}

bool TargetComesFrom(StringView before, StringView after, const std::vector<Replacement>& replacements)
{
    if (HitsBetween(before, after, replacements))
        return true;
    std::vector<Replacement> plain = replacements;
    for (Replacement& replacement : plain) {
        replacement.find = PlainTarget(replacement.find);
        replacement.with = PlainTarget(replacement.with);
    }
    return HitsBetween(PlainTarget(before), PlainTarget(after), plain).has_value();
}

bool IsLinkChange(std::string_view before, std::string_view after)
{
    const auto isLink = [](std::string_view tag) {
        return tag.find(":hlink") != std::string_view::npos || tag.find(":oleObj") != std::string_view::npos;
    };
    return isLink(before) && isLink(after) &&
           WithoutAttributes(before, {"id", "action"}) == WithoutAttributes(after, {"id", "action"});
}

Difference DifferenceAt(std::string_view before, std::size_t offset, std::string_view after, std::size_t afterOffset,
                        std::string reason)
{
    offset = std::min(offset, before.size());
    afterOffset = std::min(afterOffset, after.size());
    return {{},
            offset,
            std::string(before.substr(offset, ShownBytes)),
            std::string(after.substr(afterOffset, ShownBytes)),
            std::move(reason)};
}

}  // namespace tessarine::test
