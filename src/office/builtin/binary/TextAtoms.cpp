#include "office/builtin/binary/TextAtoms.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "office/builtin/limits/Damage.h"
#include "office/builtin/records/RecordTypes.h"

namespace tessarine::builtin
{

namespace
{

/// An atom that stands for a field begins with the field's position.
bool IsMetaCharacter(std::uint16_t type)
{
    return type == record::SlideNumberMetaCharAtom || type == record::DateTimeMetaCharAtom ||
           type == record::GenericDateMetaCharAtom || type == record::HeaderMetaCharAtom ||
           type == record::FooterMetaCharAtom || type == record::RtfDateTimeMetaCharAtom;
}

bool IsText(std::uint16_t type)
{
    return type == record::TextCharsAtom || type == record::TextBytesAtom;
}

Records AtomsOf(std::string_view bytes, const TextPlace& place)
{
    return {bytes, place.begin, place.end};
}

/// One byte a unit, the high byte of which is 0.
String TextOfBytes(std::string_view content)
{
    String text(content.size(), u'\0');
    std::ranges::transform(content, text.begin(), [](char byte) { return static_cast<unsigned char>(byte); });
    return text;
}

std::string BytesOfText(StringView text)
{
    std::string bytes(text.size(), '\0');
    std::ranges::transform(text, bytes.begin(), [](char16_t unit) { return static_cast<char>(unit); });
    return bytes;
}

constexpr std::size_t rangeSize = 8;  // two positions

/// Puts the text of one group of atoms, record by record.
class TextWriter
{
public:
    TextWriter(std::string_view bytes, StringView text, const TextEdits& edits, const std::set<std::size_t>& removed,
               RecordEdits& target)
        : bytes_(bytes), text_(text), edits_(edits), removed_(removed), target_(target)
    {
    }

    void Write(const TextPlace& place)
    {
        const std::size_t oldUnits = ReadText(bytes_, place).size();
        std::optional<Record> header;
        bool hasText = false;
        std::optional<Record> info;  // in front of a range
        for (const Record& atom : AtomsOf(bytes_, place)) {
            const std::string_view content = atom.Content(bytes_);
            if (atom.type == record::TextHeaderAtom) {
                header = atom;
            } else if (IsText(atom.type)) {
                if (!std::exchange(hasText, true))
                    WriteText(atom);
            } else if (atom.type == record::StyleTextPropAtom) {
                WriteStyle(atom, oldUnits);
            } else if (atom.type == record::MasterTextPropAtom) {
                const auto runs = ReadLevelRuns(content);
                PutRuns(atom, runs ? edits_.Paragraphs(*runs, text_) : FailedRuns());
            } else if (atom.type == record::TextSpecialInfoAtom) {
                const auto runs = ReadSpecialInfoRuns(content);
                PutRuns(atom, runs ? edits_.Characters(*runs) : FailedRuns());
            } else if (IsMetaCharacter(atom.type) && atom.Holds(4)) {
                WriteField(atom);
            } else if (atom.type == record::TextBookmarkAtom && atom.Holds(rangeSize)) {
                WriteBookmark(atom);
            } else if (atom.type == record::TextInteractiveInfoAtom && atom.Holds(rangeSize)) {
                WriteLinkRange(atom, info);
            }
            info = atom.type == record::InteractiveInfo ? std::optional(atom) : std::nullopt;
        }
        // A text that was empty needs no atom, one that isn't does.
        if (!hasText && !text_.empty() && header)
            Put(*header, RecordLike(*header, header->Content(bytes_)) +
                             RecordOf(record::TextCharsAtom, 0, 0, BytesOfUtf16(text_)));
    }

private:
    void Put(const Record& atom, std::string bytes)
    {
        if (bytes != bytes_.substr(atom.begin, atom.end - atom.begin))
            target_.Replace(atom.begin, atom.end, std::move(bytes));
    }

    void WriteText(const Record& atom)
    {
        const bool isBytes = atom.type == record::TextBytesAtom &&
                             std::ranges::all_of(text_, [](char16_t unit) { return unit <= 0xFF; });
        Put(atom, isBytes ? RecordLike(atom, BytesOfText(text_))
                          : RecordOf(record::TextCharsAtom, atom.instance, atom.version, BytesOfUtf16(text_)));
    }

    void WriteStyle(const Record& atom, std::size_t oldUnits)
    {
        const auto style = ReadStyleRuns(atom.Content(bytes_), oldUnits);
        if (!style)
            FailedRuns();
        std::string content;
        AppendRuns(content, edits_.Paragraphs(style->paragraphs, text_));
        AppendRuns(content, edits_.Characters(style->characters));
        content += style->rest;
        Put(atom, RecordLike(atom, content));
    }

    [[noreturn]] static std::vector<FormatRun> FailedRuns()
    {
        throw FailedEdit(documentStream, "the format of a text can't be read");
    }

    void PutRuns(const Record& atom, const std::vector<FormatRun>& runs)
    {
        std::string content;
        AppendRuns(content, runs);
        Put(atom, RecordLike(atom, content));
    }

    void WriteField(const Record& atom)
    {
        std::string content(atom.Content(bytes_));
        const std::uint32_t position = U32At(content, 0);
        if (!edits_.Keeps(position)) {
            Put(atom, {});
            return;
        }
        std::string moved;
        AppendU32(moved, static_cast<std::uint32_t>(edits_.PositionOf(position)));
        Put(atom, RecordLike(atom, content.replace(0, moved.size(), moved)));
    }

    std::pair<std::size_t, std::size_t> NewRange(const Record& atom) const
    {
        const std::string_view content = atom.Content(bytes_);
        const std::size_t begin = U32At(content, 0);
        return {edits_.PositionOf(begin), edits_.PositionOf(std::max<std::size_t>(begin, U32At(content, 4)))};
    }

    void PutRange(const Record& atom, std::size_t begin, std::size_t end)
    {
        std::string content;
        AppendU32(content, static_cast<std::uint32_t>(begin));
        AppendU32(content, static_cast<std::uint32_t>(end));
        content += atom.Content(bytes_).substr(rangeSize);
        Put(atom, RecordLike(atom, content));
    }

    /// May include the end of the last paragraph.
    void WriteBookmark(const Record& atom)
    {
        const auto [begin, end] = NewRange(atom);
        PutRange(atom, begin, end);
    }

    void WriteLinkRange(const Record& atom, const std::optional<Record>& info)
    {
        if (info && removed_.contains(info->begin))
            return;
        auto [begin, end] = NewRange(atom);
        end = std::min(end, text_.size());
        if (begin < end || !info) {
            PutRange(atom, begin, end);
            return;
        }
        Put(*info, {});
        Put(atom, {});
    }

    std::string_view bytes_;
    StringView text_;
    const TextEdits& edits_;
    const std::set<std::size_t>& removed_;
    RecordEdits& target_;
};

}  // namespace

void AddToTexts(std::vector<TextPlace>& texts, const Record& atom)
{
    if (atom.type == record::TextHeaderAtom)
        texts.push_back({atom.begin, atom.end});
    else if (!texts.empty())
        texts.back().end = atom.end;
}

std::vector<TextPlace> TextsIn(std::string_view bytes, std::size_t begin, std::size_t end)
{
    std::vector<TextPlace> texts;
    for (const Record& atom : Records(bytes, begin, end))
        AddToTexts(texts, atom);
    return texts;
}

String ReadText(std::string_view bytes, const TextPlace& place)
{
    for (const Record& atom : AtomsOf(bytes, place)) {
        if (atom.type == record::TextCharsAtom)
            return Utf16Content(atom.Content(bytes));
        if (atom.type == record::TextBytesAtom)
            return TextOfBytes(atom.Content(bytes));
    }
    return {};
}

ProtectedRanges FieldsOf(std::string_view bytes, const TextPlace& place, std::size_t textUnits)
{
    std::vector<std::size_t> positions;
    for (const Record& atom : AtomsOf(bytes, place))
        if (IsMetaCharacter(atom.type) && atom.Holds(4))
            positions.push_back(U32At(atom.Content(bytes), 0));
    std::ranges::sort(positions);
    positions.erase(std::unique(positions.begin(), positions.end()), positions.end());
    std::vector<ProtectedRange> fields;
    for (const std::size_t position : positions)
        if (position < textUnits)
            fields.push_back({position, 1});
    return {std::move(fields)};
}

bool IsHeaderFooterField(std::string_view bytes, const TextPlace& place)
{
    if (ReadText(bytes, place).size() != 1)
        return false;
    const Records atoms = AtomsOf(bytes, place);
    for (const Record& atom : atoms)
        if (atom.type == record::HeaderMetaCharAtom || atom.type == record::FooterMetaCharAtom)
            return true;
    return false;
}

std::vector<TextLink> TextLinksOf(std::string_view bytes, const TextPlace& place)
{
    std::vector<TextLink> links;
    std::optional<Record> info;
    std::optional<std::size_t> units;
    for (const Record& atom : AtomsOf(bytes, place)) {
        if (info && atom.type == record::TextInteractiveInfoAtom && atom.Holds(rangeSize)) {
            if (!units)
                units = ReadText(bytes, place).size();
            const std::string_view content = atom.Content(bytes);
            const std::size_t begin = std::min<std::size_t>(U32At(content, 0), *units);
            links.push_back({*info, atom, begin, std::clamp<std::size_t>(U32At(content, 4), begin, *units)});
        }
        info = atom.type == record::InteractiveInfo ? std::optional(atom) : std::nullopt;
    }
    return links;
}

void PutText(std::string_view bytes, const TextPlace& place, StringView text, const TextEdits& edits,
             const std::set<std::size_t>& removed, RecordEdits& target)
{
    TextWriter(bytes, text, edits, removed, target).Write(place);
}

}  // namespace tessarine::builtin
