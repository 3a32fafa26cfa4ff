#include "Kinds.h"

namespace tessarine::torture
{

std::vector<Kind> AllKinds()
{
    return {KillAtAnyMoment(), KillAtEachCall(),    FailingCalls(), PowerCuts(),
            RacesAtEachCall(), RacesAtAnyMoment(),  RivalRuns(),    FullDisks(),
            PlantedLinks(),    HardLinks(),         Pipes(),        ForeignFiles(),
            Attributes(),      UnreadableFolders(), Signals(),      DamagedJournals(),
            JobsAndLists()};
}

}  // namespace tessarine::torture
