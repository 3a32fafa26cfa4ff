#include "MemoryPresentation.h"

#include "platform/CaseFolding.h"

namespace tessarine::test
{

namespace
{

using builtin::HeaderFooterKind;

class TextLines
{
public:
    void Add(const std::string& place, const String& text) { lines_.push_back(place + ": " + ToUtf8(text)); }

    void Add(const std::string& place, const std::optional<String>& text)
    {
        if (text)
            Add(place, *text);
    }

    void Add(const std::string& place, const MemoryPage& page)
    {
        for (std::size_t i = 0; i < page.shapes.size(); ++i) {
            const std::string shape = place + " shape " + std::to_string(i + 1);
            Add(shape, page.shapes[i].text);
            if (!page.shapes[i].linkSource.empty())
                Add(shape + " source", page.shapes[i].linkSource);
        }
        for (std::size_t i = 0; i < page.links.size(); ++i)
            Add(place + " link " + std::to_string(i + 1), page.links[i]);
        Add(place + " header", page.header);
        Add(place + " footer", page.footer);
    }

    void Add(const std::string& place, const std::optional<MemoryPage>& page)
    {
        if (page)
            Add(place, *page);
    }

    std::vector<std::string> Take() { return std::move(lines_); }

private:
    std::vector<std::string> lines_;
};

}  // namespace

std::vector<std::string> TextsOf(const MemoryFile& file)
{
    TextLines lines;
    for (std::size_t i = 0; i < file.slides.size(); ++i) {
        const std::string number = std::to_string(i + 1);
        lines.Add("slide " + number, file.slides[i].page);
        lines.Add("notes " + number, file.slides[i].notes);
    }
    for (std::size_t i = 0; i < file.designs.size(); ++i) {
        const std::string number = std::to_string(i + 1);
        lines.Add("design " + number, file.designs[i].slideMaster);
        lines.Add("title master " + number, file.designs[i].titleMaster);
    }
    lines.Add("notes master", file.notesMaster);
    lines.Add("handout master", file.handoutMaster);
    for (const auto& [property, value] : file.builtIn)
        lines.Add("built-in " + std::to_string(static_cast<int>(property) + 1), powerpoint::TextOf(value));
    for (const MemoryProperty& property : file.custom)
        lines.Add("custom " + ToUtf8(property.name), powerpoint::TextOf(property.value));
    return lines.Take();
}

builtin::ShapeFacts MemoryPageReader::Shape(std::size_t shape)
{
    return {page_.shapes[shape].type, page_.shapes[shape].text.has_value()};
}

std::optional<std::size_t> MemoryPageReader::FindText(std::size_t shape, const builtin::TextPattern& pattern,
                                                      std::size_t from)
{
    const String text = page_.shapes[shape].text.value_or(u"");
    const String searched = pattern.MatchCase() ? text : FoldCaseLocally(text);
    return builtin::FindText(searched, text, pattern, from, {});
}

std::size_t MemoryPageReader::ReplaceText(std::size_t shape, std::size_t begin, std::size_t length, StringView with)
{
    page_.shapes[shape].text->replace(begin, length, with);
    ++*edits_;
    return with.size();
}

void MemoryPageReader::PutLinkSource(std::size_t shape, const String& source)
{
    page_.shapes[shape].linkSource = source;
    ++*edits_;
}

std::optional<String>& MemoryPageReader::Place(HeaderFooterKind kind)
{
    return kind == HeaderFooterKind::Header ? page_.header : page_.footer;
}

void MemoryPageReader::PutHeaderFooter(HeaderFooterKind kind, StringView text)
{
    Place(kind) = text;
    ++*edits_;
}

std::vector<std::size_t> MemoryPageReader::HyperlinkIndices()
{
    std::vector<std::size_t> indices;
    for (std::size_t link = 0; link < page_.links.size(); ++link)
        indices.push_back(link);
    return indices;
}

void MemoryPageReader::PutHyperlinkAddress(std::size_t link, const String& address)
{
    page_.links[link] = address;
    ++*edits_;
}

std::optional<powerpoint::Value> MemoryBuiltInProperties::Read(builtin::BuiltInProperty property) const
{
    const auto found = file_.builtIn.find(property);
    return found == file_.builtIn.end() ? std::nullopt : std::optional(found->second);
}

void MemoryBuiltInProperties::Put(builtin::BuiltInProperty property, const String& text)
{
    file_.builtIn[property] = text;
    ++*edits_;
}

void MemoryCustomProperties::Put(std::size_t index, const powerpoint::Value& value)
{
    file_.custom[index].value = value;
    ++*edits_;
}

MemoryPresentation::MemoryPresentation(std::shared_ptr<MemoryFile> file)
    : file_(std::move(file)), copy_(*file_), builtIn_(copy_, edits_), custom_(copy_, edits_)
{
    for (MemorySlide& slide : copy_.slides) {
        slides_.push_back(MakePage(slide.page));
        notes_.push_back(MakePage(slide.notes));
    }
    for (MemoryDesign& design : copy_.designs) {
        slideMasters_.push_back(MakePage(design.slideMaster));
        titleMasters_.push_back(MakePage(design.titleMaster));
    }
    notesMaster_ = MakePage(copy_.notesMaster);
    handoutMaster_ = MakePage(copy_.handoutMaster);
}

void MemoryPresentation::Save(StringView)
{
    *file_ = copy_;
}

}  // namespace tessarine::test
