#pragma once

#include <memory>
#include <optional>

#include "batch/BatchCall.h"
#include "model/Engines.h"

namespace tessarine::batch
{

/// The provider of one run, which settles what is behind it only when the run begins, so that a call that is refused
/// starts no program.
class EngineOfRun final : public powerpoint::Provider
{
public:
    /// Refuses (Refusal.h) the choice of PowerPoint where there is none, and together with options that only the
    /// built-in engine has.
    EngineOfRun(const BatchCall& call, Engines engines);

    /// Quits a PowerPoint that Choose has started and that no run has taken.
    ~EngineOfRun() override;
    EngineOfRun(const EngineOfRun&) = delete;
    EngineOfRun& operator=(const EngineOfRun&) = delete;

    /// Settles the engine: the one that the call names, else PowerPoint if it can be started, else the built-in one. A
    /// PowerPoint that is named and can't be started is refused. To be called once, before the two members below.
    ///
    /// Gives the engine where a report names it: where there is a choice, and where the call names one.
    std::optional<Engine> Choose();

    /// The instance that Choose has started, then new ones.
    std::shared_ptr<powerpoint::Application> CreateApplication() override;
    std::shared_ptr<powerpoint::Application> AttachToRunning() override;

private:
    bool StartPowerPoint();  // false when it is not needed, or not there

    const std::optional<Engine> named_;
    const bool needsBuiltIn_;
    const Engines engines_;
    std::shared_ptr<powerpoint::Provider> chosen_;
    std::shared_ptr<powerpoint::Application> started_;  // until the run asks for it
};

}  // namespace tessarine::batch
