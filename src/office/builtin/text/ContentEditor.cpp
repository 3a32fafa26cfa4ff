#include "office/builtin/text/ContentEditor.h"

#include <algorithm>
#include <string_view>

#include "office/builtin/limits/Damage.h"
#include "office/builtin/xml/XmlText.h"
#include "platform/Utf16.h"

namespace tessarine::builtin
{

namespace
{

constexpr std::string_view cdataBegin = "<![CDATA[";
constexpr std::string_view cdataEnd = "]]>";

// In units. What an edit makes of the characters in front of it shows within two escapes, "_x005F_x000B_".
constexpr std::size_t reach = 14;

std::uint32_t Length(std::size_t bytes)
{
    return static_cast<std::uint32_t>(bytes);  // parts are smaller than 4 GiB
}

/// Seven characters and more: an escape. One that is written plainly has no markup in it.
bool HasMarks(std::string_view unit)
{
    constexpr std::size_t escape = 7;
    return unit.size() > escape &&
           (unit.find('<') != std::string_view::npos || unit.find(cdataEnd) != std::string_view::npos);
}

}  // namespace

ContentEditor::ContentEditor(const std::string& content) : bytes_(content)
{
    std::vector<Unit> units;
    {
        const std::vector<ContentUnit> read = ContentUnits(content, InnerElements::Skipped);
        units.reserve(read.size());
        std::size_t at = 0;
        for (const ContentUnit& unit : read) {
            const bool isSecondHalf = unit.begin < at;
            const std::size_t begin = isSecondHalf ? at : unit.begin;
            units.push_back({Length(begin - at), Length(isSecondHalf ? 0 : unit.end - begin), unit.unit, unit.inCData});
            isMixed_ = isMixed_ || HasMarks(std::string_view(content).substr(begin, units.back().size));
            at = isSecondHalf ? at : unit.end;
        }
    }
    units_ = GapBuffer(std::move(units));
}

std::size_t ContentEditor::Size() const
{
    return text_ ? text_->Size() : units_.Size();
}

void ContentEditor::MoveTo(std::size_t offset)
{
    byteAt_ = ByteOf(offset);
    at_ = offset;
}

std::size_t ContentEditor::ByteOf(std::size_t offset) const
{
    std::size_t byte = byteAt_;
    for (std::size_t i = at_; i < offset; ++i)
        byte += units_[i].before + units_[i].size;
    for (std::size_t i = offset; i < at_; ++i)
        byte -= units_[i].before + units_[i].size;
    return byte;
}

void ContentEditor::Replace(std::size_t offset, std::size_t count, StringView with)
{
    if (count > Size() || offset > Size() - count)
        throw Damage({}, "a text run is not what it was");
    const auto isDivided = [&](std::size_t at) {
        return at > 0 && at < units_.Size() && IsHighSurrogate(units_[at - 1].unit) && IsLowSurrogate(units_[at].unit);
    };
    if (!text_ && (isMixed_ || isDivided(offset) || isDivided(offset + count)))
        WriteAnew();
    if (text_) {
        text_->Replace(offset, count, with);
        return;
    }

    MoveTo(offset);
    std::size_t byte = byteAt_;
    std::size_t gone = 0;  // bytes
    // The new text stands before the first replaced unit, or after the unit in front of it; without any, at the end.
    const bool isBefore = offset < units_.Size();
    std::string marks;  // between the units that go
    for (std::size_t i = offset; i < offset + count; ++i) {
        const Unit& unit = units_[i];
        std::string own;
        bytes_.CopyTo(own, byte + gone, byte + gone + unit.before);
        marks += own;
        gone += unit.before + unit.size;
    }
    std::size_t front = isBefore ? units_[offset].before : offset == 0 ? bytes_.Size() - byte : 0;
    if (count == 0) {
        bytes_.CopyTo(marks, byte, byte + front);
        gone = front;
    }
    front = std::min(front, marks.size());

    const std::string escaped = EscapeRunText(with);
    const std::vector<ContentUnit> read = ContentUnits(escaped);
    const bool leavesCData =
        !read.empty() && (isBefore || offset > 0) && units_[isBefore ? offset : offset - 1].inCData;
    std::vector<Unit> units;
    units.reserve(read.size());
    for (const ContentUnit& unit : read) {
        const bool isSecondHalf = !units.empty() && unit.begin == read[units.size() - 1].begin;
        units.push_back({0, Length(isSecondHalf ? 0 : unit.end - unit.begin), unit.unit, false});
    }
    std::string bytes = marks.substr(0, units.empty() ? 0 : front);
    std::string after = marks.substr(bytes.size());
    if (leavesCData) {
        bytes += cdataEnd;
        after.insert(0, cdataBegin);
    }
    if (!units.empty())
        units.front().before = Length(bytes.size());
    bytes += escaped;
    const std::size_t next = offset + count;
    const std::size_t ownBefore = next < units_.Size() && count > 0 ? units_[next].before : 0;
    if (next < units_.Size())
        units_[next].before = Length(after.size() + ownBefore);
    bytes += after;

    bytes_.Replace(byte, gone, bytes);
    const std::size_t end = offset + units.size();
    units_.Replace(offset, count, units);
    if (!ReadsRight(offset - std::min(offset, reach), std::min(end + 2 * reach, units_.Size())))
        WriteAnew();
}

bool ContentEditor::ReadsRight(std::size_t from, std::size_t to) const
{
    // Not in the middle of a pair.
    if (from > 0 && from < to && units_[from].size == 0)
        --from;
    const String expected = TextOf(from, to);
    bool isDoubtful = expected.find(u"_x00") != String::npos || expected.find(u"]]>") != String::npos;
    for (std::size_t i = from; i < to && !isDoubtful; ++i)
        isDoubtful = units_[i].unit == u'&' && units_[i].size == 1 && !units_[i].inCData;
    if (!isDoubtful || from == to)
        return true;

    // The units with what stands between them, as content of their own.
    const std::size_t begin = ByteOf(from) + units_[from].before;
    std::size_t end = begin + units_[from].size;
    for (std::size_t i = from + 1; i < to; ++i)
        end += units_[i].before + units_[i].size;
    std::string content(units_[from].inCData ? cdataBegin : "");
    bytes_.CopyTo(content, begin, end);
    if (units_[to - 1].inCData)
        content += cdataEnd;
    try {
        const std::vector<ContentUnit> read = ContentUnits(content, InnerElements::Skipped);
        for (std::size_t i = 2; i < read.size(); ++i)
            if (!read[i].inCData &&
                std::string_view(content).substr(read[i - 2].begin, read[i].end - read[i - 2].begin) == cdataEnd)
                return false;
        // The last units may read otherwise without what follows them.
        const std::size_t sure =
            to == units_.Size() ? expected.size() : expected.size() - std::min(expected.size(), reach);
        if (read.size() < sure || (to == units_.Size() && read.size() != sure))
            return false;
        return std::equal(expected.begin(), expected.begin() + static_cast<std::ptrdiff_t>(sure), read.begin(),
                          [](char16_t unit, const ContentUnit& other) { return unit == other.unit; });
    } catch (const Failure&) {
        return false;
    }
}

String ContentEditor::TextOf(std::size_t from, std::size_t to) const
{
    String text;
    text.reserve(to - from);
    for (std::size_t i = from; i < to; ++i)
        text += units_[i].unit;
    return text;
}

void ContentEditor::WriteAnew()
{
    text_.emplace(TextOf(0, units_.Size()));
    units_ = {};
    bytes_ = {};
}

std::string ContentEditor::TakeFront(std::size_t offset)
{
    if (text_) {
        String front;
        text_->CopyTo(front, 0, offset);
        text_->Erase(0, offset);
        return EscapeRunText(front);
    }
    MoveTo(offset);
    if (offset < units_.Size() && units_[offset].before > 0) {
        // Marks and comments go along, but for the one that begins the rest's own CDATA section.
        Unit& next = units_[offset];
        const std::size_t kept = next.inCData ? std::min<std::size_t>(cdataBegin.size(), next.before) : 0;
        byteAt_ += next.before - kept;
        next.before = Length(kept);
    } else if (offset > 0 && units_[offset - 1].inCData) {
        // In a CDATA section that is divided, both halves get marks of their own.
        bytes_.Replace(byteAt_, 0, std::string(cdataEnd) + std::string(cdataBegin));
        byteAt_ += cdataEnd.size();
        if (offset < units_.Size())
            units_[offset].before += Length(cdataBegin.size());
    }
    std::string front;
    bytes_.CopyTo(front, 0, byteAt_);
    // An escaped underscore needs the escape that follows it.
    for (std::size_t i = offset - std::min(offset, reach); i < offset; ++i)
        if (units_[i].unit == u'_' && units_[i].size > 1) {
            front = EscapeRunText(TextOf(0, offset));
            break;
        }
    bytes_.Erase(0, byteAt_);
    units_.Erase(0, offset);
    at_ = byteAt_ = 0;
    return front;
}

std::size_t ContentEditor::KeptBytes() const
{
    return sizeof(ContentEditor) + units_.KeptBytes() + bytes_.KeptBytes() + (text_ ? text_->KeptBytes() : 0);
}

void ContentEditor::AppendTo(std::string& bytes) const
{
    if (!text_) {
        bytes_.CopyTo(bytes, 0, bytes_.Size());
        return;
    }
    String text;
    text_->CopyTo(text, 0, text_->Size());
    bytes += EscapeRunText(text);
}

}  // namespace tessarine::builtin
