#pragma once

#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "platform/String.h"
#include "support/PartWriter.h"

/// Text of a deck under construction: runs, breaks, fields, paragraphs, links. Texts are UTF-16; the builder escapes
/// them.
namespace tessarine::test
{

/// A link on a run or a shape. By default each link has a relationship of its own.
class Hyperlink
{
public:
    Hyperlink& Action(std::string action);  ///< "ppaction://hlinkfile"
    Hyperlink& Tooltip(String tooltip);
    Hyperlink& InvalidUrl(String url);  ///< What PowerPoint keeps of a target that is no URI.
    Hyperlink& Shared();                ///< Uses the relationship that an equal target of the part has.

    /// The element `name` ("a:hlinkClick"), its relationship made in `part`.
    std::string Xml(const std::string& name, PartWriter& part) const;

private:
    friend Hyperlink LinkTo(String target);
    friend Hyperlink LinkToSlide(int number);

    String target_;
    int slide_ = 0;
    std::string action_;
    String tooltip_;
    String invalidUrl_;
    bool shared_ = false;
};

Hyperlink LinkTo(String target);    ///< An external target, written as it stands.
Hyperlink LinkToSlide(int number);  ///< A jump to a slide of the deck, from 1.
Hyperlink LinkWithoutTarget();      ///< No relationship (r:id="").

/// A run of text. Two runs are equal when text and formatting are: the marks of the speller (err, dirty), links and the
/// way the text is written are not compared.
class TextRun
{
public:
    explicit TextRun(String characters) : text(std::move(characters)) {}

    TextRun& Bold(bool value = true);
    TextRun& Italic(bool value = true);
    TextRun& Size(int points);
    TextRun& Color(std::string rgb);     ///< "C00000"
    TextRun& Language(std::string tag);  ///< "de-DE"
    TextRun& Misspelled();               ///< err="1"
    TextRun& Dirty(bool value);          ///< dirty="1" or "0"; the attribute is left out unless this is called.
    TextRun& Click(Hyperlink link);
    TextRun& Hover(Hyperlink link);
    TextRun& AsCData();                    ///< The text in a CDATA section.
    TextRun& Attributes(std::string raw);  ///< Further attributes of a:rPr, raw.
    TextRun& Children(std::string raw);    ///< Further children of a:rPr, raw, in front of links.

    bool operator==(const TextRun& other) const;

    /// The run properties as an element of that name ("a:rPr", "a:endParaRPr"); "" when there are none.
    std::string PropertiesXml(const std::string& element, PartWriter& part) const;
    std::string ContentXml() const;           ///< The a:t element.
    std::string Xml(PartWriter& part) const;  ///< The whole a:r.

    String text;
    std::optional<bool> bold;
    std::optional<bool> italic;
    std::optional<int> size;  ///< In hundredths of a point, as in the file.
    std::string language;
    std::string color;

private:
    friend TextRun RawRun(std::string textXml);

    std::optional<bool> dirty_;
    bool misspelled_ = false;
    bool cdata_ = false;
    std::optional<std::string> rawText_;
    std::string rawAttributes_;
    std::string rawChildren_;
    std::optional<Hyperlink> click_;
    std::optional<Hyperlink> hover_;
};

/// A run whose a:t content is given as XML: character references, comments, several CDATA sections.
TextRun RawRun(std::string textXml);

/// Printed in test failures as the builder would be written.
void PrintTo(const TextRun& run, std::ostream* out);

/// a:br. Its properties may be given by a run, whose text is not used.
struct LineBreak {
    LineBreak() = default;
    explicit LineBreak(TextRun like) : properties(std::move(like)) {}

    std::optional<TextRun> properties;
};

/// a:fld of any type with its cached text.
struct Field {
    Field(std::string kind, String cached) : type(std::move(kind)), run(std::move(cached)) {}
    Field(std::string kind, TextRun cached) : type(std::move(kind)), run(std::move(cached)) {}

    std::string type;
    TextRun run;
};

/// Any XML as a child of a paragraph or a shape tree.
struct Raw {
    std::string xml;
};

/// A paragraph. Without a part it is empty, which is a paragraph all the same.
class Paragraph
{
public:
    Paragraph() = default;

    /// Runs, breaks, fields, raw XML; a text stands for a run without properties.
    template <class... Parts>
    explicit Paragraph(Parts&&... parts)
    {
        (Add(std::forward<Parts>(parts)), ...);
    }

    Paragraph& Level(int level);             ///< From 0.
    Paragraph& Align(std::string how);       ///< "ctr", "r", "l".
    Paragraph& RightToLeft();                ///< rtl="1"
    Paragraph& Properties(std::string raw);  ///< The whole a:pPr, raw.
    Paragraph& EndProperties(TextRun run);   ///< a:endParaRPr; the run's text is not used.

    Paragraph& Add(String text) { return Add(TextRun(std::move(text))); }
    Paragraph& Add(const char16_t* text) { return Add(TextRun(text)); }
    Paragraph& Add(std::variant<TextRun, LineBreak, Field, Raw> part);
    Paragraph& Add(const Paragraph& other) { return *this = other; }

    std::string Xml(PartWriter& part) const;

private:
    std::vector<std::variant<TextRun, LineBreak, Field, Raw>> content_;
    int level_ = 0;
    std::string align_;
    bool rightToLeft_ = false;
    std::string rawProperties_;
    std::optional<TextRun> end_;
};

/// One paragraph for each line of a text (line ends are "\n"), each one run.
std::vector<Paragraph> Lines(StringView text);

}  // namespace tessarine::test
