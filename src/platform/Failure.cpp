#include "platform/Failure.h"

#include <new>
#include <utility>

namespace tessarine
{

Failure::Failure(std::int32_t theNumber, String theDescription, String theSource)
    : number(theNumber),
      description(std::move(theDescription)),
      source(std::move(theSource)),
      what_("Error " + std::to_string(number) + " (" + ToUtf8(description) + ")")
{
}

Failure ObjectNotSet()
{
    return {FailureNumber::ObjectNotSet, u"Object variable or With block variable not set"};
}

Failure CurrentFailure()
{
    constexpr std::int32_t outOfMemory = 7;
    constexpr std::int32_t internalError = 51;
    try {
        throw;
    } catch (const Failure& failure) {
        return failure;
    } catch (const std::bad_alloc&) {
        return {outOfMemory, u"Out of memory"};
    } catch (const std::exception& exception) {
        return {internalError, FromUtf8(exception.what())};
    }
}

}  // namespace tessarine
