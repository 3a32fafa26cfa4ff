#include "platform/Failure.h"

#include <new>
#include <utility>

namespace tessarine
{

Failure::Failure(std::int32_t theNumber, String theDescription, String theSource)
    : number(theNumber),
      description(std::move(theDescription)),
      source(std::move(theSource)),
      reason_(description),
      what_("Error " + std::to_string(number) + " (" + ToUtf8(description) + ")")
{
}

String Failure::Reason() const
{
    return reason_.empty() ? u"Error " + FromUtf8(std::to_string(number)) : reason_;
}

Failure Failure::RaisedOn(String theDescription, String theSource) const
{
    Failure raisedOn(number, std::move(theDescription), std::move(theSource));
    // Without this the text around the text would become the reason, and the first cause would be lost.
    raisedOn.reason_ = reason_;
    return raisedOn;
}

Failure ObjectNotSet()
{
    return {FailureNumber::ObjectNotSet, u"Object variable or With block variable not set"};
}

Failure CurrentFailure()
{
    // Thrown once more only to sort it by its type.
    try {
        throw;
    } catch (const Failure& failure) {
        return failure;
    } catch (const std::bad_alloc&) {
        return {FailureNumber::OutOfMemory, u"Out of memory"};
    } catch (const std::exception& exception) {
        return {FailureNumber::InternalError, FromUtf8(exception.what())};
    } catch (...) {
        return {FailureNumber::InternalError, u"An exception of an unknown kind"};
    }
}

}  // namespace tessarine
