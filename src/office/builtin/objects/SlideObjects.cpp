#include "office/builtin/objects/SlideObjects.h"

#include "office/builtin/objects/HeaderFooterObjects.h"
#include "office/builtin/objects/HyperlinkObjects.h"
#include "office/builtin/objects/ListObject.h"
#include "office/builtin/objects/ShapeObjects.h"

namespace tessarine::builtin
{

namespace
{

class NotesPageObject final : public powerpoint::SlideRange
{
public:
    NotesPageObject(OpenFileReference file, PageReader& page) : shapes_(MakeShapes(std::move(file), page)) {}

    std::shared_ptr<powerpoint::Shapes> Shapes() override { return shapes_; }

private:
    std::shared_ptr<powerpoint::Shapes> shapes_;
};

class SlideObject final : public powerpoint::Slide
{
public:
    SlideObject(OpenFileReference file, std::size_t slide, std::shared_ptr<DesignsObject> designs)
        : file_(std::move(file)), slide_(slide), designs_(std::move(designs))
    {
    }

    // Asked for late: the reader reads a slide when its page is first asked for.
    std::shared_ptr<powerpoint::Shapes> Shapes() override
    {
        if (!shapes_)
            shapes_ = MakeShapes(file_, Page(), slide_ + 1);
        return shapes_;
    }

    std::shared_ptr<powerpoint::HeadersFooters> HeadersFooters() override
    {
        return MakeHeadersFooters(file_, Page(), PageTexts::FooterOnly);
    }

    // Made anew each time, as edits of texts may remove links.
    std::shared_ptr<powerpoint::Hyperlinks> Hyperlinks() override { return MakeHyperlinks(file_, Page(), slide_ + 1); }

    std::shared_ptr<powerpoint::SlideRange> NotesPage() override
    {
        // Kept with its shapes: each pair asks for it again.
        if (!notesPage_)
            notesPage_ =
                std::make_shared<NotesPageObject>(file_, file_->PageOrEmpty(file_->Reader().NotesPage(slide_)));
        return notesPage_;
    }

    std::shared_ptr<powerpoint::Design> Design() override
    {
        return designs_->At(file_->Reader().DesignOfSlide(slide_));
    }

    String Title() override { return Page().Title(); }

private:
    PageReader& Page() { return file_->Reader().Slide(slide_); }

    OpenFileReference file_;
    std::size_t slide_;
    std::shared_ptr<DesignsObject> designs_;
    std::shared_ptr<powerpoint::Shapes> shapes_;
    std::shared_ptr<powerpoint::SlideRange> notesPage_;
};

class SlidesObject final : public ListObject<powerpoint::Slide>
{
public:
    SlidesObject(OpenFileReference file, std::shared_ptr<DesignsObject> designs)
        : file_(std::move(file)), designs_(std::move(designs))
    {
    }

    bool MayHoldText(const String& text) override { return file_->Reader().SlidesMayHold(file_->Sought(text)); }

protected:
    std::vector<std::shared_ptr<powerpoint::Slide>> MakeElements() override
    {
        std::vector<std::shared_ptr<powerpoint::Slide>> slides;
        const std::size_t count = file_->Reader().SlideCount();
        slides.reserve(count);
        for (std::size_t slide = 0; slide < count; ++slide)
            slides.push_back(std::make_shared<SlideObject>(file_, slide, designs_));
        return slides;
    }

private:
    OpenFileReference file_;
    std::shared_ptr<DesignsObject> designs_;
};

}  // namespace

std::shared_ptr<powerpoint::Slides> MakeSlides(OpenFileReference file, std::shared_ptr<DesignsObject> designs)
{
    return std::make_shared<SlidesObject>(std::move(file), std::move(designs));
}

}  // namespace tessarine::builtin
