#pragma once

#include "platform/Failure.h"

/// The failures that a reader and the objects raise alike, with PowerPoint's numbers.
namespace tessarine::builtin
{

/// `InvalidRequest`: the page shows no such header or footer. The search of footers goes on at the next slide after
/// this number, and ends at any other, so that nothing else about a header or footer may raise it.
Failure NoHeaderFooter();

/// `InvalidRequest`: a hyperlink that was removed, or went with the text around it.
Failure NoHyperlink();

/// `Unspecified`: a document property that has no value, or can't be changed.
Failure PropertyHasNoValue(StringView name);
Failure PropertyCannotChange(StringView name);

/// `Unspecified`: the file holds no such document property, and can't.
Failure NoPlaceForProperty();

/// `PermissionDenied`: an edited file with a digital signature that is to be kept.
Failure SignatureKept();

/// Warnings of a save.
inline constexpr StringView signaturesRemoved = u"its digital signatures were removed, as its content was changed";
inline constexpr StringView finalChanged = u"is marked as final by its author, and was changed all the same";

/// Raises `BadArgument` for an address of a hyperlink, or the source of an object, of more than 2,083 units: PowerPoint
/// would want to repair the file.
void CheckAddressLength(StringView address, bool isHyperlink);

}  // namespace tessarine::builtin
