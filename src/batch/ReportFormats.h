#pragma once

#include <array>
#include <memory>
#include <string_view>

#include "batch/Report.h"

namespace tessarine::batch
{

/// A format of reports. All that the command line and its help know about it stands in its row.
struct ReportFormat {
    std::string_view name;  ///< As `--format` takes it.
    std::string_view help;  ///< Its part of the sentence that the help says about `--format`.
    std::unique_ptr<Report> (*create)(const ReportStyle& style);
};

/// For people. Changed and failed files get lines, unchanged ones when the style is verbose. The summary stands after
/// an empty line when any line stands before it. A path keeps the bytes that the file system has. (TextReport.cpp)
std::unique_ptr<Report> CreateTextReport(const ReportStyle& style);

/// The `version` in the first and the last line of a JSON report. It rises when a key goes away or gets another
/// meaning; new keys leave it as it is.
inline constexpr int JsonReportVersion = 1;

/// One object a line, with its keys in a fixed order, in UTF-8. Bytes of a path that are not valid UTF-8 become U+FFFD.
/// docs/batch.md describes the keys, docs/formats/report.schema.json the lines. (JsonReport.cpp)
std::unique_ptr<Report> CreateJsonReport(const ReportStyle& style);

/// All formats, in the order of the help. The first one is that of a call without `--format`.
inline constexpr auto ReportFormats = std::to_array<ReportFormat>({
    {"text", "A report for people (the default)", CreateTextReport},
    {"json", "one JSON object a line", CreateJsonReport},
});

/// The format of a name, null when there is none.
const ReportFormat* ReportFormatNamed(std::string_view name);

/// A report in the format that the call asks for, of all files or of one share of them.
std::unique_ptr<Report> CreateReport(const BatchCall& call, bool colors, const std::optional<ShardFacts>& shard = {});

}  // namespace tessarine::batch
