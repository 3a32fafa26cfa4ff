#include "batch/PathList.h"

#include <filesystem>

#include "batch/LineText.h"
#include "batch/Refusal.h"
#include "batch/StandardInput.h"
#include "files/Files.h"
#include "platform/NativePath.h"

namespace tessarine::batch
{

std::vector<String> PathsOfList(std::string_view bytes, PathEnd end)
{
    constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
    if (end == PathEnd::Line && bytes.starts_with(byteOrderMark))
        bytes.remove_prefix(byteOrderMark.size());

    std::vector<String> paths;
    while (!bytes.empty()) {
        std::string_view line = bytes.substr(0, bytes.find(end == PathEnd::Line ? '\n' : '\0'));
        bytes.remove_prefix(std::min(bytes.size(), line.size() + 1));
        // Lists come from both systems. A name that itself ends in CR can't be listed.
        if (end == PathEnd::Line && line.ends_with('\r'))
            line.remove_suffix(1);
        if (!line.empty())
            paths.push_back(FromUtf8(line));
    }
    return paths;
}

std::vector<String> ReadPathList(StringView path, PathEnd end)
{
    if (path == u"-")
        return PathsOfList(ReadStandardInput(), end);
    // A pipe would be waited for, maybe without end; one that is missing is told by reading it.
    std::error_code error;
    const auto native = NativePathIfValid(path);
    if (native && std::filesystem::exists(*native, error) && !FileExists(path))
        Refuse(u"the list of files " + InQuotes(path) + u" is no regular file (- reads standard input)");
    return PathsOfList(ReadWholeFile(path), end);
}

}  // namespace tessarine::batch
