#pragma once

#include <memory>

#include "batch/Report.h"

namespace tessarine::batch
{

/// A report for people that leaves out all but the files that failed or have a warning; of these it says what `report`
/// says. What "job show" prints stays.
std::unique_ptr<Report> CreateQuietReport(std::unique_ptr<Report> report);

}  // namespace tessarine::batch
