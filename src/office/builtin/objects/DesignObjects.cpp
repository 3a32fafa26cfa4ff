#include "office/builtin/objects/DesignObjects.h"

#include "office/builtin/objects/MasterObjects.h"
#include "platform/Failure.h"

namespace tessarine::builtin
{

namespace
{

class DesignObject final : public powerpoint::Design
{
public:
    /// No index: a design that the file doesn't have.
    DesignObject(OpenFileReference file, std::optional<std::size_t> index) : file_(std::move(file)), index_(index) {}

    String Name() override
    {
        // A walk over the slides asks each slide's design, and a name may cost the reading of a part.
        if (!name_)
            name_ = index_ ? file_->Reader().DesignName(*index_) : String();
        return *name_;
    }

    std::shared_ptr<powerpoint::Master> SlideMaster() override
    {
        // Kept, as all slides of the design ask for it.
        if (!slideMaster_) {
            PageReader* const page = index_ ? &file_->Reader().SlideMaster(*index_) : nullptr;
            slideMaster_ = MakeMaster(file_, page, PageTexts::FooterOnly);
        }
        return slideMaster_;
    }

    powerpoint::TriState HasTitleMaster() override
    {
        return TitlePage() == nullptr ? powerpoint::msoFalse : powerpoint::msoTrue;
    }

    std::shared_ptr<powerpoint::Master> TitleMaster() override
    {
        PageReader* const page = TitlePage();
        if (page == nullptr)
            throw Failure(FailureNumber::InvalidRequest, u"The design has no title master");
        return MakeMaster(file_, page, PageTexts::FooterOnly);
    }

private:
    PageReader* TitlePage() { return index_ ? file_->Reader().TitleMaster(*index_) : nullptr; }

    OpenFileReference file_;
    std::optional<std::size_t> index_;
    std::optional<String> name_;
    std::shared_ptr<powerpoint::Master> slideMaster_;
};

}  // namespace

DesignsObject::DesignsObject(OpenFileReference file) : file_(std::move(file))
{
    const std::size_t count = file_->Reader().DesignCount();
    for (std::size_t design = 0; design < count; ++design)
        designs_.push_back(std::make_shared<DesignObject>(file_, design));
}

std::shared_ptr<powerpoint::Design> DesignsObject::At(std::optional<std::size_t> index) const
{
    // A slide without a design has one all the same, as no object of the surface is null.
    return index ? designs_.at(*index) : std::make_shared<DesignObject>(file_, std::nullopt);
}

}  // namespace tessarine::builtin
