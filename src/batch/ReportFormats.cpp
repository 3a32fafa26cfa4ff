#include "batch/ReportFormats.h"

#include <algorithm>
#include <utility>

#include "batch/QuietReport.h"

namespace tessarine::batch
{

const ReportFormat* ReportFormatNamed(std::string_view name)
{
    const auto found = std::ranges::find(ReportFormats, name, &ReportFormat::name);
    return found == ReportFormats.end() ? nullptr : &*found;
}

std::unique_ptr<Report> CreateReport(const BatchCall& call, bool colors, const std::optional<ShardFacts>& shard)
{
    const ReportFormat& format = call.format ? *call.format : ReportFormats.front();
    auto report = format.create({call.command, call.setting, call.verbose, colors, call.show, call.dryRun, shard});
    // Programs get a report of one shape whatever else is asked for.
    return call.quiet && &format == &ReportFormats.front() ? CreateQuietReport(std::move(report)) : std::move(report);
}

}  // namespace tessarine::batch
