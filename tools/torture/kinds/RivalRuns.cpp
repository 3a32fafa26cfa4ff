#include <signal.h>

#include <chrono>
#include <list>
#include <thread>

#include "Kinds.h"
#include "Scene.h"

namespace tessarine::torture
{

namespace
{

/// A run that goes on after another was killed may save a deck with the mode that the killed one had given it for a
/// while. The next start can only say so.
void Finish(Round& round, Scene& scene, const Operation& operation)
{
    scene.Remember();
    const Outcome outcome = Run(round, scene.CallOf(operation));
    scene.CheckTruth(operation, outcome);
    if (outcome.status != 0)
        round.Add(Harm::Other, "an undisturbed run afterwards does not succeed: " + outcome.Text());
    std::vector<std::string> told;
    for (const Scene::Deck& deck : scene.Decks())
        if (outcome.error.find("/" + deck.name + ": a run that was killed") != std::string::npos)
            told.push_back(deck.name);
    scene.CheckDone(operation, told);
}

/// Two or three runs over one folder at once.
void PlayRound(Round& round)
{
    const Operation& operation = Operations()[0];
    Scene scene(round);
    const std::size_t count = 2 + round.random.Below(2);
    const bool share = round.random.Chance(50);  // one data folder, as of one user
    const bool oneDies = round.random.Chance(25);
    std::list<Running> runs;
    for (std::size_t number = 0; number < count; ++number) {
        Call call = scene.CallOf(operation);
        // That of the first is also that of the run afterwards, which puts right what a killed one leaves.
        if (!share && number > 0)
            call.dataFolder += std::to_string(number);
        runs.emplace_back(round, call);
        std::this_thread::sleep_for(std::chrono::microseconds(round.random.Below(15'000)));
    }
    if (oneDies)
        runs.front().Signal(SIGKILL);

    std::map<std::string, int> changes;
    for (Running& run : runs) {
        const bool died = oneDies && &run == &runs.front();
        const Outcome outcome = run.End();
        if (died)
            continue;
        const Report report = ReadReport(outcome);
        if (outcome.hung || outcome.signal != 0 || !report.hasSummary)
            round.Add(Harm::Other, "a run beside another does not end as it should: " + outcome.Text());
        for (const auto& [name, line] : report.files) {
            changes[name] += line.result == FileResult::Done ? 1 : 0;
            if (line.result == FileResult::Failed && line.error.find("in use") == std::string::npos &&
                line.error.find("another program") == std::string::npos)
                round.Add(Harm::Other, name + " failed beside another run: " + line.error);
        }
    }
    scene.CheckCut(operation);
    for (const Scene::Deck& deck : scene.Decks()) {
        const int times = changes[deck.name];
        if (deck.HasHit() && (times > 1 || (times == 0 && !oneDies)))
            round.Add(Harm::Other, deck.name + " was changed by " + std::to_string(times) + " runs");
    }
    Finish(round, scene, operation);
}

}  // namespace

Kind RivalRuns()
{
    return {"rivals", PlayRound, 5};
}

}  // namespace tessarine::torture
