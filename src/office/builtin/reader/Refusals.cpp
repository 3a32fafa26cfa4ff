#include "office/builtin/reader/Refusals.h"

#include "log/Warnings.h"

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

Failure SignatureKept()
{
    return {FailureNumber::PermissionDenied,
            u"The file has a digital signature, which a change would remove; it was left as it is."};
}

void CheckAddressLength(StringView address, bool isHyperlink)
{
    constexpr std::size_t longest = 2083;
    if (address.size() > longest)
        throw Failure(FailureNumber::BadArgument, String(isHyperlink ? u"The new address" : u"The new source") +
                                                      u" is too long: it has " + NumeralOf(address.size()) +
                                                      u" characters, and PowerPoint takes at most " +
                                                      NumeralOf(longest));
}

}  // namespace tessarine::builtin
