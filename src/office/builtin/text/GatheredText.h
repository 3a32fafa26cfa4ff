#pragma once

#include <optional>
#include <string_view>

#include "platform/String.h"

namespace tessarine::builtin
{

/// All text of a part with a shape tree (slide, notes page, master, layout), case folded, one run after the other as
/// they are in the part and with nothing in between: what a PartFilter asks for. It is gathered from the part's UTF-8
/// without a look at the structure, at a fraction of what reading the shapes costs.
///
/// What a shape's text holds is in it, except what spans a paragraph or line break. Nothing comes back for a part where
/// that can't be told without its structure:
/// - characters that XML can't hold, an "&" without a reference; reading the part tells what is wrong with it;
/// - markup that is not balanced, comments, CDATA sections, processing instructions, document types;
/// - text elements (a:t) under two names, or elsewhere than as the one text of a run (a:r) or field (a:fld) that has
///   nothing but properties without text beside it;
/// - text with elements, with escapes of control characters, or with CR.
std::optional<String> GatherText(std::string_view xml);

}  // namespace tessarine::builtin
