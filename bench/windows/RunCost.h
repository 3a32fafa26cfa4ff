#pragma once

namespace tessarine::bench
{

/// What the desktop adds to a run: the same find over the same decks with and without the windows, their events and
/// their timer, in turns. Prints processor times.
void MeasureRuns();

/// What the report of a long run costs: 20,000 changed files of 50 pairs each, as the run's events bring them. Prints
/// time per file and memory.
void MeasureReport();

}  // namespace tessarine::bench
