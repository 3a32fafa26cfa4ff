#pragma once

#include <string_view>

#include "office/builtin/limits/Limits.h"
#include "office/builtin/records/Record.h"
#include "platform/String.h"

namespace tessarine::builtin
{

/// Where a linked object comes from, by the moniker that its storage keeps ([MS-OLEDS] 2.3.3): the path of a file and,
/// where the link is to a part of it, "!" and the part's name. `storage` is its ExOleObjStg. Raises `InvalidRequest`
/// where nothing is told, `FileCorrupt` for a storage that can't be unpacked.
String SourceInStorage(std::string_view bytes, const Record& storage, const Limits& limits);

}  // namespace tessarine::builtin
