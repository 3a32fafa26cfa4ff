#include "support/DeckText.h"

#include <algorithm>
#include <ostream>

namespace tessarine::test
{
namespace
{

constexpr int HundredthsOfAPoint = 100;

std::string Flag(std::string_view name, const std::optional<bool>& value)
{
    return value ? " " + std::string(name) + (*value ? "=\"1\"" : "=\"0\"") : std::string();
}

std::string SlidePart(int number)
{
    return "ppt/slides/slide" + std::to_string(number) + ".xml";
}

}  // namespace

Hyperlink& Hyperlink::Action(std::string action)
{
    action_ = std::move(action);
    return *this;
}

Hyperlink& Hyperlink::Tooltip(String tooltip)
{
    tooltip_ = std::move(tooltip);
    return *this;
}

Hyperlink& Hyperlink::InvalidUrl(String url)
{
    invalidUrl_ = std::move(url);
    return *this;
}

Hyperlink& Hyperlink::Shared()
{
    shared_ = true;
    return *this;
}

std::string Hyperlink::Xml(const std::string& name, PartWriter& part) const
{
    std::string id;
    if (slide_ != 0)
        id = part.Relate("slide", SlidePart(slide_));
    else if (!target_.empty())
        id = shared_ ? part.RelateShared("hyperlink", target_) : part.RelateTo("hyperlink", target_);

    std::string xml = "<" + name + " r:id=\"" + id + "\"";
    if (!invalidUrl_.empty())
        xml += " invalidUrl=\"" + XmlAttribute(invalidUrl_) + "\"";
    if (!action_.empty())
        xml += " action=\"" + XmlAttribute(FromUtf8(action_)) + "\"";
    if (!tooltip_.empty())
        xml += " tooltip=\"" + XmlAttribute(tooltip_) + "\"";
    return xml + "/>";
}

Hyperlink LinkTo(String target)
{
    Hyperlink link;
    link.target_ = std::move(target);
    return link;
}

Hyperlink LinkToSlide(int number)
{
    Hyperlink link;
    link.slide_ = number;
    link.action_ = "ppaction://hlinksldjump";
    return link;
}

Hyperlink LinkWithoutTarget()
{
    return {};
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
    size = points * HundredthsOfAPoint;
    return *this;
}

TextRun& TextRun::Color(std::string rgb)
{
    color = std::move(rgb);
    return *this;
}

TextRun& TextRun::Language(std::string tag)
{
    language = std::move(tag);
    return *this;
}

TextRun& TextRun::Misspelled()
{
    misspelled_ = true;
    return *this;
}

TextRun& TextRun::Dirty(bool value)
{
    dirty_ = value;
    return *this;
}

TextRun& TextRun::Click(Hyperlink link)
{
    click_ = std::move(link);
    return *this;
}

TextRun& TextRun::Hover(Hyperlink link)
{
    hover_ = std::move(link);
    return *this;
}

TextRun& TextRun::AsCData()
{
    cdata_ = true;
    return *this;
}

TextRun& TextRun::Attributes(std::string raw)
{
    rawAttributes_ = std::move(raw);
    return *this;
}

TextRun& TextRun::Children(std::string raw)
{
    rawChildren_ = std::move(raw);
    return *this;
}

bool TextRun::operator==(const TextRun& other) const
{
    return text == other.text && bold == other.bold && italic == other.italic && size == other.size &&
           language == other.language && color == other.color;
}

std::string TextRun::PropertiesXml(const std::string& element, PartWriter& part) const
{
    std::string attributes;
    if (!language.empty())
        attributes += " lang=\"" + language + "\"";
    if (size)
        attributes += " sz=\"" + std::to_string(*size) + "\"";
    attributes += Flag("b", bold) + Flag("i", italic) + Flag("dirty", dirty_);
    if (misspelled_)
        attributes += " err=\"1\"";
    if (!rawAttributes_.empty())
        attributes += " " + rawAttributes_;

    std::string children;
    if (!color.empty())
        children += "<a:solidFill><a:srgbClr val=\"" + color + "\"/></a:solidFill>";
    children += rawChildren_;
    if (click_)
        children += click_->Xml("a:hlinkClick", part);
    if (hover_)
        children += hover_->Xml("a:hlinkMouseOver", part);

    if (attributes.empty() && children.empty())
        return {};
    if (children.empty())
        return "<" + element + attributes + "/>";
    return "<" + element + attributes + ">" + children + "</" + element + ">";
}

std::string TextRun::ContentXml() const
{
    if (rawText_)
        return "<a:t>" + *rawText_ + "</a:t>";
    if (cdata_)
        return "<a:t><![CDATA[" + ToUtf8(text) + "]]></a:t>";
    return text.empty() ? "<a:t/>" : "<a:t>" + XmlText(text) + "</a:t>";
}

std::string TextRun::Xml(PartWriter& part) const
{
    return "<a:r>" + PropertiesXml("a:rPr", part) + ContentXml() + "</a:r>";
}

TextRun RawRun(std::string textXml)
{
    TextRun run{String()};
    run.rawText_ = std::move(textXml);
    return run;
}

void PrintTo(const TextRun& run, std::ostream* out)
{
    *out << "TextRun(u\"" << ToUtf8(run.text) << "\")";
    if (run.bold)
        *out << (*run.bold ? ".Bold()" : ".Bold(false)");
    if (run.italic)
        *out << (*run.italic ? ".Italic()" : ".Italic(false)");
    if (run.size)
        *out << ".Size(" << *run.size / HundredthsOfAPoint << ")";
    if (!run.language.empty())
        *out << ".Language(\"" << run.language << "\")";
    if (!run.color.empty())
        *out << ".Color(\"" << run.color << "\")";
}

Paragraph& Paragraph::Level(int level)
{
    level_ = level;
    return *this;
}

Paragraph& Paragraph::Align(std::string how)
{
    align_ = std::move(how);
    return *this;
}

Paragraph& Paragraph::RightToLeft()
{
    rightToLeft_ = true;
    return *this;
}

Paragraph& Paragraph::Properties(std::string raw)
{
    rawProperties_ = std::move(raw);
    return *this;
}

Paragraph& Paragraph::EndProperties(TextRun run)
{
    end_ = std::move(run);
    return *this;
}

Paragraph& Paragraph::Add(std::variant<TextRun, LineBreak, Field, Raw> part)
{
    content_.push_back(std::move(part));
    return *this;
}

std::string Paragraph::Xml(PartWriter& part) const
{
    struct Writer {
        PartWriter& part;

        std::string operator()(const TextRun& run) const { return run.Xml(part); }
        std::string operator()(const Raw& raw) const { return raw.xml; }
        std::string operator()(const LineBreak& lineBreak) const
        {
            const std::string properties =
                lineBreak.properties ? lineBreak.properties->PropertiesXml("a:rPr", part) : std::string();
            return properties.empty() ? "<a:br/>" : "<a:br>" + properties + "</a:br>";
        }
        std::string operator()(const Field& field) const
        {
            // Every field of a kind has the same id: ids need only be well formed.
            return "<a:fld id=\"{B6F15528-21DE-4FAA-801E-634DDDAF4B2B}\" type=\"" + field.type + "\">" +
                   field.run.PropertiesXml("a:rPr", part) + field.run.ContentXml() + "</a:fld>";
        }
    };

    std::string attributes;
    if (level_ != 0)
        attributes += " lvl=\"" + std::to_string(level_) + "\"";
    if (!align_.empty())
        attributes += " algn=\"" + align_ + "\"";
    if (rightToLeft_)
        attributes += " rtl=\"1\"";

    std::string xml = rawProperties_;
    if (!attributes.empty())
        xml += "<a:pPr" + attributes + "/>";
    for (const auto& piece : content_)
        xml += std::visit(Writer{part}, piece);
    if (end_) {
        const std::string properties = end_->PropertiesXml("a:endParaRPr", part);
        xml += properties.empty() ? "<a:endParaRPr/>" : properties;
    }
    return xml.empty() ? "<a:p/>" : "<a:p>" + xml + "</a:p>";
}

std::vector<Paragraph> Lines(StringView text)
{
    std::vector<Paragraph> paragraphs;
    for (std::size_t start = 0; start <= text.size();) {
        const std::size_t end = std::min(text.find(u'\n', start), text.size());
        Paragraph paragraph;
        if (end > start)
            paragraph.Add(String(text.substr(start, end - start)));
        paragraphs.push_back(std::move(paragraph));
        start = end + 1;
    }
    return paragraphs;
}

}  // namespace tessarine::test
