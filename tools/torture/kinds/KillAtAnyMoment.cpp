#include <signal.h>

#include <chrono>
#include <thread>

#include "Kinds.h"
#include "Scene.h"

namespace tessarine::torture
{

namespace
{

using Clock = std::chrono::steady_clock;

/// How long an undisturbed run over the decks takes on this machine, as it is now.
std::chrono::microseconds& Duration()
{
    static std::chrono::microseconds duration{0};
    return duration;
}

void PlayRound(Round& round)
{
    const Operation& operation = round.random.OneOf(Operations());
    Scene scene(round);
    scene.Prepare(operation);

    const std::size_t kills = Duration().count() == 0 ? 0 : 1 + round.random.Below(3);
    for (std::size_t kill = 0; kill < kills; ++kill) {
        Running running(round, scene.CallOf(operation));
        const auto span = static_cast<std::size_t>(Duration().count()) * 11 / 10;
        std::this_thread::sleep_for(std::chrono::microseconds(round.random.Below(span)));
        running.Signal(SIGKILL);
        running.End();
        scene.CheckCut(operation);
    }

    const auto start = Clock::now();
    scene.FinishUndisturbed(operation);
    Duration() = std::chrono::duration_cast<std::chrono::microseconds>(Clock::now() - start);
}

}  // namespace

Kind KillAtAnyMoment()
{
    return {"kill", PlayRound, 8};
}

}  // namespace tessarine::torture
