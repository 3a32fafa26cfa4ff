#include "support/BinaryText.h"

#include <algorithm>

#include "support/BinaryParts.h"
#include "support/BinaryRecords.h"

namespace tessarine::test::ppt
{

namespace
{

constexpr std::uint32_t TextHeaderAtom = 3999;
constexpr std::uint32_t TextCharsAtom = 4000;
constexpr std::uint32_t StyleTextPropAtom = 4001;
constexpr std::uint32_t MasterTextPropAtom = 4002;
constexpr std::uint32_t TextRulerAtom = 4006;
constexpr std::uint32_t TextBookmarkAtom = 4007;
constexpr std::uint32_t TextBytesAtom = 4008;
constexpr std::uint32_t TextSpecialInfoAtom = 4010;
constexpr std::uint32_t TextInteractiveInfoAtom = 4063;

std::uint32_t Count(std::size_t count)
{
    return static_cast<std::uint32_t>(count);
}

/// TextCFException: which properties follow, then each of them.
std::string CharacterProperties(const TextRun& run)
{
    std::uint32_t mask = 0;
    std::uint32_t style = 0;
    std::string values;
    if (run.bold) {
        mask |= 1;
        style |= *run.bold ? 1U : 0U;
    }
    if (run.italic) {
        mask |= 2;
        style |= *run.italic ? 2U : 0U;
    }
    if (mask != 0)
        values += Short(style);
    if (run.size) {
        mask |= 1U << 17;
        values += Short(static_cast<std::uint32_t>(*run.size));
    }
    if (run.color) {
        mask |= 1U << 18;
        values += Byte(*run.color >> 16) + Byte(*run.color >> 8) + Byte(*run.color) + Byte(0xFE);
    }
    return Long(mask) + values;
}

std::string Metacharacter(FieldKind kind, std::size_t position)
{
    const std::string at = Long(Count(position));
    switch (kind) {
        case FieldKind::SlideNumber:
            return Atom(4056, at);
        case FieldKind::DateTime:
            return Atom(4087, at + Long(1));
        case FieldKind::GenericDate:
            return Atom(4088, at);
        case FieldKind::Header:
            return Atom(4089, at);
        case FieldKind::Footer:
            return Atom(4090, at);
        case FieldKind::RtfDateTime:
            break;
    }
    std::string format = Wide(u"yyyy");
    format.resize(128);
    return Atom(4117, at + format);
}

}  // namespace

Link& Link::Location(String where)
{
    location = std::move(where);
    return *this;
}

Link& Link::Friendly(String name)
{
    friendly = std::move(name);
    return *this;
}

Link& Link::Shared()
{
    shared = true;
    return *this;
}

Link& Link::Action(int number)
{
    action = number;
    return *this;
}

Link& Link::WithId(std::uint32_t number)
{
    id = number;
    return *this;
}

Link LinkTo(String url)
{
    Link link;
    link.friendly = url;
    link.address = std::move(url);
    return link;
}

Link LinkToFile(String path)
{
    Link link = LinkTo(std::move(path));
    link.type = 10;
    return link;
}

Link LinkToPresentation(String path, String location)
{
    Link link = LinkTo(std::move(path));
    link.type = 9;
    return link.Location(std::move(location));
}

Link LinkToSlide(int number)
{
    Link link;
    link.slide = number;
    link.type = 7;
    return link;
}

Link LinkWithoutAddress()
{
    return Link().Friendly(u"#nowhere");
}

Link JumpTo(int jump)
{
    Link link;
    link.action = 3;
    link.jump = jump;
    link.type = jump - 1;
    return link.WithId(0);
}

TextRun& TextRun::Bold(bool value)
{
    bold = value;
    return *this;
}

TextRun& TextRun::Italic(bool value)
{
    italic = value;
    return *this;
}

TextRun& TextRun::Size(int points)
{
    size = points;
    return *this;
}

TextRun& TextRun::Color(std::uint32_t rgb)
{
    color = rgb;
    return *this;
}

TextRun& TextRun::Language(std::uint16_t number)
{
    language = number;
    return *this;
}

TextRun& TextRun::Click(Link link)
{
    click = std::move(link);
    return *this;
}

TextRun& TextRun::Hover(Link link)
{
    hover = std::move(link);
    return *this;
}

bool TextRun::HasLook() const
{
    return bold || italic || size || color;
}

bool TextRun::SameLook(const TextRun& other) const
{
    return bold == other.bold && italic == other.italic && size == other.size && color == other.color;
}

TextRun Field(FieldKind kind)
{
    TextRun run(u"*");
    run.field = kind;
    return run;
}

Text& Text::Add(TextRun run)
{
    runs_.push_back(std::move(run));
    return *this;
}

Text& Text::Levels(std::vector<int> levels)
{
    levels_ = std::move(levels);
    return *this;
}

Text& Text::Wide()
{
    wide_ = true;
    return *this;
}

Text& Text::Styled()
{
    styled_ = true;
    return *this;
}

Text& Text::MasterLevels()
{
    masterLevels_ = true;
    return *this;
}

Text& Text::Ruler()
{
    ruler_ = true;
    return *this;
}

Text& Text::Bookmark(int begin, int end, std::uint32_t id)
{
    bookmarks_.push_back({begin, end, id});
    return *this;
}

Text& Text::Range(int begin, int end, Link link, bool hover)
{
    spans_.push_back({begin, end, std::move(link), hover});
    return *this;
}

Text& Text::ShortStyles()
{
    shortStyles_ = true;
    return Styled();
}

Text& Text::Kind(int textType)
{
    kind_ = textType;
    return *this;
}

Text& Text::Raw(std::string records)
{
    raw_ += std::move(records);
    return *this;
}

String Text::Characters() const
{
    String characters;
    for (const auto& run : runs_)
        characters += run.text;
    return characters;
}

std::string Text::Records(BinaryParts& parts, int textType, std::uint32_t headerInstance) const
{
    const String characters = Characters();
    const bool wide =
        wide_ || std::any_of(characters.begin(), characters.end(), [](char16_t unit) { return unit > 0xFF; });
    std::string records =
        Atom(TextHeaderAtom, Long(static_cast<std::uint32_t>(kind_.value_or(textType))), headerInstance);
    if (wide)
        records += Atom(TextCharsAtom, ppt::Wide(characters));
    else if (!characters.empty())
        records += Atom(TextBytesAtom, std::string(characters.begin(), characters.end()));
    records += Style();
    if (masterLevels_)
        records += Atom(MasterTextPropAtom, Long(Count(characters.size() + 1)) + Short(0));
    records += Metacharacters();
    for (const auto& mark : bookmarks_)
        records += Atom(TextBookmarkAtom, Long(static_cast<std::uint32_t>(mark.begin)) +
                                              Long(static_cast<std::uint32_t>(mark.end)) + Long(mark.id));
    records += SpecialInfo() + Links(parts);
    if (ruler_)
        records += Atom(TextRulerAtom, Long(1) + Short(576));
    return records + raw_;
}

std::string Text::Style() const
{
    const bool formatted = std::any_of(runs_.begin(), runs_.end(), [](const TextRun& run) { return run.HasLook(); });
    if (!styled_ && !formatted && levels_.empty())
        return {};
    return Atom(StyleTextPropAtom, ParagraphStyles() + CharacterStyles());
}

std::string Text::ParagraphStyles() const
{
    const String characters = Characters();
    std::string styles;
    std::size_t start = 0;
    for (std::size_t paragraph = 0; start <= characters.size(); ++paragraph) {
        const std::size_t end = std::min(characters.find(u'\r', start), characters.size()) + 1;
        const int level = paragraph < levels_.size() ? levels_[paragraph] : 0;
        styles += Long(Count(end - start)) + Short(static_cast<std::uint32_t>(level)) + Long(0);
        start = end;
    }
    return styles;
}

std::string Text::CharacterStyles() const
{
    std::string styles;
    std::size_t count = 0;
    for (std::size_t i = 0; i < runs_.size(); ++i) {
        count += runs_[i].text.size();
        const bool last = i + 1 == runs_.size();
        if (!last && runs_[i].SameLook(runs_[i + 1]))
            continue;
        styles += Long(Count(count + (last && !shortStyles_ ? 1 : 0))) + CharacterProperties(runs_[i]);
        count = 0;
    }
    return runs_.empty() ? Long(1) + Long(0) : styles;
}

std::string Text::Metacharacters() const
{
    std::string atoms;
    std::size_t position = 0;
    for (const auto& run : runs_) {
        if (run.field)
            atoms += Metacharacter(*run.field, position);
        position += run.text.size();
    }
    return atoms;
}

std::string Text::SpecialInfo() const
{
    if (std::none_of(runs_.begin(), runs_.end(), [](const TextRun& run) { return run.language.has_value(); }))
        return {};
    constexpr std::uint32_t LanguageAndAlternative = 6;
    std::string info;
    for (std::size_t i = 0; i < runs_.size(); ++i) {
        info += Long(Count(runs_[i].text.size() + (i + 1 == runs_.size() ? 1 : 0)));
        if (runs_[i].language)
            info += Long(LanguageAndAlternative) + Short(*runs_[i].language) + Short(0);
        else
            info += Long(0);
    }
    return Atom(TextSpecialInfoAtom, info);
}

std::string Text::Links(BinaryParts& parts) const
{
    std::vector<Span> spans;
    int position = 0;
    for (const auto& run : runs_) {
        const int end = position + static_cast<int>(run.text.size());
        if (run.click)
            spans.push_back({position, end, *run.click, false});
        if (run.hover)
            spans.push_back({position, end, *run.hover, true});
        position = end;
    }
    spans.insert(spans.end(), spans_.begin(), spans_.end());
    std::string records;
    for (const auto& span : spans)
        records += InteractiveInfo(parts, span.link, span.hover) +
                   Atom(TextInteractiveInfoAtom,
                        Long(static_cast<std::uint32_t>(span.begin)) + Long(static_cast<std::uint32_t>(span.end)),
                        span.hover ? 1 : 0);
    return records;
}

std::string InteractiveInfo(BinaryParts& parts, const Link& link, bool hover)
{
    const std::uint32_t id = link.id ? *link.id : parts.LinkId(link);
    const std::string atom = Long(0) + Long(id) + Byte(static_cast<std::uint32_t>(link.action)) + Byte(0) +
                             Byte(static_cast<std::uint32_t>(link.jump)) + Byte(0) +
                             Byte(static_cast<std::uint32_t>(link.type)) + std::string(3, '\0');
    return Container(4082, Atom(4083, atom), hover ? 1 : 0);
}

}  // namespace tessarine::test::ppt
