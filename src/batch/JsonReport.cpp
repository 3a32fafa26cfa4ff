#include <utility>

#include <nlohmann/json.hpp>

#include "batch/BackupCommands.h"
#include "batch/Locations.h"
#include "batch/ReportFormats.h"
#include "batch/SavedJob.h"
#include "model/Project.h"
#include "model/SearchLocations.h"
#include "report/FileReport.h"

namespace tessarine::batch
{

namespace
{

using Json = nlohmann::ordered_json;  // keys keep the order in which they are documented

std::string TextOf(const Json& value)
{
    // The library raises on invalid UTF-8 by default, and names of files may hold any bytes.
    return value.dump(-1, ' ', false, Json::error_handler_t::replace);
}

std::string OneLine(const Json& value)
{
    return TextOf(value) + "\n";
}

/// The searched places alone: -1 stands for a place that the pair was not looked for in.
Json CountsOf(const PairReport& pair, const OptionSetting& setting)
{
    auto counts = Json::object();
    for (std::size_t row = 0; row < SearchLocations.size(); ++row) {
        if (setting.*SearchLocations[row].isOn && pair.counts[row] >= 0)
            counts[SearchLocations[row].name] = pair.counts[row];
    }
    return counts;
}

/// What doesn't apply, or could not be told, has no key.
template <class Value>
void PutUnless(Json& object, const char* key, const Value& value, const Value& absent)
{
    if (value != absent)
        object[key] = value;
}

Json HitOf(const Hit& hit, bool replaces)
{
    const HitPlace& place = *hit.place;
    const std::string none;
    Json json{{"pair", place.pair}, {"location", RowOf(place.location).name}};
    PutUnless(json, "slide", place.slide, 0);
    PutUnless(json, "slideTitle", ToUtf8(place.slideTitle), none);
    PutUnless(json, "design", ToUtf8(place.design), none);
    PutUnless(json, "property", ToUtf8(place.property), none);
    if (place.headerFooter != HitPlace::HeaderFooter::None)
        json["headerFooter"] = place.headerFooter == HitPlace::HeaderFooter::Header ? "header" : "footer";
    PutUnless(json, "hyperlink", place.hyperlink, 0);
    PutUnless(json, "shape", place.shape, 0);
    PutUnless(json, "shapeName", ToUtf8(place.shapeName), none);
    PutUnless(json, "paragraph", hit.paragraph, 0);
    json["position"] = hit.position;
    json["length"] = hit.length;
    json["before"] = ToUtf8(hit.before);
    json["text"] = ToUtf8(hit.text);
    json["after"] = ToUtf8(hit.after);
    PutUnless(json, "cutBefore", hit.isCutBefore, false);
    PutUnless(json, "cutAfter", hit.isCutAfter, false);
    if (hit.becomes)
        json["becomes"] = ToUtf8(*hit.becomes);
    else if (replaces)
        json["becomes"] = nullptr;
    PutUnless(json, "counted", hit.isCounted, true);
    return json;
}

Json ArrayOf(const std::vector<String>& texts)
{
    auto array = Json::array();
    for (const String& text : texts)
        array.push_back(ToUtf8(text));
    return array;
}

/// The line at the end. What was left out has a key only where something was.
std::string SummaryLine(Json counts, std::int64_t skippedLinks, const std::vector<String>& warnings = {})
{
    if (skippedLinks > 0)
        counts["skippedLinks"] = skippedLinks;
    counts["warnings"] = ArrayOf(warnings);
    return OneLine({{"version", JsonReportVersion}, {"summary", std::move(counts)}});
}

/// What became of a file, in one of few words that never change.
const char* StateWord(const FileReport& file, bool replaces)
{
    switch (file.State()) {
        case ReportedState::Changed:
            return replaces ? "changed" : "found";
        case ReportedState::CountedOnly:
            return "found";
        case ReportedState::Unchanged:
            return "unchanged";
        case ReportedState::Failed:
            break;
    }
    return "failed";
}

const char* StateWord(const BackupReport& file, bool restores)
{
    if (file.status == FileStatus::Counted)
        return restores ? "restored" : "removed";
    return file.status == FileStatus::NothingCounted ? "unchanged" : "failed";
}

Json ItemsOf(const Project& project)
{
    auto items = Json::array();
    for (const auto& item : project.FindAndReplaceList->NewEnum())
        items.push_back({{"find", ToUtf8(item->FindWhat)},
                         {"replace", ToUtf8(item->ReplaceWith)},
                         {"in", LocationsOf(*item->OptionSetting)},
                         {"matchCase", item->OptionSetting->MatchCase},
                         {"wholeWord", item->OptionSetting->MatchWholeWord},
                         {"prompt", item->OptionSetting->PromptOnReplace}});
    return items;
}

Json FilesOf(const ProjectOptions& options)
{
    return {{"listed", options.TakesListedFiles()},
            {"folder", ToUtf8(options.FileToProcessFolderPath)},
            {"list", ToUtf8(options.FileToProcessFilepath)},
            {"patterns", ToUtf8(options.ComaSepAllowedExtensions)},
            {"recurse", options.Include_Subfolders}};
}

Json OptionsOf(const ProjectOptions& options)
{
    return {{"backup", options.BackupMode},
            {"keepDate", options.KeepOriginalFileDate},
            {"readOnly", options.ProcessReadonlyFiles},
            {"count", options.RequiredFindAndReplaceCount},
            {"revision", ToUtf8(options.RevisionDocumentPropertyName)},
            {"revisionBy", ToUtf8(options.RevisionDocumentPropertyIncrimentedBy)},
            {"restartAfter", options.RestartApplicationAfterFiles},
            {"restartAfterSeconds", options.RestartApplicationAfterSeconds},
            {"alerts", options.AllowAlerts},
            {"spareProcessor", options.CPUUsage},
            {"longestFirst", options.ProcessLongestFindwhatFirst}};
}

Json PropertiesOf(const Project& project)
{
    auto properties = Json::array();
    for (const auto& property : project.CustomProperies->NewEnum())
        properties.push_back({{"name", ToUtf8(property->ProperyName)}, {"value", ToUtf8(property->PropertyValue)}});
    return properties;
}

class JsonReport : public Report
{
public:
    explicit JsonReport(const ReportStyle& style) : style_(style) {}

    /// In the summary: every line before it is a file's.
    std::string AtStart(Engine /*engine*/) override { return {}; }

    std::string OfFile(const FileReport& file) override
    {
        auto items = Json::array();
        for (const PairReport& pair : file.pairs)
            items.push_back({{"find", ToUtf8(pair.find)},
                             {"replace", ToUtf8(pair.replace)},
                             {"counts", CountsOf(pair, style_.setting)}});
        Json line = FirstKeys();
        line["file"] = ToUtf8(file.path);
        PutUnless(line, "dryRun", style_.dryRun, false);
        line.update({{"status", file.status},
                     {"state", StateWord(file, Replaces())},
                     {"error", ToUtf8(file.error)},
                     {"items", items}});
        Json rest;
        if (style_.hits)
            PutUnless(rest, "hitsLeftOut", file.hitsLeftOut, std::int64_t{0});
        rest["warnings"] = ArrayOf(file.warnings);

        std::string text = TextOf(line);
        text.back() = ',';
        if (style_.hits)
            text += "\"hits\":[" + HitsOf(file) + "],";
        return text + OneLine(rest).substr(1);
    }

    std::string AtEnd(const RunSummary& summary) override
    {
        auto numbers = Json::object();
        if (summary.engine)
            numbers["engine"] = NameOf(*summary.engine);
        PutUnless(numbers, "dryRun", style_.dryRun, false);
        numbers["files"] = summary.files;
        numbers["changed"] = summary.changed;
        // Like skipped links: most runs have none of them.
        if (summary.countedOnly > 0)
            numbers["countedOnly"] = summary.countedOnly;
        numbers["unchanged"] = summary.unchanged;
        numbers["failed"] = summary.failed;
        numbers["occurrences"] = summary.occurrences;
        PutUnless(numbers, "notProcessed", summary.notReached, std::int64_t{0});
        return SummaryLine(std::move(numbers), summary.skippedLinks, summary.warnings);
    }

    std::string OfFile(const BackupReport& file) override
    {
        Json line = FirstKeys();
        line.update({{"file", ToUtf8(file.file)},
                     {"backup", ToUtf8(file.backup)},
                     {"status", file.status},
                     {"state", StateWord(file, style_.command == Command::Restore)},
                     {"error", ToUtf8(file.error)},
                     {"older", ArrayOf(file.older)},
                     {"warnings", ArrayOf(file.warnings)}});
        return OneLine(line);
    }

    std::string AtEnd(const BackupSummary& summary) override
    {
        Json numbers{{"files", summary.files},
                     {style_.command == Command::Restore ? "restored" : "removed", summary.done},
                     {"unchanged", summary.unchanged},
                     {"failed", summary.failed}};
        PutUnless(numbers, "notProcessed", summary.notReached, std::int64_t{0});
        return SummaryLine(std::move(numbers), summary.skippedLinks, summary.warnings);
    }

    std::string OfJob(const String& path, const Project& project) override
    {
        const SavedSource source = SourceOf(project);
        return OneLine({{"version", JsonReportVersion},
                        {"job", ToUtf8(path)},
                        {"list", {{"external", source.isExternal}, {"file", ToUtf8(source.path)}}},
                        {"items", ItemsOf(project)},
                        {"files", FilesOf(*project.options)},
                        {"options", OptionsOf(*project.options)},
                        {"customProperties", PropertiesOf(project)}});
    }

private:
    /// The first line tells the version of the format, so that a program knows it before it reads on.
    Json FirstKeys() { return std::exchange(isFirst_, false) ? Json{{"version", JsonReportVersion}} : Json::object(); }

    bool Replaces() const { return style_.command == Command::Replace; }

    /// With commas between them. As text from the first: there may be a million of them, and each object of the library
    /// takes several times the room of its text.
    std::string HitsOf(const FileReport& file) const
    {
        std::string hits;
        for (const Hit& hit : file.hits)
            hits += (hits.empty() ? "" : ",") + TextOf(HitOf(hit, Replaces()));
        return hits;
    }

    const ReportStyle style_;
    bool isFirst_ = true;  // no file has been told yet
};

}  // namespace

std::unique_ptr<Report> CreateJsonReport(const ReportStyle& style)
{
    return std::make_unique<JsonReport>(style);
}

}  // namespace tessarine::batch
