#include "office/windows/SlideObjects.h"

#include "office/windows/MasterObjects.h"
#include "office/windows/ShapeObjects.h"

namespace tessarine::windows
{

namespace
{

class HyperlinkObject final : public AutomatedObject<powerpoint::Hyperlink>
{
public:
    static constexpr const char16_t* Kind = u"Hyperlink";
    static constexpr const char16_t* KindOfAll = u"Hyperlinks";

    using AutomatedObject::AutomatedObject;

    String Address() override { return object_.Text(u"Address"); }
    void PutAddress(const String& value) override { object_.Put(u"Address", Variant(value)); }
};

using HyperlinksObject = CollectionObject<powerpoint::Hyperlink, HyperlinkObject>;

class NotesPageObject final : public AutomatedObject<powerpoint::SlideRange>
{
public:
    static constexpr const char16_t* Kind = u"SlideRange";

    using AutomatedObject::AutomatedObject;

    std::shared_ptr<powerpoint::Shapes> Shapes() override { return Fetch<ShapesObject>(object_, u"Shapes"); }
};

}  // namespace

std::shared_ptr<powerpoint::Shapes> SlideObject::Shapes()
{
    return Fetch<ShapesObject>(object_, u"Shapes");
}

String SlideObject::Title()
{
    const AutomationObject shapes = object_.Object(u"Shapes", ShapeObject::KindOfAll);
    if (shapes.Integer(u"HasTitle") == powerpoint::msoFalse)
        return {};
    return shapes.Object(u"Title", ShapeObject::Kind)
        .Object(u"TextFrame", u"TextFrame")
        .Object(u"TextRange", u"TextRange")
        .Text(u"Text");
}

std::shared_ptr<powerpoint::HeadersFooters> SlideObject::HeadersFooters()
{
    return Fetch<HeadersFootersObject>(object_, u"HeadersFooters");
}

std::shared_ptr<powerpoint::Hyperlinks> SlideObject::Hyperlinks()
{
    return Fetch<HyperlinksObject>(object_, u"Hyperlinks");
}

std::shared_ptr<powerpoint::SlideRange> SlideObject::NotesPage()
{
    return Fetch<NotesPageObject>(object_, u"NotesPage");
}

std::shared_ptr<powerpoint::Design> SlideObject::Design()
{
    return Fetch<DesignObject>(object_, u"Design");
}

}  // namespace tessarine::windows
