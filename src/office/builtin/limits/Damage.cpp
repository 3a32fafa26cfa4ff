#include "office/builtin/limits/Damage.h"

#include <string>

namespace tessarine::builtin
{

Failure Damage(std::string_view part, std::string_view what)
{
    std::string text(what);
    if (!part.empty())
        text = std::string(part) + ": " + text;
    return {FailureNumber::FileCorrupt, u"The file is damaged: " + FromUtf8(text)};
}

Failure Damage(std::string_view part, std::string_view what, std::uint64_t byteOffset)
{
    return Damage(part, std::string(what) + " (at byte " + std::to_string(byteOffset) + ")");
}

Failure FailedEdit(std::string_view part, std::string_view what)
{
    return {FailureNumber::FileCorrupt,
            u"The file was not saved, because a change would have damaged " + FromUtf8(part) + u": " + FromUtf8(what)};
}

Failure NotAPresentation(std::string_view what)
{
    return {FailureNumber::BadFormat, FromUtf8(what)};
}

}  // namespace tessarine::builtin
