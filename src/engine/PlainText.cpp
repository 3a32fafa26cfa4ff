#include "engine/SearchFunctions.h"

#include <algorithm>
#include <cstddef>

#include "engine/SearchPlace.h"
#include "log/Treatments.h"
#include "platform/CaseFolding.h"
#include "platform/CheckedInteger.h"

namespace tessarine
{

namespace
{

constexpr std::int32_t compareExact = 0;
constexpr std::int32_t compareText = 1;

/// Where a text occurs in another one under a compare mode. Folds both once, so that each search is a plain one;
/// positions in the folded text are positions in the text. Borrows what it is given.
class Occurrences
{
public:
    Occurrences(StringView source, StringView find, std::int32_t compare)
    {
        if (compare != compareExact) {
            foldedSource_ = FoldCaseLocally(source);
            foldedFind_ = FoldCaseLocally(find);
            source = foldedSource_;
            find = foldedFind_;
        }
        source_ = source;
        find_ = find;
    }
    Occurrences(const Occurrences&) = delete;
    Occurrences& operator=(const Occurrences&) = delete;

    /// Index of the first occurrence at `from` or later, npos for none.
    std::size_t Next(std::size_t from) const { return source_.find(find_, from); }

private:
    String foldedSource_;
    String foldedFind_;
    StringView source_;
    StringView find_;
};

/// Exactly A to Z in either case: digits, "_", blanks and every other letter are boundaries of a whole word. Plain
/// values have always been matched so, and old jobs rely on it; in text of shapes the presentation engine decides.
bool IsWordLetter(char16_t unit)
{
    return (unit >= u'A' && unit <= u'Z') || (unit >= u'a' && unit <= u'z');
}

/// `hits` gets the position of each occurrence, unless it is null.
String ReplaceAll(const String& source, const String& find, const String& replacement, const Occurrences& occurrences,
                  std::vector<std::size_t>* hits)
{
    String result;
    std::size_t read = 0;
    for (std::size_t hit = occurrences.Next(0); hit != String::npos; hit = occurrences.Next(read)) {
        if (hits != nullptr)
            hits->push_back(hit);
        result.append(source, read, hit - read);
        result += replacement;
        read = hit + find.size();
    }
    result.append(source, read);
    return result;
}

}  // namespace

String SearchFunctions::FindandReplace(std::int32_t& vFindCount, const std::shared_ptr<FindAndReplaceItem>& vItem,
                                       const String& vText, bool vIsReplace)
{
    return LogAndReturn({u"FindandReplace", SearchPlace}, [&] {
        const FindAndReplaceItem& item = *NotNull(vItem);
        const std::int32_t compare = NotNull(item.OptionSetting)->MatchCase ? compareExact : compareText;
        vFindCount = -1;
        // Copies: the user may change the pair while the walk lets events through.
        const String find = item.FindWhat;
        const String replacement = vIsReplace ? item.ReplaceWith : find;
        valueHits_.clear();
        valueHitLength_ = find.size();
        valueReplacement_ = replacement;
        // The case rule comes from the pair, the word rule from the flag that ProcessFile took from the pair at its
        // start: a pair that is edited during the run changes the one at once and the other with the next file.
        return WholeWordsFlag == 0 ? ReplaceWord1(vText, find, replacement, 1, -1, compare, vFindCount)
                                   : ReplaceWord(vText, find, replacement, 1, -1, compare, vFindCount);
    });
}

String SearchFunctions::ReplaceWord(const String& Source, const String& Find, const String& ReplaceStr,
                                    std::int32_t Start, const std::int32_t& Count, const std::int32_t& Compare,
                                    std::int32_t& FindAndReplaceCount)
{
    // Outside the body, because a failure gives back the text as far as it had got: what is done, then the rest as it
    // stood in `Source`.
    String done;
    StringView rest;
    LogAndReturn({u"ReplaceWord", SearchPlace}, [&] {
        if (Find.empty())
            throw Failure(FailureNumber::InvalidProcedureCall, u"Invalid procedure call or argument");
        rest = Source;
        const Occurrences occurrences(Source, Find, Compare);
        const std::size_t length = Find.size();
        std::size_t from = static_cast<std::size_t>(std::max(Start, 1)) - 1;
        std::int32_t replacements = 0;
        while (true) {
            const std::size_t hit = occurrences.Next(from);
            if (hit == String::npos)
                return;
            const std::size_t end = hit + length;
            const std::size_t unread = Source.size() - rest.size();
            done.append(Source, unread, hit - unread);
            rest = StringView(Source).substr(hit);
            // The character before is the one of the text so far, so it may be the end of the last replacement.
            const bool touchesBefore = !done.empty() && IsWordLetter(done.back());
            const bool touchesAfter = end < Source.size() && IsWordLetter(Source[end]);
            if (!touchesBefore && !touchesAfter) {
                done += ReplaceStr;
                rest.remove_prefix(length);
                if (HitFound)
                    valueHits_.push_back(hit);
                replacements = CheckedSum(replacements, 1);
                FindAndReplaceCount = replacements;
            }
            from = end;
            Yield();
            if (replacements == Count)
                return;
        }
    });
    done += rest;
    return done;
}

String SearchFunctions::ReplaceWord1(const String& Source, const String& Find, const String& ReplaceStr,
                                     std::int32_t /*Start*/, const std::int32_t& /*Count*/, const std::int32_t& Compare,
                                     std::int32_t& FindAndReplaceCount)
{
    return LogAndReturn({u"ReplaceWord1", SearchPlace}, [&]() -> String {
        if (Find.empty())
            return {};
        const Occurrences occurrences(Source, Find, Compare);
        std::int32_t count = 0;
        std::size_t hit = occurrences.Next(0);
        while (hit != String::npos) {
            count = CheckedSum(count, 1);
            const std::size_t next = hit + Find.size();
            if (next >= Source.size())
                break;
            Yield();
            hit = occurrences.Next(next);
            // Without a required count one occurrence stands for all: the run then only tells "Found". All of them are
            // replaced below.
            if (!IsRequiredCount)
                break;
        }
        if (count == 0)
            return Source;
        FindAndReplaceCount = count;
        String replaced = ReplaceAll(Source, Find, ReplaceStr, occurrences, HitFound ? &valueHits_ : nullptr);
        // What is counted is what is told; a replacement takes them all.
        if (mIsFindOnly && !IsRequiredCount && valueHits_.size() > 1)
            valueHits_.resize(1);
        return replaced;
    });
}

}  // namespace tessarine
