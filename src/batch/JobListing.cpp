#include "batch/JobListing.h"

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include "batch/SavedJob.h"
#include "batch/TextLayout.h"
#include "model/Project.h"
#include "model/SearchLocations.h"

namespace tessarine::batch
{

namespace
{

using Json = nlohmann::ordered_json;

/// The names of the places that a pair is looked for in.
std::vector<std::string> PlacesOf(const OptionSetting& setting)
{
    std::vector<std::string> names;
    for (const SearchLocation& location : SearchLocations)
        if (setting.*location.isOn)
            names.emplace_back(location.name);
    return names;
}

std::string PairLine(const FindAndReplaceItem& item)
{
    const OptionSetting& setting = *item.OptionSetting;
    const auto places = PlacesOf(setting);
    std::string line = fmt::format("    {} -> {}  in {}", Quoted(item.FindWhat), Quoted(item.ReplaceWith),
                                   places.empty() ? "no place" : fmt::format("{}", fmt::join(places, ", ")));
    if (setting.MatchCase)
        line += "; match case";
    if (setting.MatchWholeWord)
        line += "; whole words";
    return line + "\n";
}

std::string PairLines(const Project& project)
{
    const ListSource source = ListSourceOf(project);
    const std::string own = Counted(project.FindAndReplaceList->Count(), "pair");
    std::string lines;
    if (source.isExternal)
        lines = fmt::format("Pairs: those of the list {}; not the job's own ({}):\n", Quoted(source.path), own);
    else
        lines = fmt::format("Pairs: {}\n", project.FindAndReplaceList->Count());
    for (const auto& item : project.FindAndReplaceList->NewEnum())
        lines += PairLine(*item);
    return lines;
}

std::string FilesLine(const ProjectOptions& options)
{
    if (options.FileToProcessSourceType != 0)
        return fmt::format("Files: those that {} lists, of the kind {}\n", Quoted(options.FileToProcessFilepath),
                           ToUtf8(options.ComaSepAllowedExtensions));
    return fmt::format("Files: {} in {}{}\n", ToUtf8(options.ComaSepAllowedExtensions),
                       Quoted(options.FileToProcessFolderPath),
                       options.Include_Subfolders ? " and its subfolders" : "");
}

std::string OptionLines(const ProjectOptions& options)
{
    std::vector<std::string> lines;
    if (options.BackupMode)
        lines.push_back("copies each file beside itself first");
    if (options.KeepOriginalFileDate)
        lines.push_back("gives files their old dates back");
    if (options.ProcessReadonlyFiles)
        lines.push_back("processes read-only files");
    lines.push_back(options.RequiredFindAndReplaceCount ? "counts every occurrence"
                                                        : "a find stops at the first occurrence in each text");
    if (!options.RevisionDocumentPropertyName.empty())
        lines.push_back(fmt::format("raises the number in the property {} by {}",
                                    Quoted(options.RevisionDocumentPropertyName),
                                    Quoted(options.RevisionDocumentPropertyIncrimentedBy)));
    if (options.RestartApplicationAfterFiles != 0)
        lines.push_back("starts the presentation program anew after every " +
                        Counted(options.RestartApplicationAfterFiles, "file"));
    if (options.AllowAlerts)
        lines.push_back("lets the presentation program show alerts");
    if (options.CPUUsage)
        lines.push_back("spares the processor");
    return fmt::format("Options:\n    {}\n", fmt::join(lines, "\n    "));
}

Json ItemsOf(const Project& project)
{
    auto items = Json::array();
    for (const auto& item : project.FindAndReplaceList->NewEnum())
        items.push_back({{"find", ToUtf8(item->FindWhat)},
                         {"replace", ToUtf8(item->ReplaceWith)},
                         {"in", PlacesOf(*item->OptionSetting)},
                         {"matchCase", item->OptionSetting->MatchCase},
                         {"wholeWord", item->OptionSetting->MatchWholeWord},
                         {"prompt", item->OptionSetting->PromptOnReplace}});
    return items;
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

}  // namespace

std::string JobAsText(const String& path, const Project& project)
{
    return fmt::format("{}\n", ToUtf8(path)) + PairLines(project) + FilesLine(*project.options) +
           OptionLines(*project.options);
}

std::string JobAsJson(const String& path, const Project& project)
{
    const ListSource source = ListSourceOf(project);
    const ProjectOptions& options = *project.options;
    auto properties = Json::array();
    for (const auto& property : project.CustomProperies->NewEnum())
        properties.push_back({{"name", ToUtf8(property->ProperyName)}, {"value", ToUtf8(property->PropertyValue)}});

    const Json job{{"job", ToUtf8(path)},
                   {"list", {{"external", source.isExternal}, {"file", ToUtf8(source.path)}}},
                   {"items", ItemsOf(project)},
                   {"files",
                    {{"listed", options.FileToProcessSourceType != 0},
                     {"folder", ToUtf8(options.FileToProcessFolderPath)},
                     {"list", ToUtf8(options.FileToProcessFilepath)},
                     {"patterns", ToUtf8(options.ComaSepAllowedExtensions)},
                     {"recurse", options.Include_Subfolders}}},
                   {"options", OptionsOf(options)},
                   {"customProperties", properties}};
    return job.dump(-1, ' ', false, Json::error_handler_t::replace) + "\n";
}

}  // namespace tessarine::batch
