#include "office/builtin/reader/Refusals.h"

namespace tessarine::builtin
{

Failure NoHeaderFooter()
{
    return {FailureNumber::InvalidRequest, u"HeaderFooter (unknown member) : Invalid request."};
}

Failure NoHyperlink()
{
    return {FailureNumber::InvalidRequest, u"Hyperlink (unknown member) : The link does not exist any more."};
}

Failure UnspecifiedError()
{
    return {FailureNumber::Unspecified, u"Unspecified error"};
}

}  // namespace tessarine::builtin
