#include "batch/FailureReason.h"

#include <optional>

namespace tessarine::batch
{

namespace
{

constexpr StringView opening = u"Error ";
constexpr StringView closing = u") in procedure ";

/// The text inside one layer of "Error number (text) in procedure name at Line No. …", or nothing when there is no
/// layer. The layer closes at its last ") in procedure ", as the layers inside it hold theirs before that.
std::optional<StringView> InsideOf(StringView text)
{
    if (!text.starts_with(opening))
        return {};
    const std::size_t digits = text.find_first_not_of(u"-0123456789", opening.size());
    if (digits == StringView::npos || digits == opening.size() || !text.substr(digits).starts_with(u" ("))
        return {};
    const std::size_t start = digits + 2;
    const std::size_t end = text.rfind(closing);
    if (end == StringView::npos || end < start || text.find(u" at Line No. ", end) == StringView::npos)
        return {};
    return text.substr(start, end - start);
}

}  // namespace

String ReasonOf(const Failure& failure)
{
    StringView text = failure.description;
    while (const auto inside = InsideOf(text))
        text = *inside;
    if (!text.empty())
        return String(text);
    return u"Error " + FromUtf8(std::to_string(failure.number));
}

}  // namespace tessarine::batch
