#pragma once

#include <cstdint>
#include <functional>
#include <string_view>
#include <vector>

#include "files/VisitedFolders.h"
#include "platform/Failure.h"
#include "platform/String.h"

namespace tessarine
{

/// The rule by which a job finds its files, in a folder or by a list of paths, for whoever takes them: a run, or a
/// count beside it. It writes no log and knows no project, so that it serves any thread.
class FileWalk
{
public:
    /// `patterns` take a file by its extension; matched regardless of case.
    explicit FileWalk(std::vector<String> patterns);

    bool TakesSubfolders = false;
    /// Whether subfolders are also those that symbolic links lead to.
    bool FollowsLinkedFolders = true;

    /// Gets each file, as it is found. The same path can come twice.
    std::function<void(String path)> Found;

    /// Told of a failure that costs one file (CheckFileExt), one folder with all that lies in it (RetriveFolder) or the
    /// rest of the list (RetriveFile), and nothing else. The procedure is named for the error log. May be empty.
    std::function<void(StringView procedure, const String& path, const Failure& failure)> PassedOver;

    /// Asked before each file and each folder: the walk ends as soon as it says yes. Empty: never.
    std::function<bool()> IsToStop;

    /// Finds the files of a folder, and then those of its subfolders, each folder once. `path` is a full path.
    void RetriveFolder(const String& path);

    /// Finds the files that a text file names, a path in each line.
    void RetriveFile(const String& list);

    /// Whether a file is there and a pattern takes it. Raises InvalidProcedureCall for a path without a dot, and for a
    /// pattern that is none.
    bool IsTaken(const String& path) const;

    /// Links to folders that were come across and left out, because the walk was not to follow them.
    std::int32_t LinkedFoldersLeftOut = 0;

    /// Files of the list that were not found only because their lines end in a line feed alone.
    std::int32_t HiddenByLineFeeds = 0;

private:
    template <class Body>
    void PassOverFailure(StringView procedure, const String& path, Body&& body) const;
    bool CheckFileExt(const String& path) const;  // IsTaken, and false after a failure
    void CountHidden(std::string_view piece);
    bool IsStopped() const { return IsToStop && IsToStop(); }

    const std::vector<String> patterns_;
    VisitedFolders visited_;
};

}  // namespace tessarine
