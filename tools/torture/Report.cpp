#include "Report.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <sstream>

namespace tessarine::torture
{

const FileLine* Report::Of(const std::string& name) const
{
    const auto found = files.find(name);
    return found == files.end() ? nullptr : &found->second;
}

bool Report::AnyFailed() const
{
    return std::ranges::any_of(files, [](const auto& file) { return file.second.result == FileResult::Failed; });
}

Report ReadReport(const Outcome& outcome)
{
    Report report;
    std::istringstream lines(outcome.output);
    for (std::string line; std::getline(lines, line);) {
        const auto object = nlohmann::json::parse(line, nullptr, false);
        if (!object.is_object()) {
            report.isReadable = false;
        } else if (object.contains("summary")) {
            report.hasSummary = true;
        } else if (object.contains("file")) {
            FileLine file;
            file.result = static_cast<FileResult>(object.value("status", 0));
            file.error = object.value("error", "");
            file.warned = object.contains("warnings") && !object["warnings"].empty();
            report.files[Path(object.value("file", "")).filename().string()] = file;
        }
    }
    return report;
}

}  // namespace tessarine::torture
