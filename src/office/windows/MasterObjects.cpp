#include "office/windows/MasterObjects.h"

#include "office/windows/ShapeObjects.h"

namespace tessarine::windows
{

namespace
{

class HeaderFooterObject final : public AutomatedObject<powerpoint::HeaderFooter>
{
public:
    static constexpr const char16_t* Kind = u"HeaderFooter";

    using AutomatedObject::AutomatedObject;

    String Text() override { return object_.Text(u"Text"); }
    void PutText(const String& value) override { object_.Put(u"Text", Variant(value)); }
};

}  // namespace

std::shared_ptr<powerpoint::HeaderFooter> HeadersFootersObject::Header()
{
    return Fetch<HeaderFooterObject>(object_, u"Header");
}

std::shared_ptr<powerpoint::HeaderFooter> HeadersFootersObject::Footer()
{
    return Fetch<HeaderFooterObject>(object_, u"Footer");
}

std::shared_ptr<powerpoint::Shapes> MasterObject::Shapes()
{
    return Fetch<ShapesObject>(object_, u"Shapes");
}

std::shared_ptr<powerpoint::HeadersFooters> MasterObject::HeadersFooters()
{
    return Fetch<HeadersFootersObject>(object_, u"HeadersFooters");
}

}  // namespace tessarine::windows
