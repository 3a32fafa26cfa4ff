#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "support/BinaryShapes.h"

/// What a binary deck is put together from: slides and what they may carry, masters.
namespace tessarine::test::ppt
{

/// A HeadersFooters container. A text that is given is shown.
class HeadersFooters
{
public:
    HeadersFooters& Footer(String text);
    HeadersFooters& Header(String text);
    HeadersFooters& Date(String text);
    HeadersFooters& FooterWithoutText();  ///< fHasFooter, and no record of a text.
    HeadersFooters& FooterNotShown();     ///< The text's record stays, fHasFooter goes.

    std::string Record(std::uint32_t instance) const;

private:
    std::uint32_t flags_ = 0;
    std::optional<String> date_;
    std::optional<String> header_;
    std::optional<String> footer_;
};

/// The notes page of a slide: an image and a body for a text, or shapes.
struct NotesPage {
    explicit NotesPage(const char16_t* text) : NotesPage(Text(text)) {}
    explicit NotesPage(Text text);
    template <class... Shapes>
    explicit NotesPage(Shape first, Shapes... more) : shapes{std::move(first), std::move(more)...}
    {
    }

    NotesPage& Footers(HeadersFooters footers);

    std::vector<Shape> shapes;
    std::optional<HeadersFooters> headersFooters{};
};

/// From 1, in the order of the masters of the deck.
struct OnMaster {
    int number = 1;
};
struct OnTitleMaster {
    int number = 1;
};
struct HiddenSlide {
};
/// Not in the list of slides, so no slide of the presentation.
struct UnlistedSlide {
};
/// Further records at the end of the slide's container.
struct SlideRecords {
    std::string records;
};
/// The tag of an effect that plays characters of a shape, which stand there by their positions.
SlideRecords TextAnimation(int begin, int end, std::uint32_t shapeId = 0);

/// Further records behind the slide's texts in the list of slides.
struct OutlineRecords {
    std::string records;
};

/// A slide under construction.
class SlideContent
{
public:
    template <class... Parts>
    explicit SlideContent(Parts&&... parts)
    {
        (Add(std::forward<Parts>(parts)), ...);
    }

    void Add(Shape shape) { shapes.push_back(std::move(shape)); }
    void Add(NotesPage page) { notes = std::move(page); }
    void Add(HeadersFooters footers) { headersFooters = std::move(footers); }
    void Add(OnMaster which) { master = which.number; }
    void Add(OnTitleMaster which) { titleMaster = which.number; }
    void Add(HiddenSlide) { hidden = true; }
    void Add(UnlistedSlide) { listed = false; }
    void Add(SlideRecords further) { records += further.records; }
    void Add(OutlineRecords further) { outlineRecords += further.records; }
    void Add(const SlideContent& other) { *this = other; }

    String Title() const;

    std::vector<Shape> shapes;
    std::optional<NotesPage> notes;
    std::optional<HeadersFooters> headersFooters;
    int master = 1;
    int titleMaster = 0;
    bool hidden = false;
    bool listed = true;
    std::string records;
    std::string outlineRecords;
};

/// A design: a main master, and the title master that belongs to it where there is one.
class MainMaster
{
public:
    /// A title and a body with the usual texts.
    explicit MainMaster(String name = u"Default Design");
    template <class... Shapes>
    explicit MainMaster(String name, Shape first, Shapes... more)
        : name_(std::move(name)), shapes_{std::move(first), std::move(more)...}
    {
    }

    MainMaster& Nameless();                  ///< No record of a name.
    MainMaster& Theme(const String& name);   ///< The package of a theme of that name, as PowerPoint 2007 and later add.
    MainMaster& Original(std::uint32_t id);  ///< The id that copies for layouts name.
    MainMaster& CopyOf(std::uint32_t id);    ///< A copy for a layout, and so no design.
    template <class... Shapes>
    MainMaster& TitleMaster(Shapes... shapes)
    {
        titleMaster_ = {std::move(shapes)...};
        return *this;
    }
    MainMaster& Footers(HeadersFooters footers);
    MainMaster& Records(std::string records);  ///< Further records at the end of the container.

    const std::optional<std::vector<Shape>>& TitleShapes() const { return titleMaster_; }

private:
    friend class BinaryLayout;

    String name_;
    std::vector<Shape> shapes_;
    bool nameless_ = false;
    std::optional<std::vector<Shape>> titleMaster_;
    std::optional<HeadersFooters> headersFooters_;
    std::string records_;
};

}  // namespace tessarine::test::ppt
