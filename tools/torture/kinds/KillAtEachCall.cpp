#include "Kinds.h"
#include "Scene.h"

namespace tessarine::torture
{

namespace
{

/// Each round takes the next operation, and of its calls the next one.
void PlayRound(Round& round)
{
    const Operation& operation = Operations()[round.Number() % Operations().size()];
    const std::uint64_t calls = CallsOf(operation, FewDecks());
    const std::uint64_t number = 1 + Spread(round.Number() / Operations().size(), calls);
    Scene scene(round, FewDecks());
    scene.Prepare(operation);

    const Outcome outcome = Run(round, scene.CallOf(operation).DiesAt(number));

    round.Note("killed at call " + std::to_string(number) + " of " + std::to_string(calls));
    if (outcome.signal == 0 && number < calls * 9 / 10)
        round.Add(Harm::Other, "the kill did not strike");
    scene.CheckCut(operation);
    scene.FinishUndisturbed(operation);
}

}  // namespace

Kind KillAtEachCall()
{
    return {"kill-call", PlayRound, 24};
}

}  // namespace tessarine::torture
