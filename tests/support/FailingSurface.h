#pragma once

#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "model/PowerPoint.h"
#include "support/FailingPowerPoint.h"

namespace tessarine
{

/// What one FailingPowerPoint and all objects made from it share.
struct FailingPowerPoint::State {
    /// One running PowerPoint.
    struct Process {
        std::shared_ptr<powerpoint::Application> behind;
        bool hasGone = false;
    };

    std::shared_ptr<powerpoint::Provider> behind;  // the one that works
    FakeScript script;
    std::set<std::pair<std::string, int>> deaths;  // the member and the number of its call
    std::vector<std::shared_ptr<Process>> processes;

    /// Starts a working PowerPoint and keeps it among the processes.
    std::shared_ptr<Process> Start();
};

/// The way from an object to its process. Each call passes here first: it is counted, and fails when the script says so
/// or the process has gone.
class FailingLine
{
public:
    FailingLine(std::shared_ptr<FailingPowerPoint::State> state,
                std::shared_ptr<FailingPowerPoint::State::Process> process);

    /// Counts a read of a member, or a method or write, which is written down with its argument too (FakeScript).
    /// Raises the scripted failure, or RemoteCallFailed and ServerGone when the process ends now or has gone.
    void Read(const std::string& member) const;
    void Act(const std::string& member, const String& argument = {}) const;

    powerpoint::Application& Behind() const { return *process_->behind; }

    /// The process has gone from now on: every further call fails.
    void End() const { process_->hasGone = true; }

private:
    void MeetDeath(const std::string& member) const;

    std::shared_ptr<FailingPowerPoint::State> state_;
    std::shared_ptr<FailingPowerPoint::State::Process> process_;
};

/// A presentation with all that is reached from it. `path` is how the calls name it.
std::shared_ptr<powerpoint::Presentation> FailingPresentation(const FailingLine& line,
                                                              std::shared_ptr<powerpoint::Presentation> behind,
                                                              const String& path);

}  // namespace tessarine
