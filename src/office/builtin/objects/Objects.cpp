#include "office/builtin/objects/Objects.h"

#include <algorithm>
#include <optional>
#include <vector>

#include "office/builtin/objects/TextObjects.h"
#include "platform/Failure.h"

namespace tessarine::builtin
{

namespace
{

using FileReference = std::shared_ptr<PresentationFile>;

Failure InvalidRequest(const char16_t* text)
{
    return {FailureNumber::InvalidRequest, text};
}

/// A collection whose elements are made when first walked and handed out again on later walks: a run walks the same
/// slides for every pair and every location.
template <class Element>
class ListObject : public powerpoint::Collection<Element>, public std::enable_shared_from_this<ListObject<Element>>
{
public:
    std::unique_ptr<powerpoint::Enumerator<Element>> NewEnum() override
    {
        if (!elements_)
            elements_ = MakeElements();
        return std::make_unique<Walk>(this->shared_from_this());
    }

protected:
    virtual std::vector<std::shared_ptr<Element>> MakeElements() = 0;

private:
    class Walk final : public powerpoint::Enumerator<Element>
    {
    public:
        explicit Walk(std::shared_ptr<ListObject> list) : list_(std::move(list)) {}

        std::shared_ptr<Element> Next() override
        {
            return next_ < list_->elements_->size() ? (*list_->elements_)[next_++] : nullptr;
        }

    private:
        std::shared_ptr<ListObject> list_;
        std::size_t next_ = 0;
    };

    std::optional<std::vector<std::shared_ptr<Element>>> elements_;
};

/// Shapes of a part; of none (a notes page or master that the file does not have) without any.
class ShapesObject final : public ListObject<powerpoint::Shape>
{
public:
    ShapesObject(FileReference file, ShapeTreePart* part) : file_(std::move(file)), part_(part) {}

    bool MayHoldText(const String& text) override { return part_ != nullptr && part_->MayHold(file_->Sought(text)); }

protected:
    std::vector<std::shared_ptr<powerpoint::Shape>> MakeElements() override
    {
        std::vector<std::shared_ptr<powerpoint::Shape>> shapes;
        const std::size_t count = part_ == nullptr ? 0 : part_->Shapes().size();
        for (std::size_t i = 0; i < count; ++i)
            shapes.push_back(std::make_shared<ShapeObject>(file_, *part_, i));
        return shapes;
    }

private:
    FileReference file_;
    ShapeTreePart* part_;
};

class HyperlinkObject final : public powerpoint::Hyperlink
{
public:
    HyperlinkObject(FileReference file, ShapeTreePart& part, std::size_t link)
        : file_(std::move(file)), part_(part), link_(link)
    {
    }

    String Address() override { return part_.HyperlinkAddress(link_); }
    void PutAddress(const String& value) override { part_.PutHyperlinkAddress(link_, value); }

private:
    FileReference file_;
    ShapeTreePart& part_;
    std::size_t link_;
};

/// Made anew for every walk, as an edit of the text may have taken links with it.
class HyperlinksObject final : public ListObject<powerpoint::Hyperlink>
{
public:
    HyperlinksObject(FileReference file, ShapeTreePart& part) : file_(std::move(file)), part_(part) {}

protected:
    std::vector<std::shared_ptr<powerpoint::Hyperlink>> MakeElements() override
    {
        std::vector<std::shared_ptr<powerpoint::Hyperlink>> links;
        for (const std::size_t link : part_.HyperlinkIndices())
            links.push_back(std::make_shared<HyperlinkObject>(file_, part_, link));
        return links;
    }

private:
    FileReference file_;
    ShapeTreePart& part_;
};

/// What a header or footer text is when the object has no placeholder for it.
enum class WithoutPlaceholder {
    Raises,  ///< The object shows none.
    Empty    ///< A master that the file does not have: its texts are empty and can't be given one.
};

class HeaderFooterObject final : public powerpoint::HeaderFooter
{
public:
    HeaderFooterObject(FileReference file, ShapeTreePart* part, Placeholder placeholder, WithoutPlaceholder without)
        : file_(std::move(file)), part_(part), placeholder_(placeholder), without_(without)
    {
    }

    String Text() override
    {
        const auto shape = FindShape();
        if (!shape)
            return WithoutText();
        const std::int32_t body = part_->Shapes()[*shape].body;
        return body < 0 ? String() : part_->Body(body).Text();
    }

    void PutText(const String& value) override
    {
        if (Text() == value)
            return;
        const auto shape = FindShape();
        if (!shape || part_->Shapes()[*shape].body < 0)
            throw NoSuchItem();
        part_->PutText(*shape, value);
    }

private:
    static Failure NoSuchItem() { return InvalidRequest(u"HeaderFooter (unknown member) : Invalid request."); }

    String WithoutText() const
    {
        if (without_ == WithoutPlaceholder::Raises)
            throw NoSuchItem();
        return {};
    }

    std::optional<std::size_t> FindShape() const
    {
        if (part_ == nullptr || placeholder_ == Placeholder::None)
            return std::nullopt;
        const auto& shapes = part_->Shapes();
        const auto found = std::ranges::find(shapes, placeholder_, &ShapeRecord::placeholder);
        if (found == shapes.end())
            return std::nullopt;
        return static_cast<std::size_t>(found - shapes.begin());
    }

    FileReference file_;
    ShapeTreePart* part_;
    Placeholder placeholder_;
    WithoutPlaceholder without_;
};

class HeadersFootersObject final : public powerpoint::HeadersFooters
{
public:
    /// `header` is Placeholder::None for objects that never have one (slides, slide masters and layouts).
    HeadersFootersObject(FileReference file, ShapeTreePart* part, Placeholder header, WithoutPlaceholder without)
        : file_(std::move(file)), part_(part), header_(header), without_(without)
    {
    }

    std::shared_ptr<powerpoint::HeaderFooter> Header() override
    {
        return std::make_shared<HeaderFooterObject>(file_, part_, header_, without_);
    }

    std::shared_ptr<powerpoint::HeaderFooter> Footer() override
    {
        return std::make_shared<HeaderFooterObject>(file_, part_, Placeholder::Footer, without_);
    }

private:
    FileReference file_;
    ShapeTreePart* part_;
    Placeholder header_;
    WithoutPlaceholder without_;
};

class MasterObject final : public powerpoint::Master
{
public:
    MasterObject(FileReference file, ShapeTreePart* part, Placeholder header)
        : file_(file), part_(part), header_(header), shapes_(std::make_shared<ShapesObject>(file, part))
    {
    }

    std::shared_ptr<powerpoint::Shapes> Shapes() override { return shapes_; }

    std::shared_ptr<powerpoint::HeadersFooters> HeadersFooters() override
    {
        const auto without = part_ == nullptr ? WithoutPlaceholder::Empty : WithoutPlaceholder::Raises;
        return std::make_shared<HeadersFootersObject>(file_, part_, header_, without);
    }

private:
    FileReference file_;
    ShapeTreePart* part_;
    Placeholder header_;
    std::shared_ptr<ShapesObject> shapes_;
};

class DesignObject final : public powerpoint::Design
{
public:
    DesignObject(FileReference file, std::size_t index) : file_(std::move(file)), index_(index) {}

    String Name() override
    {
        if (!name_)
            name_ = file_->DesignName(index_);
        return *name_;
    }

    std::shared_ptr<powerpoint::Master> SlideMaster() override
    {
        if (!slideMaster_)
            slideMaster_ = std::make_shared<MasterObject>(file_, file_->SlideMaster(index_), Placeholder::None);
        return slideMaster_;
    }

    powerpoint::TriState HasTitleMaster() override
    {
        return file_->TitleMaster(index_) == nullptr ? powerpoint::msoFalse : powerpoint::msoTrue;
    }

    std::shared_ptr<powerpoint::Master> TitleMaster() override
    {
        ShapeTreePart* part = file_->TitleMaster(index_);
        if (part == nullptr)
            throw InvalidRequest(u"Design (unknown member) : There is no title master.");
        return std::make_shared<MasterObject>(file_, part, Placeholder::None);
    }

private:
    FileReference file_;
    std::size_t index_;
    std::optional<String> name_;
    std::shared_ptr<MasterObject> slideMaster_;
};

class DesignsObject final : public ListObject<powerpoint::Design>
{
public:
    explicit DesignsObject(FileReference file) : file_(std::move(file))
    {
        for (std::size_t i = 0; i < file_->DesignCount(); ++i)
            designs_.push_back(std::make_shared<DesignObject>(file_, i));
    }

    /// The slides of a file without any master still have a design: one without a name and without shapes.
    std::shared_ptr<powerpoint::Design> At(std::size_t index) const
    {
        return index < designs_.size() ? designs_[index] : std::make_shared<DesignObject>(file_, index);
    }

protected:
    std::vector<std::shared_ptr<powerpoint::Design>> MakeElements() override { return designs_; }

private:
    FileReference file_;
    std::vector<std::shared_ptr<powerpoint::Design>> designs_;
};

class NotesPageObject final : public powerpoint::SlideRange
{
public:
    NotesPageObject(FileReference file, ShapeTreePart* part)
        : shapes_(std::make_shared<ShapesObject>(std::move(file), part))
    {
    }

    std::shared_ptr<powerpoint::Shapes> Shapes() override { return shapes_; }

private:
    std::shared_ptr<ShapesObject> shapes_;
};

class SlideObject final : public powerpoint::Slide
{
public:
    SlideObject(FileReference file, std::size_t index, std::shared_ptr<DesignsObject> designs)
        : file_(std::move(file)), index_(index), designs_(std::move(designs))
    {
    }

    std::shared_ptr<powerpoint::Shapes> Shapes() override
    {
        if (!shapes_)
            shapes_ = std::make_shared<ShapesObject>(file_, &file_->Slide(index_));
        return shapes_;
    }

    std::shared_ptr<powerpoint::HeadersFooters> HeadersFooters() override
    {
        return std::make_shared<HeadersFootersObject>(file_, &file_->Slide(index_), Placeholder::None,
                                                      WithoutPlaceholder::Raises);
    }

    std::shared_ptr<powerpoint::Hyperlinks> Hyperlinks() override
    {
        return std::make_shared<HyperlinksObject>(file_, file_->Slide(index_));
    }

    std::shared_ptr<powerpoint::SlideRange> NotesPage() override
    {
        if (!notesPage_)
            notesPage_ = std::make_shared<NotesPageObject>(file_, file_->NotesPage(index_));
        return notesPage_;
    }

    std::shared_ptr<powerpoint::Design> Design() override { return designs_->At(file_->DesignOfSlide(index_)); }

private:
    FileReference file_;
    std::size_t index_;
    std::shared_ptr<DesignsObject> designs_;
    std::shared_ptr<ShapesObject> shapes_;
    std::shared_ptr<NotesPageObject> notesPage_;
};

class SlidesObject final : public ListObject<powerpoint::Slide>
{
public:
    SlidesObject(FileReference file, std::shared_ptr<DesignsObject> designs)
        : file_(std::move(file)), designs_(std::move(designs))
    {
    }

    bool MayHoldText(const String& text) override { return file_->SlidesMayHold(text); }

protected:
    std::vector<std::shared_ptr<powerpoint::Slide>> MakeElements() override
    {
        std::vector<std::shared_ptr<powerpoint::Slide>> slides;
        for (std::size_t i = 0; i < file_->SlideCount(); ++i)
            slides.push_back(std::make_shared<SlideObject>(file_, i, designs_));
        return slides;
    }

private:
    FileReference file_;
    std::shared_ptr<DesignsObject> designs_;
};

Failure BadIndex()
{
    return {FailureNumber::BadArgument, u"DocumentProperties (unknown member) : The index is out of range."};
}

/// Both property collections: `Properties` is BuiltInProperties or CustomPropertyPart.
template <class Properties>
class PropertyObject final : public powerpoint::DocumentProperty
{
public:
    PropertyObject(FileReference file, Properties& properties, std::int32_t index)
        : file_(std::move(file)), properties_(properties), index_(index)
    {
    }

    String Name() override { return properties_.NameOf(index_); }
    powerpoint::Value Value() override { return properties_.Read(index_); }
    void PutValue(const powerpoint::Value& value) override { properties_.Put(index_, value); }

private:
    FileReference file_;
    Properties& properties_;
    std::int32_t index_;
};

template <class Properties>
class PropertiesObject final : public powerpoint::DocumentProperties
{
public:
    PropertiesObject(FileReference file, Properties& properties, std::int32_t count)
        : file_(std::move(file)), properties_(properties), count_(count)
    {
    }

    std::int32_t Count() override { return count_; }

    std::shared_ptr<powerpoint::DocumentProperty> Item(std::int32_t index) override
    {
        if (index < 1 || index > count_)
            throw BadIndex();
        return std::make_shared<PropertyObject<Properties>>(file_, properties_, index);
    }

private:
    FileReference file_;
    Properties& properties_;
    std::int32_t count_;
};

class PresentationObject final : public powerpoint::Presentation
{
public:
    PresentationObject(FileReference file, String path)
        : file_(std::move(file)),
          path_(std::move(path)),
          designs_(std::make_shared<DesignsObject>(file_)),
          slides_(std::make_shared<SlidesObject>(file_, designs_))
    {
    }

    std::shared_ptr<powerpoint::Slides> Slides() override { return File(), slides_; }
    std::shared_ptr<powerpoint::Designs> Designs() override { return File(), designs_; }

    std::shared_ptr<powerpoint::Master> NotesMaster() override
    {
        return std::make_shared<MasterObject>(file_, File().NotesMaster(), Placeholder::Header);
    }

    std::shared_ptr<powerpoint::Master> HandoutMaster() override
    {
        return std::make_shared<MasterObject>(file_, File().HandoutMaster(), Placeholder::Header);
    }

    std::shared_ptr<powerpoint::DocumentProperties> BuiltInDocumentProperties() override
    {
        return std::make_shared<PropertiesObject<BuiltInProperties>>(file_, File().BuiltIn(), BuiltInProperties::count);
    }

    std::shared_ptr<powerpoint::DocumentProperties> CustomDocumentProperties() override
    {
        CustomPropertyPart& properties = File().Custom();
        return std::make_shared<PropertiesObject<CustomPropertyPart>>(file_, properties, properties.Count());
    }

    bool NotesMayHoldText(const String& text) override { return File().NotesMayHold(text); }

    /// Nothing to do: a link's source is never opened, and its preview picture stays as it was.
    void UpdateLinks() override { File(); }

    void Save() override { File().Save(path_); }

    void Close() override
    {
        File();
        slides_.reset();
        designs_.reset();
        file_.reset();
    }

private:
    PresentationFile& File() const
    {
        if (!file_)
            throw InvalidRequest(u"Presentation (unknown member) : The presentation is closed.");
        return *file_;
    }

    FileReference file_;
    String path_;
    std::shared_ptr<DesignsObject> designs_;
    std::shared_ptr<SlidesObject> slides_;
};

}  // namespace

std::shared_ptr<powerpoint::Presentation> MakePresentation(std::shared_ptr<PresentationFile> file, String path)
{
    return std::make_shared<PresentationObject>(std::move(file), std::move(path));
}

}  // namespace tessarine::builtin
