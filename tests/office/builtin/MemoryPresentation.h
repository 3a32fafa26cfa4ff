#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "model/PowerPoint.h"
#include "office/builtin/reader/PresentationReader.h"

/// A file format of its own, the smallest that there can be: presentations as plain values. It proves that a reader
/// needs no objects, and shows what one consists of.
namespace tessarine::test
{

struct MemoryShape {
    std::int32_t type = powerpoint::msoAutoShape;
    std::optional<String> text{};  ///< Nothing for a shape without a text frame.
    String linkSource{};           ///< Of a linked object.
};

struct MemoryPage {
    std::vector<MemoryShape> shapes{};
    std::vector<String> links{};
    std::optional<String> header{};
    std::optional<String> footer{};
};

struct MemorySlide {
    MemoryPage page{};
    std::optional<MemoryPage> notes{};
    std::optional<std::size_t> design{};
};

struct MemoryDesign {
    String name{};
    MemoryPage slideMaster{};
    std::optional<MemoryPage> titleMaster{};
};

struct MemoryProperty {
    String name{};
    powerpoint::Value value{};
};

/// What a file holds.
struct MemoryFile {
    std::vector<MemorySlide> slides{};
    std::vector<MemoryDesign> designs{};
    std::optional<MemoryPage> notesMaster{};
    std::optional<MemoryPage> handoutMaster{};
    std::map<builtin::BuiltInProperty, powerpoint::Value> builtIn{};
    std::vector<MemoryProperty> custom{};
};

/// Every text of a file in a line of its own that begins with its place: "slide 1 shape 2: a cat".
std::vector<std::string> TextsOf(const MemoryFile& file);

/// Lets every edit be counted.
using EditCount = std::shared_ptr<int>;

class MemoryPageReader final : public builtin::PageReader
{
public:
    MemoryPageReader(MemoryPage& page, EditCount edits) : page_(page), edits_(std::move(edits)) {}

    std::size_t ShapeCount() override { return page_.shapes.size(); }
    builtin::ShapeFacts Shape(std::size_t shape) override;
    std::optional<std::size_t> FindText(std::size_t shape, const builtin::TextPattern& pattern,
                                        std::size_t from) override;
    std::size_t ReplaceText(std::size_t shape, std::size_t begin, std::size_t length, StringView with) override;
    String TextAt(std::size_t shape, std::size_t begin, std::size_t length) override
    {
        const StringView text = *page_.shapes[shape].text;
        return String(text.substr(std::min(begin, text.size()), length));
    }
    String LinkSource(std::size_t shape) override { return page_.shapes[shape].linkSource; }
    void PutLinkSource(std::size_t shape, const String& source) override;
    std::optional<String> HeaderFooter(builtin::HeaderFooterKind kind) override { return Place(kind); }
    void PutHeaderFooter(builtin::HeaderFooterKind kind, StringView text) override;
    std::vector<std::size_t> HyperlinkIndices() override;
    String HyperlinkAddress(std::size_t link) override { return page_.links[link]; }
    void PutHyperlinkAddress(std::size_t link, const String& address) override;

private:
    std::optional<String>& Place(builtin::HeaderFooterKind kind);

    MemoryPage& page_;
    EditCount edits_;
};

class MemoryBuiltInProperties final : public builtin::BuiltInPropertiesReader
{
public:
    MemoryBuiltInProperties(MemoryFile& file, EditCount edits) : file_(file), edits_(std::move(edits)) {}

    std::optional<powerpoint::Value> Read(builtin::BuiltInProperty property) const override;
    void Put(builtin::BuiltInProperty property, const String& text) override;

private:
    MemoryFile& file_;
    EditCount edits_;
};

class MemoryCustomProperties final : public builtin::CustomPropertiesReader
{
public:
    MemoryCustomProperties(MemoryFile& file, EditCount edits) : file_(file), edits_(std::move(edits)) {}

    std::size_t Count() const override { return file_.custom.size(); }
    const String& NameOf(std::size_t index) const override { return file_.custom[index].name; }
    powerpoint::Value Read(std::size_t index) const override { return file_.custom[index].value; }
    void Put(std::size_t index, const powerpoint::Value& value) override;

private:
    MemoryFile& file_;
    EditCount edits_;
};

/// A copy of the file is read and edited; Save puts it into the file's place.
class MemoryPresentation final : public builtin::PresentationReader
{
public:
    explicit MemoryPresentation(std::shared_ptr<MemoryFile> file);

    int Edits() const { return *edits_; }

    std::size_t SlideCount() override { return copy_.slides.size(); }
    builtin::PageReader& Slide(std::size_t slide) override { return *slides_[slide]; }
    builtin::PageReader* NotesPage(std::size_t slide) override { return notes_[slide]; }
    std::optional<std::size_t> DesignOfSlide(std::size_t slide) override { return copy_.slides[slide].design; }
    std::size_t DesignCount() override { return copy_.designs.size(); }
    String DesignName(std::size_t design) override { return copy_.designs[design].name; }
    builtin::PageReader& SlideMaster(std::size_t design) override { return *slideMasters_[design]; }
    builtin::PageReader* TitleMaster(std::size_t design) override { return titleMasters_[design]; }
    builtin::PageReader* NotesMaster() override { return notesMaster_; }
    builtin::PageReader* HandoutMaster() override { return handoutMaster_; }
    builtin::BuiltInPropertiesReader& BuiltIn() override { return builtIn_; }
    builtin::CustomPropertiesReader& Custom() override { return custom_; }
    void Save(StringView path) override;
    void RehearseSave(StringView /*path*/) override {}

private:
    MemoryPageReader* MakePage(MemoryPage& page) { return &pages_.emplace_back(page, edits_); }
    MemoryPageReader* MakePage(std::optional<MemoryPage>& page) { return page ? MakePage(*page) : nullptr; }

    std::shared_ptr<MemoryFile> file_;
    MemoryFile copy_;
    EditCount edits_ = std::make_shared<int>(0);
    std::deque<MemoryPageReader> pages_;
    std::vector<MemoryPageReader*> slides_;
    std::vector<MemoryPageReader*> notes_;
    std::vector<MemoryPageReader*> slideMasters_;
    std::vector<MemoryPageReader*> titleMasters_;
    MemoryPageReader* notesMaster_;
    MemoryPageReader* handoutMaster_;
    MemoryBuiltInProperties builtIn_;
    MemoryCustomProperties custom_;
};

}  // namespace tessarine::test
