#pragma once

#include "batch/BackupCommands.h"
#include "batch/Report.h"
#include "model/SearchLocations.h"
#include "report/FileReport.h"

namespace tessarine::batch
{

/// A style for pairs that are looked for in slides and notes.
inline ReportStyle StyleOf(Command command, bool verbose = false, bool colors = false)
{
    ReportStyle style{command, {}, verbose, colors};
    style.setting.InSlides = true;
    style.setting.InNotes = true;
    return style;
}

/// A pair with its counts in slides and notes; -1 in all other places, where it was not looked for.
inline PairReport Pair(const String& find, const String& replace, std::int32_t slides, std::int32_t notes)
{
    PairReport pair{find, replace, {}};
    pair.counts.fill(-1);
    pair.counts[static_cast<std::size_t>(Location::Slides)] = slides;
    pair.counts[static_cast<std::size_t>(Location::Notes)] = notes;
    return pair;
}

}  // namespace tessarine::batch
