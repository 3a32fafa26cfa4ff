#pragma once

#include <cstdint>
#include <memory>

#include "model/OptionSetting.h"
#include "platform/String.h"

namespace tessarine
{

/// Values of ProjectOptions::FileToProcessSourceType; every other one counts as List.
namespace FileSource
{
inline constexpr std::int32_t Folder = 0;  ///< The files of a folder that match a pattern.
inline constexpr std::int32_t List = 1;    ///< The files that a text file lists.
}  // namespace FileSource

/// What a user chooses for a whole run. Every field starts at its zero value.
struct RunOptions {
    bool CPUUsage = false;                     ///< The engine's loops sleep 1 millisecond at each yield.
    bool RequiredFindAndReplaceCount = false;  ///< Count every occurrence; when false a find stops at the first one.
    bool IsFindOnly = false;                   ///< True for a search, false while a replacement runs.
    std::int32_t PowerpointVersion = 0;        ///< Carried from file to file, not interpreted.

    /// File patterns of a folder scan, separated by semicolons in spite of the name.
    String ComaSepAllowedExtensions;
    String FileToProcessFolderPath;                             ///< Of a folder scan.
    std::int32_t RestartApplicationAfterSeconds = 0;            ///< Stored and shown; no run reads it.
    std::int32_t FileToProcessSourceType = FileSource::Folder;  ///< A FileSource.
    String ExeLocationIncaseOfFailure;                          ///< Carried from file to file; no code uses it.
    std::int32_t RestartApplicationAfterFiles = 0;  ///< Documents after which PowerPoint is restarted; 0 = never.
    String RevisionDocumentPropertyIncrimentedBy;   ///< Step of the revision number, as text.
    String RevisionDocumentPropertyName;            ///< Empty: no revision number is raised.
    String PasswordToOpen;                          ///< Handed to the engine, which does not use it. Nothing writes it.
    bool ProcessReadonlyFiles = false;              ///< When false they are reported as not processed.
    bool ProcessLongestFindwhatFirst = false;       ///< Stored and shown; items keep their list order in both states.
    bool AllowAlerts = false;                       ///< PowerPoint may show its alerts during the run.
    bool KeepOriginalFileDate = false;              ///< Each file gets its dates back after it was processed.
    bool BackupMode = false;                        ///< Each file is copied before anything is done to it.
    String FileToProcessFilepath;                   ///< The text file that lists files.
    bool Include_Subfolders = false;                ///< Of a folder scan, down to the last.

    /// Whether the files come from FileToProcessFilepath, and not from FileToProcessFolderPath.
    bool TakesListedFiles() const { return FileToProcessSourceType != FileSource::Folder; }
};

/// The settings of a whole run as a project holds them. Project's construction sets IsFindOnly.
class ProjectOptions : public RunOptions
{
public:
    /// An option block of its own, made on first use. Nothing else touches it.
    const std::shared_ptr<tessarine::OptionSetting>& OptionSetting();
    void PutOptionSetting(const std::shared_ptr<tessarine::OptionSetting>& value);

private:
    std::shared_ptr<tessarine::OptionSetting> optionSetting_;
};

}  // namespace tessarine
