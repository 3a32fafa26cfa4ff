#include "office/builtin/binary/FormatRuns.h"

#include <algorithm>
#include <initializer_list>

#include "office/builtin/records/Record.h"

namespace tessarine::builtin
{

namespace
{

/// A place in the content of an atom that moves on as fields are read.
class Fields
{
public:
    explicit Fields(std::string_view content) : content_(content) {}

    bool IsAtEnd() const { return at_ == content_.size(); }
    bool IsCut() const { return isCut_; }  ///< The content has ended inside of a field.
    std::size_t At() const { return at_; }
    std::string_view From(std::size_t begin) const { return content_.substr(begin, at_ - begin); }
    std::string_view Rest() const { return content_.substr(at_); }

    void Skip(std::size_t size)
    {
        isCut_ = isCut_ || size > content_.size() - at_;
        at_ += std::min(size, content_.size() - at_);
    }
    std::uint32_t Number(std::size_t size)
    {
        const std::size_t begin = at_;
        Skip(size);
        if (isCut_)
            return 0;
        return size == 2 ? U16At(content_, begin) : U32At(content_, begin);
    }

private:
    std::string_view content_;
    std::size_t at_ = 0;
    bool isCut_ = false;
};

constexpr std::uint32_t Bits(std::initializer_list<int> bits)
{
    std::uint32_t mask = 0;
    for (const int bit : bits)
        mask |= 1u << bit;
    return mask;
}

/// Skips the fields that a mask tells of: of two bytes where one of their bits is set.
void SkipFlagged(Fields& fields, std::uint32_t mask, std::initializer_list<std::uint32_t> groups)
{
    for (const std::uint32_t group : groups)
        if ((mask & group) != 0)
            fields.Skip(2);
}

/// TextPFException ([MS-PPT] 2.9.20), whose fields follow each other in this order.
void SkipParagraphFormat(Fields& fields)
{
    constexpr std::uint32_t bulletFlags = Bits({0, 1, 2, 3});
    constexpr std::uint32_t bulletChar = Bits({7});
    constexpr std::uint32_t bulletFont = Bits({4});
    constexpr std::uint32_t bulletSize = Bits({6});
    constexpr std::uint32_t bulletColor = Bits({5});
    constexpr std::uint32_t align = Bits({11});
    constexpr std::uint32_t lineSpacing = Bits({12});
    constexpr std::uint32_t spaceBefore = Bits({13});
    constexpr std::uint32_t spaceAfter = Bits({14});
    constexpr std::uint32_t leftMargin = Bits({8});
    constexpr std::uint32_t indent = Bits({10});
    constexpr std::uint32_t defaultTabSize = Bits({15});
    constexpr std::uint32_t tabStops = Bits({20});
    constexpr std::uint32_t fontAlign = Bits({16});
    constexpr std::uint32_t wrapFlags = Bits({17, 18, 19});
    constexpr std::uint32_t textDirection = Bits({21});

    const std::uint32_t mask = fields.Number(4);
    SkipFlagged(fields, mask, {bulletFlags, bulletChar, bulletFont, bulletSize});
    if ((mask & bulletColor) != 0)
        fields.Skip(4);
    SkipFlagged(fields, mask, {align, lineSpacing, spaceBefore, spaceAfter, leftMargin, indent, defaultTabSize});
    if ((mask & tabStops) != 0) {
        const std::size_t count = fields.Number(2);
        fields.Skip(4 * count);
    }
    SkipFlagged(fields, mask, {fontAlign, wrapFlags, textDirection});
}

/// TextCFException ([MS-PPT] 2.9.14).
void SkipCharacterFormat(Fields& fields)
{
    constexpr std::uint32_t fontStyle = Bits({0, 1, 2, 4, 5, 7, 9, 10, 11, 12, 13});
    constexpr std::uint32_t typeface = Bits({16});
    constexpr std::uint32_t oldEastAsianTypeface = Bits({21});
    constexpr std::uint32_t ansiTypeface = Bits({22});
    constexpr std::uint32_t symbolTypeface = Bits({23});
    constexpr std::uint32_t size = Bits({17});
    constexpr std::uint32_t color = Bits({18});
    constexpr std::uint32_t position = Bits({19});

    const std::uint32_t mask = fields.Number(4);
    SkipFlagged(fields, mask, {fontStyle, typeface, oldEastAsianTypeface, ansiTypeface, symbolTypeface, size});
    if ((mask & color) != 0)
        fields.Skip(4);
    SkipFlagged(fields, mask, {position});
}

/// TextSIException ([MS-PPT] 2.9.32).
void SkipSpecialInfo(Fields& fields)
{
    constexpr std::uint32_t spelling = Bits({0});
    constexpr std::uint32_t language = Bits({1});
    constexpr std::uint32_t otherLanguage = Bits({2});
    constexpr std::uint32_t extension = Bits({5});
    constexpr std::uint32_t bidi = Bits({6});
    constexpr std::uint32_t smartTag = Bits({9});

    const std::uint32_t mask = fields.Number(4);
    SkipFlagged(fields, mask, {spelling, language, otherLanguage, bidi});
    if ((mask & extension) != 0)
        fields.Skip(4);
    if ((mask & smartTag) != 0) {
        const std::uint32_t count = fields.Number(4);
        fields.Skip(std::size_t{4} * count);
    }
}

template <class SkipFormat>
FormatRun ReadRun(Fields& fields, const SkipFormat& skipFormat)
{
    const std::uint32_t units = fields.Number(4);
    const std::size_t begin = fields.At();
    skipFormat(fields);
    return {units, fields.From(begin)};
}

/// Runs until they make up that many units, or the content ends. False for what are no runs.
template <class SkipFormat>
bool ReadRuns(Fields& fields, std::uint64_t units, std::vector<FormatRun>& runs, const SkipFormat& skipFormat)
{
    for (std::uint64_t sum = 0; sum < units && !fields.IsAtEnd();) {
        const FormatRun run = ReadRun(fields, skipFormat);
        if (fields.IsCut())
            return false;
        runs.push_back(run);
        sum += run.units;
    }
    return true;
}

constexpr std::uint64_t allUnits = ~std::uint64_t{0};

}  // namespace

std::optional<StyleRuns> ReadStyleRuns(std::string_view content, std::size_t textUnits)
{
    StyleRuns style;
    Fields fields(content);
    const bool areRuns = ReadRuns(fields, textUnits + 1, style.paragraphs,
                                  [](Fields& of) {
                                      of.Skip(2);  // level
                                      SkipParagraphFormat(of);
                                  }) &&
                         ReadRuns(fields, textUnits + 1, style.characters, SkipCharacterFormat);
    if (!areRuns)
        return {};
    style.rest = fields.Rest();
    return style;
}

std::optional<std::vector<FormatRun>> ReadLevelRuns(std::string_view content)
{
    std::vector<FormatRun> runs;
    Fields fields(content);
    if (!ReadRuns(fields, allUnits, runs, [](Fields& of) { of.Skip(2); }))
        return {};
    return runs;
}

std::optional<std::vector<FormatRun>> ReadSpecialInfoRuns(std::string_view content)
{
    std::vector<FormatRun> runs;
    Fields fields(content);
    if (!ReadRuns(fields, allUnits, runs, SkipSpecialInfo))
        return {};
    return runs;
}

void AppendRuns(std::string& content, const std::vector<FormatRun>& runs)
{
    for (const FormatRun& run : runs) {
        AppendU32(content, run.units);
        content += run.format;
    }
}

}  // namespace tessarine::builtin
