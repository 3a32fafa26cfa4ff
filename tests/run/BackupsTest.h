#pragma once

#include "RunTest.h"

namespace tessarine
{

/// A folder job whose files have been counted, as the processing window meets it after a run.
class Backups : public RunTest
{
protected:
    Backups()
    {
        project_->options->ComaSepAllowedExtensions = u"*.Ppt*";
        project_->options->FileToProcessFolderPath = folder_.Path();
        project_->options->Include_Subfolders = true;
    }

    /// Counts and runs over what lies in the folder, with backups, then changes every file.
    void RunOver(const std::vector<String>& names)
    {
        for (const String& name : names)
            AddFile(name);
        project_->options->BackupMode = true;
        ASSERT_EQ(project_->GetFileToProcessFileCount(), static_cast<std::int32_t>(names.size()));
        project_->Search();
        for (const String& name : names)
            folder_.Write(name, "changed");
    }

    std::string Content(StringView name) const { return ContentOf(folder_.PathOf(name)); }
};

using RestoringBackups = Backups;
using RemovingBackups = Backups;

}  // namespace tessarine
