#include "batch/ReportFormats.h"

#include <algorithm>

namespace tessarine::batch
{

const ReportFormat* ReportFormatNamed(std::string_view name)
{
    const auto found = std::ranges::find(ReportFormats, name, &ReportFormat::name);
    return found == ReportFormats.end() ? nullptr : &*found;
}

std::unique_ptr<Report> CreateReport(const BatchCall& call, bool colors)
{
    const ReportFormat& format = call.format ? *call.format : ReportFormats.front();
    return format.create({call.command, call.setting, call.verbose, colors, call.show, call.dryRun});
}

}  // namespace tessarine::batch
