// The batch program's command line and its list files. Each line of the input is one argument, or one path.
#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "batch/CommandLine.h"
#include "batch/PathList.h"
#include "platform/Failure.h"
#include "Require.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace tessarine;
    const std::string_view input(reinterpret_cast<const char*>(data), size);
    try {
        for (const String& path : batch::PathsOfList(input))
            fuzz::Require(!path.empty() && path.find(u'\n') == String::npos, "a path is one line, not empty");
        std::vector<std::string> arguments;
        for (std::size_t at = 0; at < input.size();) {
            const std::size_t end = std::min(input.find('\n', at), input.size());
            arguments.emplace_back(input.substr(at, end - at));
            at = end + 1;
        }
        const auto read = batch::ReadCommandLine(arguments);
        if (const auto* early = std::get_if<batch::EarlyEnd>(&read))
            fuzz::Require((early->exitStatus == 0) == early->error.empty(), "a call that is refused is told why");
    } catch (const Failure&) {
    }  // refusing is a good answer; all else is a find
    return 0;
}
