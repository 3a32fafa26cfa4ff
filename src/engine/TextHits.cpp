#include "engine/TextHits.h"

#include <algorithm>
#include <utility>

#include "log/Treatments.h"
#include "platform/ParagraphBreaks.h"
#include "platform/Utf16.h"

namespace tessarine
{

namespace
{

// More would make a hit longer than anybody reads, and all hits of a long paragraph together too large.
constexpr std::int32_t mostContext = 100'000;

std::int32_t SizeOf(StringView text)
{
    return static_cast<std::int32_t>(text.size());
}

}  // namespace

TextHits::TextHits(Port port) : port_(std::move(port)), context_(std::clamp(port_.context, 0, mostContext)) {}

void TextHits::Found(powerpoint::TextRange& text, std::int32_t start, std::int32_t length)
{
    if (port_.wantsWhole())
        LookAt(text, start, length);
    else
        LookAtNothing();
    port_.found(hit_);
}

void TextHits::BeforeReplace(powerpoint::TextRange& text, const String& find, std::int32_t after,
                             powerpoint::TriState matchCase, powerpoint::TriState wholeWords)
{
    if (!port_.wantsWhole()) {
        LookAtNothing();
        return;
    }
    hit_ = {};
    Skip([&] {
        if (const auto found = text.Find(find, after, matchCase, wholeWords))
            LookAt(text, found->Start(), SizeOf(find));
    });
}

void TextHits::Replaced(powerpoint::TextRange& text, std::int32_t start, const String& with)
{
    if (hit_.place && hit_.place == pairPlace_) {
        port_.found(hit_);
        return;
    }
    // Whatever was seen there, the place is where the new text stands.
    if (hit_.position == 0)
        LookAt(text, start, 0);
    const String asked = WithParagraphBreaks(with);
    hit_.becomes = asked;
    // A character that the file can't hold has become another one.
    if (!asked.empty())
        Skip([&] { hit_.becomes = text.TextAt(start, SizeOf(asked)).value_or(asked); });
    port_.found(hit_);
}

void TextHits::LookAtNothing()
{
    if (!pairPlace_)
        pairPlace_ = std::make_shared<const HitPlace>(port_.pairPlace());
    hit_ = {};
    hit_.place = pairPlace_;
}

void TextHits::LookAt(powerpoint::TextRange& text, std::int32_t start, std::int32_t length)
{
    if (!place_)
        place_ = std::make_shared<const HitPlace>(port_.place());
    hit_ = {};
    hit_.place = place_;
    hit_.position = start;
    hit_.length = length;
    Skip([&] { ReadAround(text, start, length); });
}

void TextHits::ReadAround(powerpoint::TextRange& text, std::int32_t start, std::int32_t length)
{
    const std::int32_t unit = start - 1;
    if (unit < 0 || !GoTo(text, unit))
        return;
    // One unit more on either side tells whether a pair would be cut, and whether the paragraph goes on.
    const std::int32_t from = std::max(paragraphStart_, unit - context_ - 1);
    const auto around = text.TextAt(from + 1, unit - from + length + context_ + 1);
    if (!around || SizeOf(*around) < unit - from + length)
        return;
    const auto begin = static_cast<std::size_t>(unit - from);
    const auto end = begin + static_cast<std::size_t>(length);
    const StringView paragraph = StringView(*around).substr(0, std::min(around->find(u'\r', end), around->size()));
    hit_.paragraph = paragraph_;
    hit_.position = unit - paragraphStart_ + 1;
    PutContext(hit_, paragraph, begin, end - begin, static_cast<std::size_t>(context_));
}

/// Counts the paragraphs in front of a unit; false where the text can't be read.
bool TextHits::GoTo(powerpoint::TextRange& text, std::int32_t unit)
{
    if (unit < seen_) {
        seen_ = 0;
        paragraph_ = 1;
        paragraphStart_ = 0;
    }
    if (unit == seen_)
        return true;
    const auto passed = text.TextAt(seen_ + 1, unit - seen_);
    if (!passed || SizeOf(*passed) != unit - seen_)
        return false;
    for (auto at = passed->find(u'\r'); at != String::npos; at = passed->find(u'\r', at + 1)) {
        ++paragraph_;
        paragraphStart_ = seen_ + static_cast<std::int32_t>(at) + 1;
    }
    seen_ = unit;
    return true;
}

void PutContext(Hit& hit, StringView text, std::size_t begin, std::size_t length, std::size_t context)
{
    const std::size_t end = begin + length;
    std::size_t from = begin - std::min(begin, context);
    if (DividesPair(text, from))
        ++from;
    std::size_t to = end + std::min(text.size() - end, context);
    if (DividesPair(text, to))
        --to;
    hit.before = text.substr(from, begin - from);
    hit.text = text.substr(begin, length);
    hit.after = text.substr(end, to - end);
    hit.isCutBefore = from > 0;
    hit.isCutAfter = to < text.size();
}

String HitLabel(StringView text)
{
    constexpr std::size_t most = 200;  // a title may be long, and each shape of its slide has it
    String label(text.substr(0, most + 1));
    if (label.size() > most)
        label.resize(DividesPair(text, most) ? most - 1 : most);
    std::ranges::replace_if(
        label, [](char16_t unit) { return unit < u' '; }, u' ');
    const auto first = label.find_first_not_of(u' ');
    return first == String::npos ? String() : label.substr(first, label.find_last_not_of(u' ') - first + 1);
}

}  // namespace tessarine
