#include "office/windows/SlideObjects.h"

#include "office/windows/MasterObjects.h"
#include "office/windows/ShapeObjects.h"

namespace tessarine::windows
{

namespace
{

class HyperlinkObject final : public powerpoint::Hyperlink
{
public:
    static constexpr const char16_t* Kind = u"Hyperlink";
    static constexpr const char16_t* KindOfAll = u"Hyperlinks";

    explicit HyperlinkObject(AutomationObject object) : object_(std::move(object)) {}

    String Address() override { return object_.Text(u"Address"); }
    void PutAddress(const String& value) override { object_.Put(u"Address", Variant(value)); }

private:
    const AutomationObject object_;
};

using HyperlinksObject = CollectionObject<powerpoint::Hyperlink, HyperlinkObject>;

class NotesPageObject final : public powerpoint::SlideRange
{
public:
    static constexpr const char16_t* Kind = u"SlideRange";

    explicit NotesPageObject(AutomationObject object) : object_(std::move(object)) {}

    std::shared_ptr<powerpoint::Shapes> Shapes() override { return Fetch<ShapesObject>(object_, u"Shapes"); }

private:
    const AutomationObject object_;
};

}  // namespace

std::shared_ptr<powerpoint::Shapes> SlideObject::Shapes()
{
    return Fetch<ShapesObject>(object_, u"Shapes");
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
