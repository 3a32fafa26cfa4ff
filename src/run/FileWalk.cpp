#include "run/FileWalk.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>

#include "files/FileLock.h"
#include "files/Files.h"
#include "platform/CaseFolding.h"
#include "platform/FolderOf.h"
#include "run/SplitText.h"
#include "run/WildcardPattern.h"

namespace tessarine
{

namespace
{

std::string_view WithoutByteOrderMark(std::string_view bytes)
{
    constexpr std::string_view mark = "\xEF\xBB\xBF";
    return bytes.starts_with(mark) ? bytes.substr(mark.size()) : bytes;
}

}  // namespace

FileWalk::FileWalk(std::vector<String> patterns) : patterns_(std::move(patterns)) {}

template <class Body>
void FileWalk::PassOverFailure(StringView procedure, const String& path, Body&& body) const
{
    try {
        body();
    } catch (...) {
        if (PassedOver)
            PassedOver(procedure, path, CurrentFailure());
    }
}

void FileWalk::RetriveFolder(const String& path)
{
    // Each folder passes over its own failure, so that one that can't be read does not cost its neighbours.
    PassOverFailure(u"RetriveFolder", path, [&] {
        if (IsStopped() || !visited_.Enter(path))
            return;
        const FolderContent content = ContentOfFolder(path);
        // A folder's own files first, then those of its subfolders: the order of a run and of its reports.
        for (const String& file : content.files) {
            if (IsStopped())
                return;
            if (CheckFileExt(file))
                Found(file);
        }
        if (!TakesSubfolders)
            return;
        for (const String& folder : content.folders)
            RetriveFolder(folder);
        // After the folders themselves: a folder that also lies in this tree is told by its own path.
        for (const String& folder : content.linkedFolders)
            FollowsLinkedFolders ? RetriveFolder(folder) : static_cast<void>(++LinkedFoldersLeftOut);
    });
}

void FileWalk::RetriveFile(const String& list)
{
    PassOverFailure(u"RetriveFile", list, [&] {
        const std::string bytes = ReadWholeFile(list);
        // A line feed alone does not end a line: it may be part of a file's name.
        for (const std::string_view line : SplitText<std::string_view>(WithoutByteOrderMark(bytes), "\r\n")) {
            if (IsStopped())
                return;
            String path = FromUtf8(line);
            if (CheckFileExt(path))
                Found(std::move(path));
            else if (line.find('\n') != std::string_view::npos)
                CountHidden(line);
        }
    });
}

/// What is no path as a whole, but holds paths: many programs end lines in a line feed alone.
void FileWalk::CountHidden(std::string_view piece)
{
    for (const std::string_view line : SplitText<std::string_view>(piece, "\n")) {
        if (IsStopped())
            return;
        try {
            HiddenByLineFeeds += IsTaken(FromUtf8(line)) ? 1 : 0;
        } catch (const Failure&) {
            // Such a line names no file either way, and has been passed over as a part of its piece.
        }
    }
}

bool FileWalk::CheckFileExt(const String& path) const
{
    bool isTaken = false;
    PassOverFailure(u"CheckFileExt", path, [&] { isTaken = IsTaken(path); });
    return isTaken;
}

bool FileWalk::IsTaken(const String& path) const
{
    if (path.empty() || !FileExists(path))
        return false;
    // Not a presentation, whatever its extension, but the sign that another program has one open.
    if (IsLockFileName(FileNameOf(StringView(path))))
        return false;
    const std::size_t dot = path.rfind(u'.');
    // A path without any dot counts as a failure, and the file is not taken.
    if (dot == String::npos)
        throw Failure(FailureNumber::InvalidProcedureCall, u"Invalid procedure call or argument");
    // Intended: the star stands in the text under test, so only a pattern whose end can match it takes a file.
    // "*.Ppt*" does, "*.ppt" never does; saved jobs hold patterns that were written for this rule.
    const String subject = ToUpper(path.substr(dot)) + u"*";
    return std::any_of(patterns_.begin(), patterns_.end(),
                       [&](const String& pattern) { return WildcardPattern(ToUpper(pattern)).Matches(subject); });
}

}  // namespace tessarine
