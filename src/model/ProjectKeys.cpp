#include "model/ProjectKeys.h"

#include <string>

#include "platform/FieldCount.h"

namespace tessarine
{

static_assert(FieldCount<RunOptions>() == StoredOptions.size() + 2,
              "an option stands in no row of StoredOptions; only IsFindOnly and PasswordToOpen are not stored");

String ItemKey(std::int32_t item)
{
    return u"Item" + FromUtf8(std::to_string(item));
}

String PropertyKey(std::int32_t number)
{
    // Spelled so in every saved project. The right spelling would not find their properties.
    return u"Propery" + FromUtf8(std::to_string(number));
}

}  // namespace tessarine
