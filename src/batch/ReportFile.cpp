#include "batch/ReportFile.h"

#include <filesystem>
#include <utility>

#include "batch/LineText.h"
#include "batch/Refusal.h"
#include "batch/ReportFormats.h"
#include "platform/Failure.h"
#include "platform/NativePath.h"

namespace tessarine::batch
{

ReportFile::ReportFile(const String& path)
    : path_(path), file_(std::filesystem::path(NativePath(path)), std::ios::binary)
{
    if (!file_ || std::filesystem::is_directory(NativePath(path)))
        Refuse(u"can't read the report " + InQuotes(path));
    facts_.isCut = true;
    while (const auto line = NextLine()) {
        if (!facts_.isCut)
            RefuseLine(u"it stands after the summary");
        if (const auto summary = line->find("summary"); summary != line->end())
            TakeSummary(*summary);
        else
            TakeFile(*line);
    }
    if (facts_.shard && facts_.lastNumber > facts_.shard->files)
        RefuseLine(u"it has a number that is none of the job");
    Rewind();
}

std::optional<FileReport> ReportFile::Next(bool replaces)
{
    const auto line = NextLine();
    if (!line || line->contains("summary"))
        return std::nullopt;
    return FileReportFrom(*line, replaces);
}

/// The next line. A last one that was cut is none.
std::optional<Json> ReportFile::NextLine()
{
    std::string text;
    if (!std::getline(file_, text))
        return std::nullopt;
    const bool isCut = file_.eof();
    ++lineNumber_;
    Json line = Json::parse(text, nullptr, false);
    if (line.is_object())
        return line;
    if (isCut && (lineNumber_ > 1 || text.starts_with('{')))
        return std::nullopt;
    RefuseLine(u"it is no line of a JSON report");
}

void ReportFile::TakeFile(const Json& line)
{
    if (line.contains("backup") || line.contains("job"))
        RefuseLine(u"it is none of find, replace and run");
    FileReport file;
    try {
        if (line.value("version", JsonReportVersion) > JsonReportVersion)
            RefuseLine(u"it is of a later version");
        file = FileReportFrom(line, true);
        facts_.isDryRun = line.value("dryRun", false);
    } catch (const Failure& failure) {
        RefuseLine(failure.Reason());
    } catch (const nlohmann::json::exception&) {
        RefuseLine(u"it is no line of a JSON report");
    }
    ++facts_.files;
    // What only a replace says; of a shard the summary tells it.
    facts_.replaces = facts_.replaces || facts_.isDryRun || line.at("state") == "changed";
    for (const Hit& hit : file.hits)
        facts_.replaces = facts_.replaces || hit.becomes;
    const bool isNumbered = file.number != 0;
    if (facts_.files > 1 && isNumbered != facts_.isNumbered)
        RefuseLine(u"only some of the files have numbers");
    facts_.isNumbered = isNumbered;
    if (isNumbered && file.number <= facts_.lastNumber)
        RefuseLine(u"the numbers of the files do not rise");
    facts_.lastNumber = file.number;
}

void ReportFile::TakeSummary(const Json& summary)
{
    facts_.isCut = false;
    try {
        facts_.notProcessed = summary.value("notProcessed", std::int64_t{0});
        facts_.skippedLinks = summary.value("skippedLinks", std::int64_t{0});
        facts_.isDryRun = facts_.isDryRun || summary.value("dryRun", false);
        if (summary.at("files").get<std::int64_t>() != facts_.files)
            RefuseLine(u"it counts other files than there are");
        if (summary.contains("engine"))
            facts_.engine = EngineNamed(summary.at("engine").get<std::string>());
        for (const Json& warning : summary.at("warnings"))
            facts_.warnings.push_back(FromUtf8(warning.get<std::string>()));
        if (summary.contains("shard"))
            TakeShard(summary.at("shard"));
        else if (facts_.isNumbered)
            RefuseLine(u"it tells nothing of the shard");
    } catch (const nlohmann::json::exception&) {
        RefuseLine(u"it is no summary of find, replace and run");
    }
}

void ReportFile::TakeShard(const Json& shard)
{
    facts_.isNumbered = true;
    facts_.shard = {{shard.at("index").get<std::int32_t>(), shard.at("of").get<std::int32_t>()},
                    shard.at("files").get<std::int64_t>(),
                    shard.at("division").get<std::string>()};
    facts_.replaces = shard.at("command") == "replace";
    const Shard& place = facts_.shard->shard;
    if (place.index < 1 || place.index > place.count || facts_.shard->files < facts_.files)
        RefuseLine(u"there is no such shard");
}

void ReportFile::Rewind()
{
    file_.clear();
    file_.seekg(0);
    lineNumber_ = 0;
}

void ReportFile::RefuseLine(const String& reason) const
{
    Refuse(u"the report " + InQuotes(path_) + u", line " + FromUtf8(std::to_string(lineNumber_)) + u": " + reason);
}

}  // namespace tessarine::batch
