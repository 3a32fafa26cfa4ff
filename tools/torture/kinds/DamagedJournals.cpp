#include <sys/stat.h>

#include "Expected.h"
#include "Kinds.h"
#include "Scene.h"

namespace tessarine::torture
{

namespace
{

/// Where the program keeps what it needs to put right after a kill.
Path JournalFolder(const Round& round)
{
    return round.Folder() / "data" / "Tessarine" / "Tessarine";
}

std::string Damaged(std::string content, Random& random)
{
    switch (random.Below(4)) {
        case 0:
            return content.substr(0, random.Below(content.size() + 1));
        case 1:
            return content + content;
        case 2:
            return std::string(random.Below(200'000), static_cast<char>('0' + random.Below(64)));
        default:
            for (std::size_t count = 1 + random.Below(8); count > 0 && !content.empty(); --count)
                content[random.Below(content.size())] = static_cast<char>(random.Below(256));
            return content;
    }
}

/// Damages what a killed run left, or puts something else in its place.
void Damage(Round& round)
{
    for (const std::string& name : NamesIn(JournalFolder(round))) {
        if (!name.ends_with(".journal"))
            continue;
        const Path journal = JournalFolder(round) / name;
        Write(journal, Damaged(ContentIfThere(journal).value_or(""), round.random));
        round.Note(name + " was damaged");
    }
    if (round.random.Chance(30))
        mkfifo((JournalFolder(round) / "Run-1.journal").c_str(), 0600);
}

/// A run is killed, its journal damaged: modes and dates may be lost then, decks may not.
void PlayRound(Round& round)
{
    const Operation& operation = Operations()[round.random.Below(2)];
    Scene scene(round, FewDecks());
    Run(round, scene.CallOf(operation).DiesAt(1 + round.random.Below(CallsOf(operation, FewDecks()))));
    scene.CheckCut(operation);
    std::filesystem::create_directories(JournalFolder(round));
    Damage(round);

    scene.Remember();
    const Outcome outcome = Run(round, scene.CallOf(operation));

    scene.CheckTruth(operation, outcome);
    if (outcome.status != 0)
        round.Add(Harm::Other, "a damaged journal makes a run fail: " + outcome.Text());
    scene.CheckCut(operation);
    scene.CheckNothingLeftOver();
}

}  // namespace

Kind DamagedJournals()
{
    return {"journals", PlayRound, 10};
}

}  // namespace tessarine::torture
