#pragma once

#include "model/PowerPoint.h"
#include "office/windows/CollectionObject.h"

namespace tessarine::windows
{

/// One slide.
class SlideObject final : public AutomatedObject<powerpoint::Slide>
{
public:
    static constexpr const char16_t* Kind = u"Slide";
    static constexpr const char16_t* KindOfAll = u"Slides";

    using AutomatedObject::AutomatedObject;

    std::shared_ptr<powerpoint::Shapes> Shapes() override;
    std::shared_ptr<powerpoint::HeadersFooters> HeadersFooters() override;
    std::shared_ptr<powerpoint::Hyperlinks> Hyperlinks() override;
    std::shared_ptr<powerpoint::SlideRange> NotesPage() override;
    std::shared_ptr<powerpoint::Design> Design() override;
    String Title() override;
};

using SlidesObject = CollectionObject<powerpoint::Slide, SlideObject>;

}  // namespace tessarine::windows
