#include "support/FakePowerPoint.h"

#include <deque>
#include <map>
#include <string>
#include <utility>

#include "support/SurfaceRoute.h"

namespace tessarine
{

struct FakePowerPoint::State {
    struct PlannedOpen {
        Failure failure;
        int times;  // how often it still fails; -1 for always
    };

    FakeScript script;
    std::map<String, FakeDeck> files;
    std::map<String, std::deque<PlannedOpen>> openFailures;
    int running = 0;

    void FailIfPlanned(const String& path)
    {
        const auto planned = openFailures.find(path);
        if (planned == openFailures.end() || planned->second.empty())
            return;
        PlannedOpen& next = planned->second.front();
        const Failure failure = next.failure;
        if (next.times > 0 && --next.times == 0)
            planned->second.pop_front();
        throw failure;
    }
};

class FakePresentations : public powerpoint::Presentations
{
public:
    explicit FakePresentations(std::shared_ptr<FakePowerPoint::State> state) : state_(std::move(state)) {}

    std::shared_ptr<powerpoint::Presentation> Open(const String& FileName, powerpoint::TriState ReadOnly,
                                                   powerpoint::TriState Untitled,
                                                   powerpoint::TriState WithWindow) override
    {
        state_->script.Act("Presentations.Open", FileName);
        if (ReadOnly != powerpoint::msoFalse || Untitled != powerpoint::msoFalse || WithWindow != powerpoint::msoFalse)
            throw Failure(FailureNumber::BadArgument, u"The run opens for writing, titled and without a window");
        state_->FailIfPlanned(FileName);
        const auto file = state_->files.find(FileName);
        if (file == state_->files.end())
            throw Failure(FailureNumber::SystemFileNotFound, u"File not found");
        return file->second.Open(state_->script, FileName);
    }

private:
    std::shared_ptr<FakePowerPoint::State> state_;
};

class FakeApplication : public powerpoint::Application
{
public:
    explicit FakeApplication(std::shared_ptr<FakePowerPoint::State> state) : state_(std::move(state)) {}

    std::shared_ptr<powerpoint::Presentations> Presentations() override
    {
        state_->script.Read("Application.Presentations");
        return std::make_shared<FakePresentations>(state_);
    }

    void PutDisplayAlerts(std::int32_t value) override
    {
        state_->script.Act("Application.DisplayAlerts =", FromUtf8(std::to_string(value)));
    }

    void PutAutomationSecurity(std::int32_t value) override
    {
        state_->script.Act("Application.AutomationSecurity =", FromUtf8(std::to_string(value)));
    }

    void Quit() override
    {
        state_->script.Act("Application.Quit");
        if (state_->running > 0)
            --state_->running;
    }

private:
    std::shared_ptr<FakePowerPoint::State> state_;
};

class FakeProvider : public powerpoint::Provider
{
public:
    explicit FakeProvider(std::shared_ptr<FakePowerPoint::State> state) : state_(std::move(state)) {}

    std::shared_ptr<powerpoint::Application> CreateApplication() override
    {
        state_->script.Act("CreateApplication");
        ++state_->running;
        return std::make_shared<FakeApplication>(state_);
    }

    std::shared_ptr<powerpoint::Application> AttachToRunning() override
    {
        state_->script.Act("AttachToRunning");
        return state_->running > 0 ? std::make_shared<FakeApplication>(state_) : nullptr;
    }

private:
    std::shared_ptr<FakePowerPoint::State> state_;
};

FakePowerPoint::FakePowerPoint() : state_(std::make_shared<State>())
{
    state_->script = script;
}

void FakePowerPoint::Put(const String& path, const FakeDeck& deck)
{
    state_->files.insert_or_assign(path, deck);
}

void FakePowerPoint::FailOpen(const String& path, std::int32_t number, const String& text, int times)
{
    state_->openFailures[path].push_back({Failure(number, text), times});
}

void FakePowerPoint::FailOpenAlways(const String& path, std::int32_t number, const String& text)
{
    constexpr int always = -1;
    FailOpen(path, number, text, always);
}

void FakePowerPoint::StartByUser()
{
    ++state_->running;
}

int FakePowerPoint::Running() const
{
    return state_->running;
}

std::shared_ptr<powerpoint::Provider> FakePowerPoint::Provider() const
{
    return Routed(std::make_shared<FakeProvider>(state_));
}

FakeShape Placeholder(String text)
{
    return ShapeOfType(powerpoint::msoPlaceholder, std::move(text));
}

FakeShape AutoShape(String text)
{
    return ShapeOfType(powerpoint::msoAutoShape, std::move(text));
}

FakeShape TextBox(String text)
{
    return ShapeOfType(powerpoint::msoTextBox, std::move(text));
}

FakeShape ShapeOfType(std::int32_t type, String text)
{
    return {.type = type, .text = std::move(text)};
}

FakeShape LinkedObject(String sourceFullName)
{
    return {.type = powerpoint::msoLinkedOLEObject,
            .hasTextFrame = powerpoint::msoFalse,
            .sourceFullName = std::move(sourceFullName)};
}

}  // namespace tessarine
