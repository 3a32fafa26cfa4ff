#pragma once

#include <deque>
#include <optional>
#include <vector>

#include "shell/BrowseFolder.h"
#include "shell/CommonDialog.h"
#include "shell/Help.h"
#include "shell/OpenDoc.h"

namespace tessarine
{

/// Stands in for the desktop's dialogs, opener, browser and help viewer while it lives: records what was asked of them
/// and gives the answers set ahead. A dialog without an answer fails the test.
class ShellRecorder
{
public:
    struct FileDialog {
        CommonDialog properties;  ///< As the dialog was given them.
        bool isSave = false;
    };

    struct FolderDialog {
        String startFolder;
        String title;
        bool includeFiles = false;
    };

    ShellRecorder();
    ~ShellRecorder();
    ShellRecorder(const ShellRecorder&) = delete;
    ShellRecorder& operator=(const ShellRecorder&) = delete;

    /// The file that the next file dialog ends with; cancelled without one.
    void NextFile(std::optional<String> path) { files_.push_back(std::move(path)); }

    /// File dialogs raise this failure from now on; answers again with 0.
    void FileDialogsFailWith(std::int32_t number) { failure_ = number; }

    /// The folder that the next folder dialog ends with; empty for none.
    void NextFolder(String path) { folders_.push_back(std::move(path)); }

    /// The result code of the opener from now on; at first 33, success.
    void OpenerAnswers(std::int32_t code) { code_ = code; }

    const std::vector<FileDialog>& FileDialogs() const { return fileDialogs_; }
    const std::vector<FolderDialog>& FolderDialogs() const { return folderDialogs_; }
    const std::vector<String>& Opened() const { return opened_; }  ///< What opener and help viewer were given.

private:
    std::deque<std::optional<String>> files_;
    std::deque<String> folders_;
    std::int32_t failure_ = 0;
    std::int32_t code_ = ShellResult::Opened;
    std::vector<FileDialog> fileDialogs_;
    std::vector<FolderDialog> folderDialogs_;
    std::vector<String> opened_;
    FileDialogPort previousFileDialog_;
    FolderDialogPort previousFolderDialog_;
    DocumentOpenerPort previousOpener_;
    BrowserPort previousBrowser_;
    HelpViewerPort previousHelpViewer_;
};

}  // namespace tessarine
