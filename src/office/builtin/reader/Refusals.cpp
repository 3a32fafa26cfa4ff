#include "office/builtin/reader/Refusals.h"

namespace tessarine::builtin
{

Failure NoHeaderFooter()
{
    return {FailureNumber::InvalidRequest, u"The page shows no such header or footer"};
}

Failure NoHyperlink()
{
    return {FailureNumber::InvalidRequest, u"The hyperlink is gone, as the text was that carried it"};
}

Failure PropertyHasNoValue(StringView name)
{
    return {FailureNumber::Unspecified, u"The document property \"" + String(name) + u"\" has no value"};
}

Failure PropertyCannotChange(StringView name)
{
    return {FailureNumber::Unspecified, u"The document property \"" + String(name) + u"\" can't be changed"};
}

Failure NoPlaceForProperty()
{
    return {FailureNumber::Unspecified, u"A file of this kind has no place for this document property"};
}

}  // namespace tessarine::builtin
