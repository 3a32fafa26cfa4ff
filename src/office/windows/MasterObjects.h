#pragma once

#include "model/PowerPoint.h"
#include "office/windows/CollectionObject.h"

namespace tessarine::windows
{

/// Header and footer of a slide or a master.
class HeadersFootersObject final : public AutomatedObject<powerpoint::HeadersFooters>
{
public:
    static constexpr const char16_t* Kind = u"HeadersFooters";

    using AutomatedObject::AutomatedObject;

    std::shared_ptr<powerpoint::HeaderFooter> Header() override;
    std::shared_ptr<powerpoint::HeaderFooter> Footer() override;
};

/// A slide, title, notes or handout master.
class MasterObject final : public AutomatedObject<powerpoint::Master>
{
public:
    static constexpr const char16_t* Kind = u"Master";

    using AutomatedObject::AutomatedObject;

    std::shared_ptr<powerpoint::Shapes> Shapes() override;
    std::shared_ptr<powerpoint::HeadersFooters> HeadersFooters() override;
};

/// A design of a presentation.
class DesignObject final : public AutomatedObject<powerpoint::Design>
{
public:
    static constexpr const char16_t* Kind = u"Design";
    static constexpr const char16_t* KindOfAll = u"Designs";

    using AutomatedObject::AutomatedObject;

    String Name() override { return object_.Text(u"Name"); }
    std::shared_ptr<powerpoint::Master> SlideMaster() override { return Fetch<MasterObject>(object_, u"SlideMaster"); }
    powerpoint::TriState HasTitleMaster() override { return object_.Integer(u"HasTitleMaster"); }
    std::shared_ptr<powerpoint::Master> TitleMaster() override { return Fetch<MasterObject>(object_, u"TitleMaster"); }
};

using DesignsObject = CollectionObject<powerpoint::Design, DesignObject>;

}  // namespace tessarine::windows
