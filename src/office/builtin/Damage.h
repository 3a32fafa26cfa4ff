#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/Failure.h"

namespace tessarine::builtin
{

/// The failure for a damaged package or part: -2147023504, "part: what (at byte offset)". The text names the entry,
/// since it lands in logs and reports.
inline Failure Damage(std::string_view part, std::string_view what)
{
    std::string text(what);
    if (!part.empty())
        text = std::string(part) + ": " + text;
    return {FailureNumber::FileCorrupt, u"The file is damaged: " + FromUtf8(text)};
}

inline Failure Damage(std::string_view part, std::string_view what, std::uint64_t byteOffset)
{
    return Damage(part, std::string(what) + " (at byte " + std::to_string(byteOffset) + ")");
}

/// The failure for a file that is something else than a presentation: -2147024885.
inline Failure NotAPresentation(std::string_view what)
{
    return {FailureNumber::BadFormat, FromUtf8(what)};
}

}  // namespace tessarine::builtin
