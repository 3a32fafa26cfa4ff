#include "batch/PathList.h"

#include <cstdio>

#include "platform/Failure.h"
#include "platform/Files.h"

namespace tessarine::batch
{

namespace
{

std::string ReadStandardInput()
{
    std::string bytes;
    char piece[65536];
    while (const std::size_t count = std::fread(piece, 1, sizeof piece, stdin))
        bytes.append(piece, count);
    if (std::ferror(stdin))
        throw Failure(FailureNumber::DeviceIO, u"standard input can't be read");
    return bytes;
}

}  // namespace

std::vector<String> PathsOfList(std::string_view bytes)
{
    constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
    if (bytes.starts_with(byteOrderMark))
        bytes.remove_prefix(byteOrderMark.size());

    std::vector<String> paths;
    while (!bytes.empty()) {
        std::string_view line = bytes.substr(0, bytes.find('\n'));
        bytes.remove_prefix(std::min(bytes.size(), line.size() + 1));
        // Lists come from both systems. A name that itself ends in CR can't be listed.
        if (line.ends_with('\r'))
            line.remove_suffix(1);
        if (!line.empty())
            paths.push_back(FromUtf8(line));
    }
    return paths;
}

std::vector<String> ReadPathList(StringView path)
{
    return PathsOfList(path == u"-" ? ReadStandardInput() : ReadWholeFile(path));
}

}  // namespace tessarine::batch
