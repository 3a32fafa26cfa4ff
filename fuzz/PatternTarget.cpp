// Wildcard patterns. The first line of the input is the pattern, the rest the subject.
#include <algorithm>
#include <cstdint>
#include <string_view>

#include "platform/Failure.h"
#include "Require.h"
#include "run/WildcardPattern.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace tessarine;
    constexpr std::size_t longest = 1000;  // matching may take the product of both lengths
    const std::string_view input(reinterpret_cast<const char*>(data), std::min(size, longest));
    const std::size_t lineEnd = input.find('\n');
    if (lineEnd == std::string_view::npos)
        return 0;
    const String pattern = FromUtf8(input.substr(0, lineEnd));
    const String subject = FromUtf8(input.substr(lineEnd + 1));
    try {
        const bool matches = WildcardPattern(pattern).Matches(subject);
        fuzz::Require(!matches || WildcardPattern(u"*" + pattern).Matches(u"any" + subject),
                      "* takes what is in front");
        fuzz::Require(!matches || WildcardPattern(pattern + u"*").Matches(subject + u"any"),
                      "* takes what comes after");
        fuzz::Require(WildcardPattern(u"*").Matches(subject), "* takes everything");
    } catch (const Failure&) {
    }  // refusing is a good answer; all else is a find
    return 0;
}
