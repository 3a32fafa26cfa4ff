#include "run/DroppedFiles.h"

#include <algorithm>
#include <span>
#include <string>

#include "files/Files.h"
#include "log/Treatments.h"
#include "platform/PathSeparator.h"
#include "run/FileWalk.h"
#include "run/JobInputs.h"
#include "saving/ReplacementFile.h"

namespace tessarine
{

namespace
{

/// As a list can name them: a path with a line end in it would be read as two.
bool ArePresentations(const std::vector<String>& paths)
{
    const FileWalk walk(PatternsIn(PresentationPattern));
    return std::ranges::all_of(paths, [&](const String& path) {
        bool isTaken = false;
        Skip([&] { isTaken = path.find(u"\r\n") == String::npos && walk.IsTaken(path); });
        return isTaken;
    });
}

}  // namespace

DropKind KindOfDrop(const std::vector<String>& paths)
{
    if (paths.empty())
        return DropKind::Unknown;
    if (paths.size() == 1) {
        const String& path = paths.front();
        if (FolderExists(path))
            return DropKind::Folder;
        if (HasExtension(path, u".TSQ"))
            return DropKind::Project;
        if (HasExtension(path, PairListExtensions))
            return DropKind::PairList;
        if (HasExtension(path, FileListExtensions))
            return DropKind::FileList;
    }
    return ArePresentations(paths) ? DropKind::Presentations : DropKind::Unknown;
}

String FileListOf(const std::vector<String>& paths, const String& folder)
{
    // The mark tells editors the encoding; a run leaves it out.
    std::string content = "\xEF\xBB\xBF";
    for (const String& path : paths)
        content += ToUtf8(path) + "\r\n";
    EnsureFolderExists(folder);
    for (int number = 1;; ++number) {
        String list = folder + PathSeparator + u"Files " + FromUtf8(std::to_string(number)) + u".txt";
        if (FileExists(list)) {
            // A list that is there belongs to a job that may have been saved.
            if (ReadWholeFile(list) == content)
                return list;
            continue;
        }
        ReplacementFile file(list, ReplacementFile::Missing::IsMade);
        file.Write(std::as_bytes(std::span(content)));
        file.Commit();
        return list;
    }
}

}  // namespace tessarine
