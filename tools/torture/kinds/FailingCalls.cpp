#include <cerrno>
#include <cstring>
#include <string_view>

#include "Kinds.h"
#include "Scene.h"

namespace tessarine::torture
{

namespace
{

constexpr std::array failures{EIO, ENOSPC, EACCES, EMFILE, ENOMEM, EPERM, EINTR};

/// Decks whose modes and dates the run itself says it may not have kept.
std::vector<std::string> Excused(const Report& report)
{
    std::vector<std::string> names;
    for (const auto& [name, line] : report.files)
        if (line.warned || line.result == FileResult::Failed)
            names.push_back(name);
    return names;
}

void CheckAfter(Scene& scene, const Operation& operation, const Outcome& outcome)
{
    scene.CheckTruth(operation, outcome);
    scene.CheckCut(operation);
}

/// One call fails, all before it and after it work.
void FailOne(Round& round, const Operation& operation, std::uint64_t number)
{
    Scene scene(round, FewDecks());
    scene.Prepare(operation);
    const int error = round.random.OneOf(failures);
    std::string name = "none";
    Outcome outcome;
    {
        Running running(round, scene.CallOf(operation).AsksAt({number}));
        if (const auto question = running.NextQuestion()) {
            name = question->call;
            round.Note("call " + std::to_string(number) + ", " + name + " " + question->path + ", fails with " +
                       std::strerror(error));
            running.LetFail(error);
        }
        outcome = running.End();
    }
    CheckAfter(scene, operation, outcome);
    const std::vector<std::string> excused = Excused(ReadReport(outcome));
    // What can't be removed stays until the next run.
    if (!name.starts_with("unlink") && name != "remove")
        scene.CheckNothingLeftOver();
    if (!operation.startsReplaced)
        scene.CheckAttributes(excused);
    scene.FinishUndisturbed(operation, excused);
}

/// From one call on all fail.
void FailAll(Round& round, const Operation& operation, std::uint64_t number)
{
    Scene scene(round, FewDecks());
    scene.Prepare(operation);
    const int error = failures[round.random.Below(failures.size() - 1)];  // a call interrupted for ever is none
    const Outcome outcome = Run(round, scene.CallOf(operation).FailsAt(number, error, true));
    CheckAfter(scene, operation, outcome);
    scene.FinishUndisturbed(operation, Excused(ReadReport(outcome)));
}

/// Writes that take less than they are given are no failures.
void WriteShort(Round& round, const Operation& operation, std::uint64_t number)
{
    Scene scene(round, FewDecks());
    scene.Prepare(operation);
    const Outcome outcome = Run(round, scene.CallOf(operation).WritesShortFrom(number));
    if (outcome.status != 0)
        round.Add(Harm::Other, "short writes make the run fail: " + outcome.Text());
    scene.CheckTruth(operation, outcome);
    scene.CheckDone(operation);
}

void PlayRound(Round& round)
{
    const Operation& operation = Operations()[round.Number() % Operations().size()];
    const std::uint64_t number = 1 + Spread(round.Number() / Operations().size(), CallsOf(operation, FewDecks()));
    const std::size_t way = round.random.Below(10);
    if (way == 0)
        WriteShort(round, operation, number);
    else if (way < 3)
        FailAll(round, operation, number);
    else
        FailOne(round, operation, number);
}

}  // namespace

Kind FailingCalls()
{
    return {"fail-call", PlayRound, 24};
}

}  // namespace tessarine::torture
