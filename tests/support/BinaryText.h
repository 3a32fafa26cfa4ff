#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/String.h"

/// Text of a binary deck under construction: runs, fields, links, and what the records beside a text say of it.
namespace tessarine::test::ppt
{

class BinaryParts;

/// Where a link leads, and how its record and the place that uses it (InteractiveInfo) say so.
class Link
{
public:
    Link& Location(String location);  ///< Bookmark or "slide id,index,title"; the SubAddress.
    Link& Friendly(String name);
    Link& Shared();                  ///< Uses the record that an equal link of the deck has.
    Link& Action(int action);        ///< 4 hyperlink, 3 jump, 6 media …
    Link& WithId(std::uint32_t id);  ///< Names this id and makes no record of its own.

    bool operator==(const Link&) const = default;

    std::optional<String> address;  ///< Without one the record holds none.
    String location;
    String friendly;
    int slide = 0;  ///< From 1; its location is made when the deck is.
    int action = 4;
    int jump = 0;
    int type = 8;  ///< 7 slide, 8 web, 9 presentation, 10 file, 0xFF none.
    bool shared = false;
    std::optional<std::uint32_t> id;
};

Link LinkTo(String url);
Link LinkToFile(String path);
Link LinkToPresentation(String path, String location = {});
Link LinkToSlide(int number);  ///< A slide of the deck, from 1, as PowerPoint writes it: action 4, no address.
Link LinkWithoutAddress();     ///< A record with a friendly name alone.
Link JumpTo(int jump);         ///< 1 next slide, 2 previous … ; no record.

/// What a metacharacter stands for.
enum class FieldKind { SlideNumber, DateTime, GenericDate, Header, Footer, RtfDateTime };

/// A run of text: "\r" ends a paragraph, "\v" a line.
class TextRun
{
public:
    explicit TextRun(String characters) : text(std::move(characters)) {}

    TextRun& Bold(bool value = true);
    TextRun& Italic(bool value = true);
    TextRun& Size(int points);
    TextRun& Color(std::uint32_t rgb);        ///< 0xC00000 is a red.
    TextRun& Language(std::uint16_t number);  ///< 0x0407
    TextRun& Click(Link link);
    TextRun& Hover(Link link);

    bool HasLook() const;
    bool SameLook(const TextRun& other) const;

    String text;
    std::optional<bool> bold{};
    std::optional<bool> italic{};
    std::optional<int> size{};
    std::optional<std::uint32_t> color{};
    std::optional<std::uint16_t> language{};
    std::optional<Link> click{};
    std::optional<Link> hover{};
    std::optional<FieldKind> field{};
};

TextRun Field(FieldKind kind);

/// The whole text of a shape.
class Text
{
public:
    Text() = default;

    /// Runs; a text stands for a run without formatting.
    template <class... Parts>
    explicit Text(Parts&&... parts)
    {
        (Add(std::forward<Parts>(parts)), ...);
    }

    Text& Levels(std::vector<int> levels);  ///< Of the paragraphs in order; 0 beyond.
    Text& Wide();                           ///< TextCharsAtom, even where bytes would do.
    Text& Styled();                         ///< StyleTextPropAtom, even where nothing is formatted.
    Text& MasterLevels();                   ///< MasterTextPropAtom.
    Text& Ruler();
    Text& Bookmark(int begin, int end, std::uint32_t id);
    Text& Range(int begin, int end, Link link, bool hover = false);  ///< A link over characters, whatever the runs.
    Text& ShortStyles();  ///< Character runs that sum to the length alone, as seen in two real files.
    Text& Kind(int textType);
    Text& Raw(std::string records);  ///< At the end of the group.

    String Characters() const;
    /// The records of the text; `textType` unless Kind was called.
    std::string Records(BinaryParts& parts, int textType, std::uint32_t headerInstance = 0) const;

    Text& Add(TextRun run);
    Text& Add(String text) { return Add(TextRun(std::move(text))); }
    Text& Add(const char16_t* text) { return Add(TextRun(text)); }
    Text& Add(const Text& other) { return *this = other; }

private:
    struct Span {
        int begin;
        int end;
        Link link;
        bool hover;
    };
    struct Mark {
        int begin;
        int end;
        std::uint32_t id;
    };

    std::string Style() const;
    std::string ParagraphStyles() const;
    std::string CharacterStyles() const;
    std::string Metacharacters() const;
    std::string SpecialInfo() const;
    std::string Links(BinaryParts& parts) const;

    std::vector<TextRun> runs_;
    std::vector<int> levels_;
    std::vector<Span> spans_;
    std::vector<Mark> bookmarks_;
    std::optional<int> kind_;
    bool wide_ = false;
    bool styled_ = false;
    bool masterLevels_ = false;
    bool ruler_ = false;
    bool shortStyles_ = false;
    std::string raw_;
};

/// The container that makes a shape or a text lead somewhere.
std::string InteractiveInfo(BinaryParts& parts, const Link& link, bool hover);

}  // namespace tessarine::test::ppt
