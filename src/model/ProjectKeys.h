#pragma once

#include <array>
#include <cstdint>

#include "model/OptionSetting.h"
#include "platform/String.h"

/// The keys of a project file, in the order in which they are written: ItemCountKey, those of VisitOptions, OptionKeys
/// bare; for each item its texts and OptionKeys behind ItemKey; a PropertyKey for each custom property;
/// CustomPropertyCountKey.
namespace tessarine
{

/// A switch that is stored for each item, and once for the project.
struct OptionKey {
    const char16_t* name;
    bool OptionSetting::*field;
};

inline constexpr std::array<OptionKey, 17> OptionKeys{{
    {u"InBuiltinProperty", &OptionSetting::InBuiltinProperty},
    {u"InCustomProperties", &OptionSetting::InCustomProperties},
    {u"InFooter", &OptionSetting::InFooter},
    {u"InHandoutMaster", &OptionSetting::InHandoutMaster},
    {u"InHeader", &OptionSetting::InHeader},
    {u"InHyperlinkAddresses", &OptionSetting::InHyperlinkAddresses},
    {u"InLinks", &OptionSetting::InLinks},
    {u"InNotes", &OptionSetting::InNotes},
    {u"InNotesMaster", &OptionSetting::InNotesMaster},
    {u"InShapesAndTextboxes", &OptionSetting::InShapesAndTextboxes},
    {u"InSlideMasterPerPresentation", &OptionSetting::InSlideMasterPerPresentation},
    {u"InSlideMasterPerSlide", &OptionSetting::InSlideMasterPerSlide},
    {u"InSlides", &OptionSetting::InSlides},
    {u"InTitleMaster", &OptionSetting::InTitleMaster},
    {u"MatchCase", &OptionSetting::MatchCase},
    {u"MatchWholeWord", &OptionSetting::MatchWholeWord},
    {u"PromptOnReplace", &OptionSetting::PromptOnReplace},
}};

/// Hands every stored field of the options to `visit`, with its key, in the order of the file.
template <class Options, class Visitor>
void VisitOptions(Options& options, Visitor&& visit)
{
    visit(u"AllowAlerts", options.AllowAlerts);
    visit(u"BackupMode", options.BackupMode);
    visit(u"ComaSepAllowedExtensions", options.ComaSepAllowedExtensions);
    visit(u"ExeLocationIncaseOfFailure", options.ExeLocationIncaseOfFailure);
    visit(u"FileToProcessFilepath", options.FileToProcessFilepath);
    visit(u"FileToProcessFolderPath", options.FileToProcessFolderPath);
    visit(u"FileToProcessSourceType", options.FileToProcessSourceType);
    visit(u"Include_Subfolders", options.Include_Subfolders);
    visit(u"KeepOriginalFileDate", options.KeepOriginalFileDate);
    visit(u"ProcessLongestFindwhatFirst", options.ProcessLongestFindwhatFirst);
    visit(u"ProcessReadonlyFiles", options.ProcessReadonlyFiles);
    visit(u"RestartApplicationAfterFiles", options.RestartApplicationAfterFiles);
    visit(u"RestartApplicationAfterSeconds", options.RestartApplicationAfterSeconds);
    visit(u"RevisionDocumentPropertyIncrimentedBy", options.RevisionDocumentPropertyIncrimentedBy);
    visit(u"RevisionDocumentPropertyName", options.RevisionDocumentPropertyName);
    visit(u"PowerpointVersion", options.PowerpointVersion);
    visit(u"RequiredFindAndReplaceCount", options.RequiredFindAndReplaceCount);
    visit(u"CPUUsage", options.CPUUsage);
}

inline constexpr StringView ItemCountKey = u"FindReplaceItemsCount";
inline constexpr StringView CustomPropertyCountKey = u"CustomPropertyCount";

/// What the keys of an item begin with, counted from 0: "Item0".
String ItemKey(std::int32_t item);

/// The key of a custom property, counted from 1: "Propery1". The letters are intended.
String PropertyKey(std::int32_t number);

}  // namespace tessarine
