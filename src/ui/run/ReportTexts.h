#pragma once

#include "report/ReportWords.h"

namespace tessarine
{

/// The words of a report in the active language, from the section "Report" of its file. A text that the file lacks
/// stays English. Locations have the names that the results of a run show.
ReportWords WordsOfReport();

}  // namespace tessarine
