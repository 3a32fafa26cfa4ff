#include "batch/EngineOfRun.h"

#include <utility>

#include "batch/Refusal.h"
#include "log/Treatments.h"

namespace tessarine::batch
{

EngineOfRun::EngineOfRun(const BatchCall& call, Engines engines)
    : named_(call.engine),
      needsBuiltIn_(call.inPlace || call.inPlaceLinks || call.skipSigned),
      engines_(std::move(engines))
{
    if (named_ != Engine::PowerPoint)
        return;
    if (!engines_.powerPoint)
        Refuse(std::string("--engine powerpoint: there is only the built-in engine on this system"));
    if (needsBuiltIn_)
        Refuse(std::string(
            "--engine powerpoint: --in-place, --in-place-links and --skip-signed are options of the built-in engine"));
}

EngineOfRun::~EngineOfRun()
{
    if (started_)
        Skip([&] { started_->Quit(); });
}

std::optional<Engine> EngineOfRun::Choose()
{
    const Engine engine = StartPowerPoint() ? Engine::PowerPoint : Engine::BuiltIn;
    chosen_ = engine == Engine::PowerPoint ? engines_.powerPoint : engines_.builtIn;
    return engines_.powerPoint || named_ ? std::optional(engine) : std::nullopt;
}

bool EngineOfRun::StartPowerPoint()
{
    const bool mayBePowerPoint = named_ ? *named_ == Engine::PowerPoint : engines_.powerPoint && !needsBuiltIn_;
    if (!mayBePowerPoint)
        return false;
    // Kept for the run: starting it takes seconds, and a second start to try the first would double them.
    try {
        started_ = engines_.powerPoint->CreateApplication();
    } catch (const Failure& failure) {
        if (named_)
            Refuse(u"--engine powerpoint: PowerPoint can't be started: " + failure.Reason());
    }
    return started_ != nullptr;
}

std::shared_ptr<powerpoint::Application> EngineOfRun::CreateApplication()
{
    return started_ ? std::exchange(started_, nullptr) : NotNull(chosen_)->CreateApplication();
}

std::shared_ptr<powerpoint::Application> EngineOfRun::AttachToRunning()
{
    return NotNull(chosen_)->AttachToRunning();
}

}  // namespace tessarine::batch
