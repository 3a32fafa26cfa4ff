#pragma once

#include "model/PowerPoint.h"
#include "office/windows/CollectionObject.h"

namespace tessarine::windows
{

/// Header and footer of a slide or a master.
class HeadersFootersObject final : public powerpoint::HeadersFooters
{
public:
    static constexpr const char16_t* Kind = u"HeadersFooters";

    explicit HeadersFootersObject(AutomationObject object) : object_(std::move(object)) {}

    std::shared_ptr<powerpoint::HeaderFooter> Header() override;
    std::shared_ptr<powerpoint::HeaderFooter> Footer() override;

private:
    const AutomationObject object_;
};

/// A slide, title, notes or handout master.
class MasterObject final : public powerpoint::Master
{
public:
    static constexpr const char16_t* Kind = u"Master";

    explicit MasterObject(AutomationObject object) : object_(std::move(object)) {}

    std::shared_ptr<powerpoint::Shapes> Shapes() override;
    std::shared_ptr<powerpoint::HeadersFooters> HeadersFooters() override;

private:
    const AutomationObject object_;
};

/// A design of a presentation.
class DesignObject final : public powerpoint::Design
{
public:
    static constexpr const char16_t* Kind = u"Design";
    static constexpr const char16_t* KindOfAll = u"Designs";

    explicit DesignObject(AutomationObject object) : object_(std::move(object)) {}

    String Name() override { return object_.Text(u"Name"); }
    std::shared_ptr<powerpoint::Master> SlideMaster() override { return Fetch<MasterObject>(object_, u"SlideMaster"); }
    powerpoint::TriState HasTitleMaster() override { return object_.Integer(u"HasTitleMaster"); }
    std::shared_ptr<powerpoint::Master> TitleMaster() override { return Fetch<MasterObject>(object_, u"TitleMaster"); }

private:
    const AutomationObject object_;
};

using DesignsObject = CollectionObject<powerpoint::Design, DesignObject>;

}  // namespace tessarine::windows
