#include <fcntl.h>
#include <signal.h>
#include <unistd.h>

#include <chrono>
#include <thread>

#include "Kinds.h"
#include "Scene.h"

namespace tessarine::torture
{

namespace
{

/// The report of a run that somebody ended early names fewer files; those it does not name are untouched.
void CheckCancelled(Round& round, Scene& scene, const Operation& operation, const Outcome& outcome, bool twice)
{
    if (outcome.hung)
        return round.Add(Harm::Other, "the program hangs");
    const bool endedBySignal = outcome.signal == SIGINT || outcome.signal == SIGTERM;
    if (endedBySignal) {
        // It struck before the program was ready for it.
        if (!outcome.output.empty())
            round.Add(Harm::Other, "ended by a signal amid the run");
    } else if (outcome.status == 130) {
        if (!twice)
            round.Add(Harm::Other, "one signal ended the program at once");
        if (outcome.error.empty())
            round.Add(Harm::Other, "a run that was ended at once says nothing");
    } else if (outcome.status != 0 && outcome.status != 1) {
        round.Add(Harm::Other, "the exit status is " + std::to_string(outcome.status));
    } else if (!ReadReport(outcome).hasSummary) {
        round.Add(Harm::Other, "there is no summary");
    }
    scene.CheckCut(operation);
    scene.CheckNothingLeftOver();
    // After an end at once the next start puts back mode and date.
    if (!operation.startsReplaced && !endedBySignal && outcome.status != 130)
        scene.CheckAttributes();
}

void Cancel(Round& round, const Operation& operation)
{
    Scene scene(round);
    scene.Prepare(operation);
    const bool twice = round.random.Chance(60);
    const int signal = round.random.Chance(50) ? SIGINT : SIGTERM;
    // At a call, so that the moments are spread over the run and not over the start of the program.
    const std::uint64_t first = 1 + round.random.Below(CallsOf(operation, ManyDecks()));
    const std::uint64_t second = first + round.random.Below(20);

    Running running(round, scene.CallOf(operation).AsksAt({first, second}));
    if (running.NextQuestion()) {
        running.Signal(signal);
        if (first == second && twice) {
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
            running.Signal(signal);
        }
        running.LetGo();
        if (first != second && running.NextQuestion()) {
            if (twice)
                running.Signal(signal);
            running.LetGo();
        }
    }
    CheckCancelled(round, scene, operation, running.End(), twice);
    scene.FinishUndisturbed(operation);
}

/// Nobody reads the report: the run ends after a file, and its exit status says so.
void CloseReader(Round& round, const Operation& operation)
{
    Scene scene(round);
    scene.Prepare(operation);
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0)
        return;
    close(ends[0]);
    Call call = scene.CallOf(operation);
    call.output = ends[1];

    const Outcome outcome = Run(round, call);
    close(ends[1]);

    if (outcome.signal != 0)
        round.Add(Harm::Other, "a closed reader ends the program by signal " + std::to_string(outcome.signal));
    else if (outcome.status != 1)
        round.Add(Harm::Other, "nobody reads the report, and the exit status is " + std::to_string(outcome.status));
    // It ends after a file, so not all of them are done; the next run does the rest.
    scene.CheckCut(operation);
    scene.FinishUndisturbed(operation);
}

void PlayRound(Round& round)
{
    const Operation& operation = Operations()[round.Number() % Operations().size()];
    if (round.Number() % 7 == 6)
        CloseReader(round, operation);
    else
        Cancel(round, operation);
}

}  // namespace

Kind Signals()
{
    return {"signals", PlayRound, 12};
}

}  // namespace tessarine::torture
