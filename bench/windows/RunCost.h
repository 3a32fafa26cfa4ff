#pragma once

namespace tessarine::bench
{

/// What the desktop adds to a run: the same find over the same decks with and without the windows, their events and
/// their timer, in turns. Prints processor times.
void MeasureRuns();

/// What the report of a long run costs: 20,000 changed files of 50 pairs and 20 hits each, as the run's events bring
/// them. Prints time per file and memory, and what filters and selections over all of them take.
void MeasureReport();

}  // namespace tessarine::bench
