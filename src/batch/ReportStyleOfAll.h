#pragma once

#include "batch/Locations.h"
#include "batch/Report.h"

namespace tessarine::batch
{

/// The style of an object that holds all that is known of a file, for another process or a later run: what a report of
/// it leaves out is left out then.
inline ReportStyle StyleOfAll(bool replaces)
{
    ReportStyle style{.command = replaces ? Command::Replace : Command::Find, .hits = true};
    SwitchOn(style.setting, "all");
    return style;
}

}  // namespace tessarine::batch
