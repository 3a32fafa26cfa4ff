#pragma once

#include <string_view>

#include "office/builtin/xml/EditedPart.h"
#include "platform/Failure.h"
#include "Require.h"

namespace tessarine::fuzz
{

/// What was read and edited must stay readable. Only a part with undeclared prefixes, which readers may pass over, may
/// fail when it is edited.
inline void RequireUndeclaredPrefix(std::string_view xml, const Failure& failure)
{
    const builtin::XmlDocument document(xml, "part", builtin::Limits::Small());
    Require(builtin::NamespaceFault(document).has_value(), failure.what());
}

}  // namespace tessarine::fuzz
