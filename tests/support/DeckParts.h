#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "support/DeckShapes.h"

/// Slides, notes pages, layouts and masters of a deck under construction. Each is made of the things it holds, in
/// z-order: `Layout("title", CenteredTitle(u"Click"), TextBox(u"Fabrikam"))`.
namespace tessarine::test
{

/// The speaker's notes of a slide. A text makes the usual page (slide image, body); shapes make exactly those.
class NotesPage
{
public:
    explicit NotesPage(StringView notes) : shapes_({SlideImage(), Body(String(notes))}) {}
    explicit NotesPage(const char16_t* notes) : NotesPage(StringView(notes)) {}
    template <class... Shapes>
    explicit NotesPage(Shape first, Shapes... more) : shapes_({std::move(first), std::move(more)...})
    {
    }

    NotesPage& Add(Shape shape);  ///< After the shapes so far, in front of them on the page.

    /// Writes the notes part; `slide` gets the relationship to it.
    void Write(PartWriter& slide, const std::string& notesMaster) const;

private:
    std::vector<Shape> shapes_;
};

/// Among the things a slide is made of: the slide is left out of a show.
struct HiddenSlide {
};

/// Which layout the slide is on, both counted from 1; without it the first of the first master.
struct OnLayout {
    int master = 1;
    int layout = 1;
};

/// The name of the slide (p:cSld name).
struct NamedSlide {
    String name;
};

/// A relationship of the slide beyond those that its shapes need.
struct Related {
    std::string id;
    std::string type;
    String target;
    bool external = false;
};

/// All that one slide is made of. Its parts may come in any order, except that shapes lie in the order given.
class SlideContent
{
public:
    template <class... Parts>
    explicit SlideContent(Parts&&... parts)
    {
        (Add(std::forward<Parts>(parts)), ...);
    }

    SlideContent& Add(Shape shape);
    SlideContent& Add(NotesPage notes);
    SlideContent& Add(HiddenSlide);
    SlideContent& Add(OnLayout layout);
    SlideContent& Add(NamedSlide name);
    SlideContent& Add(Related relationship);
    SlideContent& Add(const SlideContent& whole) { return *this = whole; }

    bool IsHidden() const { return hidden_; }
    bool HasNotes() const { return notes_.has_value(); }
    OnLayout LayoutOf() const { return layout_; }

    /// Writes the slide part of that number, its notes page and its relationships.
    void Write(PackageParts& package, int number, const std::string& layoutPart, const std::string& notesMaster) const;

private:
    std::vector<Shape> shapes_;
    std::optional<NotesPage> notes_;
    bool hidden_ = false;
    OnLayout layout_;
    String name_;
    std::vector<Related> relationships_;
};

/// A layout of a type ("title", "obj", "blank"; "" leaves the attribute out).
class Layout
{
public:
    template <class... Shapes>
    explicit Layout(std::string type, Shapes... shapes) : type_(std::move(type)), shapes_({std::move(shapes)...})
    {
    }
    Layout& Named(String name);

    /// Writes the layout into its part; `master` is the name of the part of its master.
    void Write(PartWriter& part, const std::string& master) const;

private:
    std::string type_;
    String name_;
    std::vector<Shape> shapes_;
};

/// A slide master with its theme and layouts; without layouts of its own it gets one of type "obj".
class SlideMaster
{
public:
    template <class... Parts>
    explicit SlideMaster(String themeName, Parts&&... parts) : themeName_(std::move(themeName))
    {
        (Add(std::forward<Parts>(parts)), ...);
    }

    SlideMaster& Add(Shape shape);
    SlideMaster& Add(Layout layout);
    SlideMaster& Preserve();                   ///< preserve="1": kept when no slide uses it.
    SlideMaster& Background(std::string rgb);  ///< "C00000"
    SlideMaster& TextStyles(std::string raw);  ///< p:txStyles, raw.
    SlideMaster& WithoutTheme();               ///< Damaged: every master needs a theme.

    int LayoutCount() const { return layouts_.empty() ? 1 : static_cast<int>(layouts_.size()); }

    /// Writes master, layouts and theme. `firstLayout` numbers the layout parts, `firstId` the layout ids.
    void Write(PackageParts& package, int number, int firstLayout, std::int64_t firstId) const;

private:
    String themeName_;
    std::vector<Shape> shapes_;
    std::vector<Layout> layouts_;
    bool preserve_ = false;
    bool theme_ = true;
    std::string background_;
    std::string textStyles_;
};

/// Which of the two masters without layouts.
enum class PageMaster { Notes, Handout };

/// Writes such a master and its theme. The part's name follows from the kind.
void WritePageMaster(PackageParts& package, PageMaster kind, const std::vector<Shape>& shapes);

/// A theme part with the given name, colours and fonts of Office.
std::string ThemeXml(StringView name);

/// The name of a layout's part by its number, which counts through all masters.
std::string LayoutPart(int number);

}  // namespace tessarine::test
