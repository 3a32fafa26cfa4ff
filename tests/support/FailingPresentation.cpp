#include <string>
#include <utility>

#include "support/FailingSurface.h"

namespace tessarine
{

namespace
{

/// An object of the surface with its way to the process.
template <class Surface>
class Wrapped : public Surface
{
public:
    Wrapped(FailingLine line, std::shared_ptr<Surface> behind) : line_(std::move(line)), behind_(std::move(behind)) {}

protected:
    const FailingLine line_;
    const std::shared_ptr<Surface> behind_;
};

template <class Wrapper, class Surface>
std::shared_ptr<Surface> Wrap(const FailingLine& line, const std::shared_ptr<Surface>& behind)
{
    return behind ? std::make_shared<Wrapper>(line, behind) : nullptr;
}

/// A collection whose walk is scripted as "<name>.Next".
template <class Surface, class Wrapper>
class WrappedCollection final : public Wrapped<powerpoint::Collection<Surface>>
{
public:
    WrappedCollection(const FailingLine& line, std::shared_ptr<powerpoint::Collection<Surface>> behind,
                      std::string name)
        : Wrapped<powerpoint::Collection<Surface>>(line, std::move(behind)), name_(std::move(name))
    {
    }

    std::unique_ptr<powerpoint::Enumerator<Surface>> NewEnum() override
    {
        return std::make_unique<Walk>(this->line_, this->behind_->NewEnum(), name_ + ".Next");
    }

    bool MayHoldText(const String& text) override { return this->behind_->MayHoldText(text); }

private:
    class Walk final : public powerpoint::Enumerator<Surface>
    {
    public:
        Walk(FailingLine line, std::unique_ptr<powerpoint::Enumerator<Surface>> behind, std::string member)
            : line_(std::move(line)), behind_(std::move(behind)), member_(std::move(member))
        {
        }

        std::shared_ptr<Surface> Next() override
        {
            line_.Read(member_);
            return Wrap<Wrapper>(line_, behind_->Next());
        }

    private:
        const FailingLine line_;
        const std::unique_ptr<powerpoint::Enumerator<Surface>> behind_;
        const std::string member_;
    };

    const std::string name_;
};

class RangeObject final : public Wrapped<powerpoint::TextRange>
{
public:
    using Wrapped::Wrapped;

    std::shared_ptr<powerpoint::TextRange> Find(const String& FindWhat, std::int32_t After,
                                                powerpoint::TriState MatchCase,
                                                powerpoint::TriState WholeWords) override
    {
        line_.Read("TextRange.Find");
        return Wrap<RangeObject>(line_, behind_->Find(FindWhat, After, MatchCase, WholeWords));
    }

    std::shared_ptr<powerpoint::TextRange> Replace(const String& FindWhat, const String& ReplaceWhat,
                                                   std::int32_t After, powerpoint::TriState MatchCase,
                                                   powerpoint::TriState WholeWords) override
    {
        line_.Act("TextRange.Replace", FindWhat);
        return Wrap<RangeObject>(line_, behind_->Replace(FindWhat, ReplaceWhat, After, MatchCase, WholeWords));
    }

    std::int32_t Start() override
    {
        line_.Read("TextRange.Start");
        return behind_->Start();
    }

    std::optional<String> TextAt(std::int32_t Start, std::int32_t Length) override
    {
        line_.Read("TextRange.TextAt");
        return behind_->TextAt(Start, Length);
    }

    bool IsKnownToHold(const String& text, powerpoint::TriState MatchCase, powerpoint::TriState WholeWords) override
    {
        return behind_->IsKnownToHold(text, MatchCase, WholeWords);
    }
};

class FrameObject final : public Wrapped<powerpoint::TextFrame>
{
public:
    using Wrapped::Wrapped;

    std::shared_ptr<powerpoint::TextRange> TextRange() override
    {
        return Wrap<RangeObject>(line_, behind_->TextRange());
    }
};

class ShapeObject final : public Wrapped<powerpoint::Shape>
{
public:
    using Wrapped::Wrapped;

    std::int32_t Type() override
    {
        line_.Read("Shape.Type");
        return behind_->Type();
    }

    powerpoint::TriState HasTextFrame() override
    {
        line_.Read("Shape.HasTextFrame");
        return behind_->HasTextFrame();
    }

    std::shared_ptr<powerpoint::TextFrame> TextFrame() override
    {
        line_.Read("Shape.TextFrame");
        return Wrap<FrameObject>(line_, behind_->TextFrame());
    }

    std::shared_ptr<powerpoint::LinkFormat> LinkFormat() override
    {
        line_.Read("Shape.LinkFormat");
        return behind_->LinkFormat();
    }

    String Name() override
    {
        line_.Read("Shape.Name");
        return behind_->Name();
    }
};

class SlideObject final : public Wrapped<powerpoint::Slide>
{
public:
    using Wrapped::Wrapped;

    String Title() override
    {
        line_.Read("Slide.Title");
        return behind_->Title();
    }

    std::shared_ptr<powerpoint::Shapes> Shapes() override
    {
        line_.Read("Slide.Shapes");
        return std::make_shared<WrappedCollection<powerpoint::Shape, ShapeObject>>(line_, behind_->Shapes(), "Shapes");
    }

    std::shared_ptr<powerpoint::HeadersFooters> HeadersFooters() override { return behind_->HeadersFooters(); }
    std::shared_ptr<powerpoint::Hyperlinks> Hyperlinks() override { return behind_->Hyperlinks(); }
    std::shared_ptr<powerpoint::SlideRange> NotesPage() override { return behind_->NotesPage(); }
    std::shared_ptr<powerpoint::Design> Design() override { return behind_->Design(); }
};

class PresentationObject final : public powerpoint::Presentation
{
public:
    PresentationObject(FailingLine line, std::shared_ptr<powerpoint::Presentation> behind, String path)
        : line_(std::move(line)), behind_(std::move(behind)), path_(std::move(path))
    {
    }

    std::shared_ptr<powerpoint::Slides> Slides() override
    {
        line_.Read("Presentation.Slides");
        return std::make_shared<WrappedCollection<powerpoint::Slide, SlideObject>>(line_, behind_->Slides(), "Slides");
    }

    std::shared_ptr<powerpoint::Designs> Designs() override
    {
        line_.Read("Presentation.Designs");
        return behind_->Designs();
    }

    std::shared_ptr<powerpoint::Master> NotesMaster() override
    {
        line_.Read("Presentation.NotesMaster");
        return behind_->NotesMaster();
    }

    std::shared_ptr<powerpoint::Master> HandoutMaster() override
    {
        line_.Read("Presentation.HandoutMaster");
        return behind_->HandoutMaster();
    }

    std::shared_ptr<powerpoint::DocumentProperties> BuiltInDocumentProperties() override
    {
        line_.Read("Presentation.BuiltInDocumentProperties");
        return behind_->BuiltInDocumentProperties();
    }

    std::shared_ptr<powerpoint::DocumentProperties> CustomDocumentProperties() override
    {
        line_.Read("Presentation.CustomDocumentProperties");
        return behind_->CustomDocumentProperties();
    }

    void UpdateLinks() override
    {
        line_.Act("Presentation.UpdateLinks", path_);
        behind_->UpdateLinks();
    }

    void RehearseSave() override
    {
        line_.Act("Presentation.RehearseSave", path_);
        behind_->RehearseSave();
    }

    void ExpectHits() override { behind_->ExpectHits(); }

    void Save() override
    {
        line_.Act("Presentation.Save", path_);
        behind_->Save();
    }

    void Close() override
    {
        line_.Act("Presentation.Close", path_);
        behind_->Close();
    }

    bool NotesMayHoldText(const String& text) override { return behind_->NotesMayHoldText(text); }

private:
    const FailingLine line_;
    const std::shared_ptr<powerpoint::Presentation> behind_;
    const String path_;
};

}  // namespace

std::shared_ptr<powerpoint::Presentation> FailingPresentation(const FailingLine& line,
                                                              std::shared_ptr<powerpoint::Presentation> behind,
                                                              const String& path)
{
    return std::make_shared<PresentationObject>(line, std::move(behind), path);
}

}  // namespace tessarine
