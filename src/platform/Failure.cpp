#include "platform/Failure.h"

#include <new>
#include <utility>

namespace tessarine
{

Failure::Failure(std::int32_t number, String description, String source)
    : number(number),
      description(std::move(description)),
      source(std::move(source)),
      what_("Error " + std::to_string(number) + " (" + ToUtf8(this->description) + ")")
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
