#pragma once

#include <string_view>
#include <vector>

#include "office/builtin/limits/Limits.h"
#include "office/builtin/records/Record.h"
#include "platform/String.h"

namespace tessarine::builtin
{

/// The names of designs by their main masters: the name of the template that a master was made from, else that of the
/// theme that later versions keep with it, else an invented one that no other design has.
std::vector<String> NamesOfDesigns(std::string_view bytes, const std::vector<Record>& masters, const Limits& limits);

}  // namespace tessarine::builtin
