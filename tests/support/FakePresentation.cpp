#include <utility>

#include "support/FakeSurface.h"

namespace tessarine
{

namespace
{

class FakeHyperlink : public powerpoint::Hyperlink
{
public:
    FakeHyperlink(FakeScript script, std::shared_ptr<String> address)
        : script_(std::move(script)), address_(std::move(address))
    {
    }

    String Address() override
    {
        script_.Read("Hyperlink.Address");
        return *address_;
    }

    void PutAddress(const String& value) override
    {
        script_.Act("Hyperlink.Address =", value);
        *address_ = value;
    }

private:
    FakeScript script_;
    std::shared_ptr<String> address_;
};

class FakeDesignObject : public powerpoint::Design
{
public:
    FakeDesignObject(FakeScript script, std::shared_ptr<FakeDesign> design)
        : script_(std::move(script)), design_(std::move(design))
    {
    }

    String Name() override
    {
        script_.Read("Design.Name");
        return design_->name;
    }

    std::shared_ptr<powerpoint::Master> SlideMaster() override
    {
        script_.Read("Design.SlideMaster");
        return FakeMasterOf(script_, {design_, &design_->slideMaster});
    }

    powerpoint::TriState HasTitleMaster() override
    {
        script_.Read("Design.HasTitleMaster");
        return design_->hasTitleMaster.value_or(design_->titleMaster ? powerpoint::msoTrue : powerpoint::msoFalse);
    }

    std::shared_ptr<powerpoint::Master> TitleMaster() override
    {
        script_.Read("Design.TitleMaster");
        if (!design_->titleMaster)
            throw Failure(FailureNumber::InvalidRequest, u"Design.TitleMaster : Invalid request.");
        return FakeMasterOf(script_, {design_, &*design_->titleMaster});
    }

private:
    FakeScript script_;
    std::shared_ptr<FakeDesign> design_;
};

class FakeNotesPage : public powerpoint::SlideRange
{
public:
    FakeNotesPage(FakeScript script, std::shared_ptr<FakeSlide> slide)
        : script_(std::move(script)), slide_(std::move(slide))
    {
    }

    std::shared_ptr<powerpoint::Shapes> Shapes() override
    {
        script_.Read("SlideRange.Shapes");
        return FakeShapesOf(script_, {slide_, &slide_->notes});
    }

private:
    FakeScript script_;
    std::shared_ptr<FakeSlide> slide_;
};

class FakeSlideObject : public powerpoint::Slide
{
public:
    FakeSlideObject(FakeScript script, std::shared_ptr<FakeContent> content, std::shared_ptr<FakeSlide> slide)
        : script_(std::move(script)), content_(std::move(content)), slide_(std::move(slide))
    {
    }

    std::shared_ptr<powerpoint::Shapes> Shapes() override
    {
        script_.Read("Slide.Shapes");
        return FakeShapesOf(script_, {slide_, &slide_->shapes});
    }

    std::shared_ptr<powerpoint::HeadersFooters> HeadersFooters() override
    {
        script_.Read("Slide.HeadersFooters");
        return FakeHeadersFootersOf(script_, std::make_shared<FakeHeaderFooter>(), {slide_, &slide_->footer});
    }

    std::shared_ptr<powerpoint::Hyperlinks> Hyperlinks() override
    {
        script_.Read("Slide.Hyperlinks");
        return CollectionOf<powerpoint::Hyperlink, String>(
            "Hyperlinks", script_, slide_, slide_->hyperlinks,
            [script = script_](auto address) { return std::make_shared<FakeHyperlink>(script, std::move(address)); });
    }

    std::shared_ptr<powerpoint::SlideRange> NotesPage() override
    {
        script_.Read("Slide.NotesPage");
        return std::make_shared<FakeNotesPage>(script_, slide_);
    }

    std::shared_ptr<powerpoint::Design> Design() override
    {
        script_.Read("Slide.Design");
        return std::make_shared<FakeDesignObject>(
            script_, std::shared_ptr<FakeDesign>(content_, &content_->designs.at(slide_->design)));
    }

    String Title() override
    {
        script_.Read("Slide.Title");
        return slide_->title;
    }

private:
    FakeScript script_;
    std::shared_ptr<FakeContent> content_;
    std::shared_ptr<FakeSlide> slide_;
};

class FakePropertyObject : public powerpoint::DocumentProperty
{
public:
    FakePropertyObject(FakeScript script, std::shared_ptr<FakeProperty> property)
        : script_(std::move(script)), property_(std::move(property))
    {
    }

    String Name() override
    {
        script_.Read("DocumentProperty.Name");
        return property_->name;
    }

    powerpoint::Value Value() override
    {
        script_.Read("DocumentProperty.Value");
        if (property_->readFailure != 0)
            throw Failure(property_->readFailure, u"The value can't be read");
        return property_->value;
    }

    void PutValue(const powerpoint::Value& value) override
    {
        script_.Act("DocumentProperty.Value =", property_->name);
        if (property_->writeFailure != 0)
            throw Failure(property_->writeFailure, u"The value can't be written");
        property_->value = value;
    }

private:
    FakeScript script_;
    std::shared_ptr<FakeProperty> property_;
};

class FakeProperties : public powerpoint::DocumentProperties
{
public:
    FakeProperties(std::string name, FakeScript script, std::shared_ptr<std::vector<FakeProperty>> properties)
        : name_(std::move(name)), script_(std::move(script)), properties_(std::move(properties))
    {
    }

    std::int32_t Count() override
    {
        script_.Read(name_ + ".Count");
        return static_cast<std::int32_t>(properties_->size());
    }

    std::shared_ptr<powerpoint::DocumentProperty> Item(std::int32_t index) override
    {
        script_.Read(name_ + ".Item");
        if (index < 1 || index > static_cast<std::int32_t>(properties_->size()))
            throw Failure(FailureNumber::SubscriptOutOfRange, u"Subscript out of range");
        return std::make_shared<FakePropertyObject>(
            script_, std::shared_ptr<FakeProperty>(properties_, &(*properties_)[static_cast<std::size_t>(index) - 1]));
    }

private:
    std::string name_;
    FakeScript script_;
    std::shared_ptr<std::vector<FakeProperty>> properties_;
};

class FakePresentation : public powerpoint::Presentation
{
public:
    FakePresentation(FakeScript script, std::shared_ptr<FakeContent> content, String path)
        : script_(std::move(script)), content_(std::move(content)), path_(std::move(path))
    {
    }

    std::shared_ptr<powerpoint::Slides> Slides() override
    {
        script_.Read("Presentation.Slides");
        return CollectionOf<powerpoint::Slide, FakeSlide>(
            "Slides", script_, content_, content_->slides, [script = script_, content = content_](auto slide) {
                return std::make_shared<FakeSlideObject>(script, content, std::move(slide));
            });
    }

    bool NotesMayHoldText(const String&) override { return !script_.DeniesText(); }

    std::shared_ptr<powerpoint::Designs> Designs() override
    {
        script_.Read("Presentation.Designs");
        return CollectionOf<powerpoint::Design, FakeDesign>(
            "Designs", script_, content_, content_->designs,
            [script = script_](auto design) { return std::make_shared<FakeDesignObject>(script, std::move(design)); });
    }

    std::shared_ptr<powerpoint::Master> NotesMaster() override
    {
        script_.Read("Presentation.NotesMaster");
        return FakeMasterOf(script_, {content_, &content_->notesMaster});
    }

    std::shared_ptr<powerpoint::Master> HandoutMaster() override
    {
        script_.Read("Presentation.HandoutMaster");
        return FakeMasterOf(script_, {content_, &content_->handoutMaster});
    }

    std::shared_ptr<powerpoint::DocumentProperties> BuiltInDocumentProperties() override
    {
        script_.Read("Presentation.BuiltInDocumentProperties");
        return std::make_shared<FakeProperties>(
            "BuiltInDocumentProperties", script_,
            std::shared_ptr<std::vector<FakeProperty>>(content_, &content_->builtInProperties));
    }

    std::shared_ptr<powerpoint::DocumentProperties> CustomDocumentProperties() override
    {
        script_.Read("Presentation.CustomDocumentProperties");
        return std::make_shared<FakeProperties>(
            "CustomDocumentProperties", script_,
            std::shared_ptr<std::vector<FakeProperty>>(content_, &content_->customProperties));
    }

    void UpdateLinks() override { script_.Act("Presentation.UpdateLinks", path_); }
    void Save() override { script_.Act("Presentation.Save", path_); }
    void RehearseSave() override { script_.Act("Presentation.RehearseSave", path_); }
    void Close() override { script_.Act("Presentation.Close", path_); }

private:
    FakeScript script_;
    std::shared_ptr<FakeContent> content_;
    String path_;
};

}  // namespace

FakeDeck::FakeDeck(FakeContent initial) : content(std::make_shared<FakeContent>(std::move(initial))) {}

std::shared_ptr<powerpoint::Presentation> FakeDeck::Open(const FakeScript& script, const String& path) const
{
    return std::make_shared<FakePresentation>(script, content, path);
}

}  // namespace tessarine
