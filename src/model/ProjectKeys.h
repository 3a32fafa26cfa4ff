#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <variant>

#include "model/OptionSetting.h"
#include "model/PairOptions.h"
#include "model/ProjectOptions.h"
#include "model/SearchLocations.h"
#include "platform/String.h"

/// The keys of a project file, in the order in which they are written: ItemCountKey; those of StoredOptions; OptionKeys
/// bare; for each item its texts and OptionKeys, each key after ItemKey; a PropertyKey for each custom property;
/// CustomPropertyCountKey.
namespace tessarine
{

/// An option of a run that project files keep.
struct StoredOption {
    const char16_t* key;  ///< As files hold it, odd spellings included.
    std::variant<bool RunOptions::*, std::int32_t RunOptions::*, String RunOptions::*> field;
};

/// Every option but IsFindOnly and PasswordToOpen, in the order of the file. An option that is missing here does not
/// compile; tests walk this table to see that the window, the batch program and the format's page know each option.
inline constexpr std::array<StoredOption, 18> StoredOptions{{
    {u"AllowAlerts", &RunOptions::AllowAlerts},
    {u"BackupMode", &RunOptions::BackupMode},
    {u"ComaSepAllowedExtensions", &RunOptions::ComaSepAllowedExtensions},
    {u"ExeLocationIncaseOfFailure", &RunOptions::ExeLocationIncaseOfFailure},
    {u"FileToProcessFilepath", &RunOptions::FileToProcessFilepath},
    {u"FileToProcessFolderPath", &RunOptions::FileToProcessFolderPath},
    {u"FileToProcessSourceType", &RunOptions::FileToProcessSourceType},
    {u"Include_Subfolders", &RunOptions::Include_Subfolders},
    {u"KeepOriginalFileDate", &RunOptions::KeepOriginalFileDate},
    {u"ProcessLongestFindwhatFirst", &RunOptions::ProcessLongestFindwhatFirst},
    {u"ProcessReadonlyFiles", &RunOptions::ProcessReadonlyFiles},
    {u"RestartApplicationAfterFiles", &RunOptions::RestartApplicationAfterFiles},
    {u"RestartApplicationAfterSeconds", &RunOptions::RestartApplicationAfterSeconds},
    {u"RevisionDocumentPropertyIncrimentedBy", &RunOptions::RevisionDocumentPropertyIncrimentedBy},
    {u"RevisionDocumentPropertyName", &RunOptions::RevisionDocumentPropertyName},
    {u"PowerpointVersion", &RunOptions::PowerpointVersion},
    {u"RequiredFindAndReplaceCount", &RunOptions::RequiredFindAndReplaceCount},
    {u"CPUUsage", &RunOptions::CPUUsage},
}};

/// A switch that is stored for each item, and once for the project.
struct OptionKey {
    const char16_t* name;  ///< In project files after ItemKey, and as the header of its column in list files.
    bool OptionSetting::*field;
};

/// The switches of all locations, sorted by their keys (capital letters first), then PairOptions.
inline constexpr std::array<OptionKey, SearchLocations.size() + PairOptions.size()> OptionKeys = [] {
    std::array<OptionKey, SearchLocations.size() + PairOptions.size()> keys{};
    auto end = keys.begin();
    for (const SearchLocation& row : SearchLocations)
        *end++ = {row.key, row.isOn};
    std::sort(keys.begin(), end, [](const OptionKey& a, const OptionKey& b) { return StringView(a.name) < b.name; });
    for (const PairOption& row : PairOptions)
        *end++ = {row.key, row.isOn};
    return keys;
}();

/// The keys of the two counts.
inline constexpr StringView ItemCountKey = u"FindReplaceItemsCount";
inline constexpr StringView CustomPropertyCountKey = u"CustomPropertyCount";

/// What the keys of an item begin with, counted from 0: "Item0".
String ItemKey(std::int32_t item);

/// The key of a custom property, counted from 1: "Propery1". Older files hold it in these letters.
String PropertyKey(std::int32_t number);

}  // namespace tessarine
