#include "batch/JsonLines.h"

#include <nlohmann/json.hpp>

namespace tessarine::batch
{

namespace
{

std::string OneLine(const nlohmann::ordered_json& value)
{
    return value.dump(-1, ' ', false, nlohmann::ordered_json::error_handler_t::replace) + "\n";
}

nlohmann::ordered_json Counts(const PairReport& pair, const OptionSetting& setting)
{
    auto counts = nlohmann::ordered_json::object();
    for (std::size_t row = 0; row < SearchLocations.size(); ++row) {
        if (setting.*SearchLocations[row].isOn && pair.counts[row] >= 0)
            counts[SearchLocations[row].name] = pair.counts[row];
    }
    return counts;
}

}  // namespace

std::string JsonLine(const FileReport& file, const OptionSetting& setting)
{
    auto items = nlohmann::ordered_json::array();
    for (const PairReport& pair : file.pairs)
        items.push_back(
            {{"find", ToUtf8(pair.find)}, {"replace", ToUtf8(pair.replace)}, {"counts", Counts(pair, setting)}});
    return OneLine(
        {{"file", ToUtf8(file.path)}, {"status", file.status}, {"error", ToUtf8(file.error)}, {"items", items}});
}

std::string JsonLine(const RunSummary& summary)
{
    return OneLine({{"summary",
                     {{"files", summary.files},
                      {"changed", summary.changed},
                      {"unchanged", summary.unchanged},
                      {"failed", summary.failed},
                      {"occurrences", summary.occurrences}}}});
}

std::string JsonLine(const BackupReport& file)
{
    return OneLine({{"file", ToUtf8(file.file)},
                    {"backup", ToUtf8(file.backup)},
                    {"status", file.status},
                    {"error", ToUtf8(file.error)}});
}

std::string JsonLine(const BackupSummary& summary, Command command)
{
    return OneLine({{"summary",
                     {{"files", summary.files},
                      {command == Command::Restore ? "restored" : "removed", summary.done},
                      {"unchanged", summary.unchanged},
                      {"failed", summary.failed}}}});
}

}  // namespace tessarine::batch
