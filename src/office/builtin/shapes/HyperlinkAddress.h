#pragma once

#include <string>
#include <string_view>

#include "platform/String.h"

namespace tessarine::builtin
{

/// How a relationship's target reads as the address that PowerPoint's object model gives: web addresses as written,
/// file and relative targets with percent escapes decoded and backslashes ("file:///C:/a%20b.docx" is "C:\a b.docx").
struct TargetText {
    String address;        ///< What Hyperlink.Address or LinkFormat.SourceFullName shows.
    std::string fragment;  ///< After the first "#", as written; the sub-address.
};

/// `withFragment` false: "#" is an ordinary character (sources of linked objects).
TargetText ReadTarget(std::string_view target, bool withFragment);

/// True for an address that names a file (drive, UNC or relative path), false for one with a scheme (web, mail).
bool IsFileAddress(StringView address);

/// The target for a new address. What the address has in common with the old one at both ends keeps the bytes that
/// stand for it in the old target; the rest is written as PowerPoint writes it (file:/// before a drive or UNC path,
/// blanks as %20). Raises as CheckAddressLength.
std::string WriteTarget(std::string_view oldTarget, StringView address, bool withFragment);

}  // namespace tessarine::builtin
