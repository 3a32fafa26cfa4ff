#include <cerrno>
#include <string_view>

#include "Kinds.h"
#include "Scene.h"

namespace tessarine::torture
{

namespace
{

/// A folder that can't be read to its end: the run says so, whatever it did with the decks before.
void PlayRound(Round& round)
{
    const Operation& operation = Operations()[round.Number() % Operations().size()];
    std::vector<std::uint64_t> reads;
    // The first time that the folder is read tells the decks; what is read later does not matter so much.
    int times = 0;
    for (const Question& call : TraceOf(operation, ManyDecks())) {
        const std::string_view name = call.call;
        if (!std::string_view(call.path).ends_with("/decks"))
            continue;
        times += name.ends_with("opendir") ? 1 : 0;
        if (name == "readdir" && times <= 1)
            reads.push_back(call.number);
    }
    if (reads.empty())
        return round.Add(Harm::Other, "the run reads no folder as expected");
    const std::uint64_t number = reads[Spread(round.Number() / Operations().size(), reads.size())];

    Scene scene(round);
    scene.Prepare(operation);
    Outcome outcome;
    {
        Running running(round, scene.CallOf(operation).AsksAt({number}));
        if (running.NextQuestion())
            running.LetFail(EIO);
        outcome = running.End();
    }

    if (outcome.status == 0)
        round.Add(Harm::Other, "a folder was not read to its end, and the exit status is 0");
    scene.CheckTruth(operation, outcome);
    scene.CheckCut(operation);
    scene.FinishUndisturbed(operation);
}

}  // namespace

Kind UnreadableFolders()
{
    return {"unreadable-folder", PlayRound, 8};
}

}  // namespace tessarine::torture
