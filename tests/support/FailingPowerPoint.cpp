#include "support/FailingPowerPoint.h"

#include <algorithm>
#include <set>
#include <utility>
#include <vector>

#include "platform/Failure.h"

namespace tessarine
{

namespace
{

/// One running PowerPoint.
struct Process {
    std::shared_ptr<powerpoint::Application> behind;
    bool hasGone = false;
};

}  // namespace

struct FailingPowerPoint::State {
    std::shared_ptr<powerpoint::Provider> behind;
    FakeScript script;
    std::set<std::pair<std::string, int>> deaths;  // the member and the number of its call
    std::vector<std::shared_ptr<Process>> processes;

    std::shared_ptr<Process> Start()
    {
        processes.push_back(std::make_shared<Process>(Process{behind->CreateApplication()}));
        return processes.back();
    }
};

namespace
{

/// The way from an object to its process. Each call passes here first.
class Line
{
public:
    Line(std::shared_ptr<FailingPowerPoint::State> state, std::shared_ptr<Process> process)
        : state_(std::move(state)), process_(std::move(process))
    {
    }

    void Read(const std::string& member) const
    {
        state_->script.Read(member);
        MeetDeath(member);
    }

    void Act(const std::string& member, const String& argument = {}) const
    {
        state_->script.Act(member, argument);
        MeetDeath(member);
    }

    powerpoint::Application& Behind() const { return *process_->behind; }
    void End() const { process_->hasGone = true; }

private:
    void MeetDeath(const std::string& member) const
    {
        if (process_->hasGone)
            throw Failure(FailureNumber::ServerGone, u"The remote server machine does not exist or is unavailable");
        if (!state_->deaths.contains({member, state_->script.Count(member)}))
            return;
        End();
        throw Failure(FailureNumber::RemoteCallFailed, u"The remote procedure call failed");
    }

    std::shared_ptr<FailingPowerPoint::State> state_;
    std::shared_ptr<Process> process_;
};

/// An object of the surface with its way to the process.
template <class Surface>
class Wrapped : public Surface
{
public:
    Wrapped(Line line, std::shared_ptr<Surface> behind) : line_(std::move(line)), behind_(std::move(behind)) {}

protected:
    const Line line_;
    const std::shared_ptr<Surface> behind_;
};

template <class Wrapper, class Surface>
std::shared_ptr<Surface> Wrap(const Line& line, const std::shared_ptr<Surface>& behind)
{
    return behind ? std::make_shared<Wrapper>(line, behind) : nullptr;
}

/// A collection whose walk is scripted as "<name>.Next".
template <class Surface, class Wrapper>
class WrappedCollection final : public Wrapped<powerpoint::Collection<Surface>>
{
public:
    WrappedCollection(const Line& line, std::shared_ptr<powerpoint::Collection<Surface>> behind, std::string name)
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
        Walk(Line line, std::unique_ptr<powerpoint::Enumerator<Surface>> behind, std::string member)
            : line_(std::move(line)), behind_(std::move(behind)), member_(std::move(member))
        {
        }

        std::shared_ptr<Surface> Next() override
        {
            line_.Read(member_);
            return Wrap<Wrapper>(line_, behind_->Next());
        }

    private:
        const Line line_;
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
};

class SlideObject final : public Wrapped<powerpoint::Slide>
{
public:
    using Wrapped::Wrapped;

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
    PresentationObject(Line line, std::shared_ptr<powerpoint::Presentation> behind, String path)
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
    const Line line_;
    const std::shared_ptr<powerpoint::Presentation> behind_;
    const String path_;
};

class PresentationsObject final : public powerpoint::Presentations
{
public:
    explicit PresentationsObject(Line line) : line_(std::move(line)) {}

    std::shared_ptr<powerpoint::Presentation> Open(const String& FileName, powerpoint::TriState ReadOnly,
                                                   powerpoint::TriState Untitled,
                                                   powerpoint::TriState WithWindow) override
    {
        line_.Act("Presentations.Open", FileName);
        auto presentation = line_.Behind().Presentations()->Open(FileName, ReadOnly, Untitled, WithWindow);
        return std::make_shared<PresentationObject>(line_, std::move(presentation), FileName);
    }

private:
    const Line line_;
};

class ApplicationObject final : public powerpoint::Application
{
public:
    explicit ApplicationObject(Line line) : line_(std::move(line)) {}

    std::shared_ptr<powerpoint::Presentations> Presentations() override
    {
        line_.Read("Application.Presentations");
        return std::make_shared<PresentationsObject>(line_);
    }

    void PutDisplayAlerts(std::int32_t value) override
    {
        line_.Act("Application.DisplayAlerts =", FromUtf8(std::to_string(value)));
        line_.Behind().PutDisplayAlerts(value);
    }

    void PutAutomationSecurity(std::int32_t value) override
    {
        line_.Act("Application.AutomationSecurity =", FromUtf8(std::to_string(value)));
        line_.Behind().PutAutomationSecurity(value);
    }

    void Quit() override
    {
        line_.Act("Application.Quit");
        line_.Behind().Quit();
        line_.End();
    }

private:
    const Line line_;
};

class ProviderObject final : public powerpoint::Provider
{
public:
    explicit ProviderObject(std::shared_ptr<FailingPowerPoint::State> state) : state_(std::move(state)) {}

    std::shared_ptr<powerpoint::Application> CreateApplication() override
    {
        state_->script.Act("CreateApplication");
        return std::make_shared<ApplicationObject>(Line(state_, state_->Start()));
    }

    std::shared_ptr<powerpoint::Application> AttachToRunning() override
    {
        state_->script.Act("AttachToRunning");
        const auto running = std::ranges::find_if(state_->processes, [](const auto& one) { return !one->hasGone; });
        return running == state_->processes.end() ? nullptr
                                                  : std::make_shared<ApplicationObject>(Line(state_, *running));
    }

private:
    std::shared_ptr<FailingPowerPoint::State> state_;
};

}  // namespace

FailingPowerPoint::FailingPowerPoint(std::shared_ptr<powerpoint::Provider> behind) : state_(std::make_shared<State>())
{
    state_->behind = std::move(behind);
    state_->script = script;
}

void FailingPowerPoint::DieAt(const std::string& member, int nth)
{
    state_->deaths.emplace(member, script.Count(member) + nth);
}

void FailingPowerPoint::StartByUser()
{
    state_->Start();
}

int FailingPowerPoint::Running() const
{
    return static_cast<int>(std::ranges::count_if(state_->processes, [](const auto& one) { return !one->hasGone; }));
}

std::shared_ptr<powerpoint::Provider> FailingPowerPoint::Provider() const
{
    return std::make_shared<ProviderObject>(state_);
}

}  // namespace tessarine
