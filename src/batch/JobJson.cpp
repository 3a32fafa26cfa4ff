#include "batch/JobJson.h"

#include "batch/Locations.h"
#include "batch/SavedJob.h"
#include "model/Project.h"

namespace tessarine::batch
{

namespace
{

Json ItemsOf(const FindAndReplaceItems& list)
{
    auto items = Json::array();
    for (const auto& item : list.NewEnum())
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

}  // namespace

Json JobJson(const String& path, const Project& project)
{
    const SavedSource source = SourceOf(project);
    return {{"job", ToUtf8(path)},
            {"list", {{"external", source.isExternal}, {"file", ToUtf8(source.path)}}},
            {"items", ItemsOf(*project.FindAndReplaceList)},
            {"files", FilesOf(*project.options)},
            {"options", OptionsOf(*project.options)},
            {"customProperties", PropertiesOf(project)}};
}

Json RunJson(const FindAndReplaceItems& list, const Project& project)
{
    return {{"items", ItemsOf(list)},
            {"options", OptionsOf(*project.options)},
            {"customProperties", PropertiesOf(project)}};
}

}  // namespace tessarine::batch
