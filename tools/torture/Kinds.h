#pragma once

#include <vector>

#include "Torture.h"

/// One source file in `kinds` for each.
namespace tessarine::torture
{

Kind KillAtAnyMoment();
Kind KillAtEachCall();
Kind FailingCalls();
Kind PowerCuts();
Kind RacesAtEachCall();
Kind RacesAtAnyMoment();
Kind RivalRuns();
Kind FullDisks();
Kind PlantedLinks();
Kind HardLinks();
Kind Pipes();
Kind ForeignFiles();
Kind Attributes();
Kind UnreadableFolders();
Kind DamagedJournals();
Kind Signals();
Kind JobsAndLists();

/// All of them, in the order of the table.
std::vector<Kind> AllKinds();

}  // namespace tessarine::torture
