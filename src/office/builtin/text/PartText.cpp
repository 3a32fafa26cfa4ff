#include "office/builtin/text/PartText.h"

#include <algorithm>
#include <bit>
#include <cstdint>

#include "office/builtin/xml/XmlText.h"
#include "platform/CaseFolding.h"

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace tessarine::builtin
{

namespace
{

bool EndsName(char c)
{
    return c == '>' || c == '/' || c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

/// A ">" inside an attribute would end the tag too early.
bool HasWholeAttributes(std::string_view tag)
{
    return std::ranges::count(tag, '"') % 2 == 0 && std::ranges::count(tag, '\'') % 2 == 0;
}

/// How many tags of each kind a part has. They tell whether it is balanced at a fraction of what matching names costs.
struct TagCounts {
    std::size_t all = 0;      // "<"
    std::size_t ends = 0;     // "</"
    std::size_t empties = 0;  // "/>"
    std::size_t others = 0;   // "<!" and "<?"

    bool AreBalanced() const { return all - others - ends == ends + empties; }
};

#if defined(__SSE2__)
/// Counts matches in sixteen lanes of a byte each, which are full after mostRounds.
class ByteCounter
{
public:
    static constexpr int mostRounds = 255;

    void Add(__m128i mask) { lanes_ = _mm_sub_epi8(lanes_, mask); }  // a match is -1

    std::size_t Sum() const
    {
        const __m128i halves = _mm_sad_epu8(lanes_, _mm_setzero_si128());
        return static_cast<std::size_t>(_mm_extract_epi16(halves, 0)) +
               static_cast<std::size_t>(_mm_extract_epi16(halves, 4));
    }

private:
    __m128i lanes_ = _mm_setzero_si128();
};
#endif

/// Counts the tags and calls `candidate` with the place of every "<t" and ":t", where a text element's tag may stand.
template <class Candidate>
TagCounts ScanTags(std::string_view xml, Candidate&& candidate)
{
    TagCounts counts;
    std::size_t at = 0;
#if defined(__SSE2__)
    // Two characters in a row are looked at, so that a block reads one beyond its end.
    constexpr std::size_t block = 16;
    const auto load = [&](std::size_t from) {
        return _mm_loadu_si128(reinterpret_cast<const __m128i*>(xml.data() + from));
    };
    const auto is = [](__m128i bytes, char c) { return _mm_cmpeq_epi8(bytes, _mm_set1_epi8(c)); };
    while (at + block < xml.size()) {
        ByteCounter all;
        ByteCounter ends;
        ByteCounter empties;
        ByteCounter others;
        for (int round = 0; round < ByteCounter::mostRounds && at + block < xml.size(); ++round, at += block) {
            const __m128i first = load(at);
            const __m128i second = load(at + 1);
            const __m128i open = is(first, '<');
            const __m128i slash = is(second, '/');
            all.Add(open);
            ends.Add(_mm_and_si128(open, slash));
            empties.Add(_mm_and_si128(is(first, '/'), is(second, '>')));
            others.Add(_mm_and_si128(open, _mm_or_si128(is(second, '!'), is(second, '?'))));
            const __m128i start = _mm_and_si128(_mm_or_si128(open, is(first, ':')), is(second, 't'));
            for (auto found = static_cast<std::uint32_t>(_mm_movemask_epi8(start)); found != 0; found &= found - 1)
                candidate(at + static_cast<std::size_t>(std::countr_zero(found)));
        }
        counts.all += all.Sum();
        counts.ends += ends.Sum();
        counts.empties += empties.Sum();
        counts.others += others.Sum();
    }
#endif
    for (; at + 1 < xml.size(); ++at) {
        const char first = xml[at];
        const char second = xml[at + 1];
        counts.empties += first == '/' && second == '>';
        if (first == '<') {
            ++counts.all;
            counts.ends += second == '/';
            counts.others += second == '!' || second == '?';
        }
        if ((first == '<' || first == ':') && second == 't')
            candidate(at);
    }
    return counts;
}

/// The start tag of a text element.
struct TextTag {
    enum class Kind { None, Start, NeedsReading } kind = Kind::None;
    std::string_view name;    // qualified
    std::size_t content = 0;  // where its content begins
};

/// The tag whose name's last part begins behind `at` ("<" or ":").
TextTag ReadTextTag(std::string_view xml, std::size_t at)
{
    if (at + 2 >= xml.size() || !EndsName(xml[at + 2]))
        return {};
    std::size_t open = at;
    while (open > 0 && xml[open] != '<' && !EndsName(xml[open]) && xml[open] != '"' && xml[open] != '\'')
        --open;
    if (xml[open] != '<')
        return {};  // an end tag, an attribute, text
    const std::string_view name = xml.substr(open + 1, at + 1 - open);
    if (xml[at + 2] == '>')
        return {TextTag::Kind::Start, name, at + 3};
    const std::size_t close = xml.find('>', at + 2);
    if (close == std::string_view::npos || !HasWholeAttributes(xml.substr(open, close - open)))
        return {TextTag::Kind::NeedsReading, {}, 0};
    if (xml[close - 1] == '/')
        return {};
    return {TextTag::Kind::Start, name, close + 1};
}

/// True when the text element whose end tag begins at `at` is the last child of its run, as it must be.
bool EndsItsRun(std::string_view xml, std::size_t at)
{
    const std::size_t next = xml.find('<', at + 1);
    return next != std::string_view::npos && xml.substr(next).starts_with("</");
}

/// Folds the characters of [from, to) as long as each stands for itself: no markup, no reference, no surrogate pair.
/// Gives the offset behind the last one; a character may reach beyond `to`.
std::size_t FoldPlainCharacters(std::string_view content, std::size_t from, std::size_t to, char16_t*& target)
{
    const auto byte = [&](std::size_t at) { return static_cast<unsigned char>(at < content.size() ? content[at] : 0); };
    const auto isTrail = [&](std::size_t at) { return (byte(at) & 0xC0) == 0x80; };
    while (from < to) {
        const unsigned char lead = byte(from);
        if (lead < 0x80) {
            if (lead == '&' || lead == '<')
                return from;
            *target++ = FoldCase(static_cast<char16_t>(lead));
            ++from;
        } else if (lead >= 0xC2 && lead < 0xE0 && isTrail(from + 1)) {
            *target++ = FoldCase(static_cast<char16_t>((lead & 0x1F) << 6 | (byte(from + 1) & 0x3F)));
            from += 2;
        } else if (lead >= 0xE1 && lead < 0xF0 && lead != 0xED && isTrail(from + 1) && isTrail(from + 2)) {
            *target++ = FoldCase(
                static_cast<char16_t>((lead & 0x0F) << 12 | (byte(from + 1) & 0x3F) << 6 | (byte(from + 2) & 0x3F)));
            from += 3;
        } else {
            return from;
        }
    }
    return from;
}

/// Folds what stands for other characters than itself: a reference, or all that is left. Moves `at` behind it and gives
/// the place behind the folded text, which is never longer than the content.
char16_t* FoldNext(std::string_view content, std::size_t& at, char16_t* target)
{
    const std::size_t semicolon = content[at] == '&' ? content.find(';', at) : std::string_view::npos;
    const std::size_t end = semicolon == std::string_view::npos ? content.size() : semicolon + 1;
    String decoded;
    AppendContent(content.substr(at, end - at), decoded);
    at = end;
    return std::ranges::copy(FoldCase(StringView(decoded)), target).out;
}

/// Appends content folded. Plain ASCII goes many characters at a time.
void AppendFolded(std::string_view content, String& text)
{
    constexpr std::size_t block = 16;
    const std::size_t start = text.size();
    text.resize(start + content.size());
    char16_t* target = text.data() + start;
    for (std::size_t at = 0; at < content.size();) {
#if defined(__SSE2__)
        if (at + block <= content.size()) {
            const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(content.data() + at));
            const __m128i special =
                _mm_or_si128(_mm_cmpeq_epi8(bytes, _mm_set1_epi8('&')), _mm_cmpeq_epi8(bytes, _mm_set1_epi8('<')));
            if (_mm_movemask_epi8(_mm_or_si128(bytes, special)) == 0) {
                const __m128i isUpper = _mm_and_si128(_mm_cmpgt_epi8(bytes, _mm_set1_epi8('A' - 1)),
                                                      _mm_cmplt_epi8(bytes, _mm_set1_epi8('Z' + 1)));
                const __m128i folded = _mm_or_si128(bytes, _mm_and_si128(isUpper, _mm_set1_epi8('a' - 'A')));
                const __m128i zero = _mm_setzero_si128();
                _mm_storeu_si128(reinterpret_cast<__m128i*>(target), _mm_unpacklo_epi8(folded, zero));
                _mm_storeu_si128(reinterpret_cast<__m128i*>(target + block / 2), _mm_unpackhi_epi8(folded, zero));
                target += block;
                at += block;
                continue;
            }
        }
#endif
        const std::size_t to = std::min(at + block, content.size());
        at = FoldPlainCharacters(content, at, to, target);
        if (at < to)
            target = FoldNext(content, at, target);
    }
    text.resize(static_cast<std::size_t>(target - text.data()));
}

}  // namespace

std::optional<PartText> PartText::Gather(std::string_view xml)
{
    String text;
    bool needsReading = false;
    std::string_view usualName;
    const TagCounts counts = ScanTags(xml, [&](std::size_t at) {
        const TextTag tag = needsReading ? TextTag{} : ReadTextTag(xml, at);
        if (tag.kind == TextTag::Kind::None)
            return;
        const std::size_t end = tag.kind == TextTag::Kind::Start ? xml.find('<', tag.content) : std::string_view::npos;
        if (usualName.empty())
            usualName = tag.name;
        // Another vocabulary's text, or a second one in a run, would stand between what belongs together.
        if (end == std::string_view::npos || tag.name != usualName || !EndsItsRun(xml, end)) {
            needsReading = true;
            return;
        }
        const std::string_view content = xml.substr(tag.content, end - tag.content);
        // Escaped control characters and line ends to be read as one change what characters there are.
        if (content.find('\r') != std::string_view::npos || content.find("_x00") != std::string_view::npos)
            needsReading = true;
        else
            AppendFolded(content, text);
    });
    const bool hasDeclaration = xml.starts_with("<?xml");
    if (needsReading || !counts.AreBalanced() || counts.others > (hasDeclaration ? 1u : 0u))
        return std::nullopt;
    return PartText(std::move(text));
}

bool PartText::MayHold(const SoughtText& sought)
{
    // Paragraph and line breaks are no characters of the runs; what holds them needs the structure.
    if (sought.hasBreaks)
        return true;
    // The locations of one pair ask one after the other, each of them for the same text.
    if (lastSerial_ != sought.serial) {
        const bool isFirst = lastSerial_ == 0;
        lastAnswer_ = (isFirst || HoldsTriples(sought)) && folded_.find(sought.folded) != String::npos;
        lastSerial_ = sought.serial;
    }
    return lastAnswer_;
}

bool PartText::HoldsTriples(const SoughtText& sought)
{
    if (!triples_.IsMade()) {
        triples_ = TripleTable(folded_.size());
        triples_.Add(folded_);
    }
    return triples_.HoldsAll(sought);
}

}  // namespace tessarine::builtin
