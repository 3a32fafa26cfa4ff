#include "support/FailingPowerPoint.h"

#include <algorithm>
#include <utility>

#include "platform/Failure.h"
#include "support/FailingSurface.h"

namespace tessarine
{

std::shared_ptr<FailingPowerPoint::State::Process> FailingPowerPoint::State::Start()
{
    processes.push_back(std::make_shared<Process>(Process{behind->CreateApplication()}));
    return processes.back();
}

FailingLine::FailingLine(std::shared_ptr<FailingPowerPoint::State> state,
                         std::shared_ptr<FailingPowerPoint::State::Process> process)
    : state_(std::move(state)), process_(std::move(process))
{
}

void FailingLine::Read(const std::string& member) const
{
    state_->script.Read(member);
    MeetDeath(member);
}

void FailingLine::Act(const std::string& member, const String& argument) const
{
    state_->script.Act(member, argument);
    MeetDeath(member);
}

void FailingLine::MeetDeath(const std::string& member) const
{
    if (process_->hasGone)
        throw Failure(FailureNumber::ServerGone, u"The remote server machine does not exist or is unavailable");
    if (!state_->deaths.contains({member, state_->script.Count(member)}))
        return;
    End();
    throw Failure(FailureNumber::RemoteCallFailed, u"The remote procedure call failed");
}

namespace
{

class PresentationsObject final : public powerpoint::Presentations
{
public:
    explicit PresentationsObject(FailingLine line) : line_(std::move(line)) {}

    std::shared_ptr<powerpoint::Presentation> Open(const String& FileName, powerpoint::TriState ReadOnly,
                                                   powerpoint::TriState Untitled,
                                                   powerpoint::TriState WithWindow) override
    {
        line_.Act("Presentations.Open", FileName);
        auto presentation = line_.Behind().Presentations()->Open(FileName, ReadOnly, Untitled, WithWindow);
        return FailingPresentation(line_, std::move(presentation), FileName);
    }

private:
    const FailingLine line_;
};

class ApplicationObject final : public powerpoint::Application
{
public:
    explicit ApplicationObject(FailingLine line) : line_(std::move(line)) {}

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
    const FailingLine line_;
};

class ProviderObject final : public powerpoint::Provider
{
public:
    explicit ProviderObject(std::shared_ptr<FailingPowerPoint::State> state) : state_(std::move(state)) {}

    std::shared_ptr<powerpoint::Application> CreateApplication() override
    {
        state_->script.Act("CreateApplication");
        return std::make_shared<ApplicationObject>(FailingLine(state_, state_->Start()));
    }

    std::shared_ptr<powerpoint::Application> AttachToRunning() override
    {
        state_->script.Act("AttachToRunning");
        const auto running = std::ranges::find_if(state_->processes, [](const auto& one) { return !one->hasGone; });
        return running == state_->processes.end() ? nullptr
                                                  : std::make_shared<ApplicationObject>(FailingLine(state_, *running));
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
