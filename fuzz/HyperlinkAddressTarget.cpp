// Targets of relationships as addresses and back. The first line of the input is the new address, the rest a target.
#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>

#include "office/builtin/shapes/HyperlinkAddress.h"
#include "platform/CaseFolding.h"
#include "platform/Failure.h"
#include "Require.h"

namespace tessarine::fuzz
{

namespace
{

/// Addresses that a target can hold as they are: printable ASCII without a blank, "%" and "#", which have a meaning of
/// their own in targets, and of the two slashes only the one that the kind of address uses. A server has a name.
bool IsSane(StringView address)
{
    const bool isPath = builtin::IsFileAddress(address);
    return !address.empty() && !FoldCase(address).starts_with(u"file:") && !address.starts_with(u"\\\\\\") &&
           std::ranges::all_of(address, [&](char16_t unit) {
               return unit > u' ' && unit < 0x7F && unit != u'%' && unit != u'#' && unit != (isPath ? u'/' : u'\\');
           });
}

void WriteAndRead(std::string_view target, StringView address)
{
    for (const bool withFragment : {true, false}) {
        const builtin::TargetText old = builtin::ReadTarget(target, withFragment);
        Require(builtin::WriteTarget(target, old.address, withFragment) == target,
                "the same address leaves the target as it is");
        const std::string written = builtin::WriteTarget(target, address, withFragment);
        const builtin::TargetText again = builtin::ReadTarget(written, withFragment);
        if (IsSane(address))
            Require(again.address == address, "an address that was written reads back");
    }
}

}  // namespace

}  // namespace tessarine::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view input(reinterpret_cast<const char*>(data), size);
    const std::size_t lineEnd = input.find('\n');
    if (lineEnd == std::string_view::npos)
        return 0;
    try {
        tessarine::fuzz::WriteAndRead(input.substr(lineEnd + 1), tessarine::FromUtf8(input.substr(0, lineEnd)));
    } catch (const tessarine::Failure&) {
    }  // refusing is a good answer; all else is a find
    return 0;
}
