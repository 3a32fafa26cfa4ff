#pragma once

#include <memory>

#include "batch/BatchCall.h"
#include "platform/String.h"

namespace tessarine
{
class FindAndReplaceItems;
}

namespace tessarine::batch
{

/// Whether --pairs takes a file of this name, by its extension: .csv, .tsv, .tab, .json, .xlsx or .xls, whatever the
/// case.
bool IsPairFileName(StringView path);

/// Whether a name is that of a file that holds pairs without 18 columns, whatever is in it: .json or .tsv.
bool IsPlainPairsName(StringView path);

/// The pairs of a file as its name asks for, or of standard input for "-": JSON when its first character but blanks is
/// "[" or "{", otherwise separated by tabs when its first line has one, or else by commas. A pair without places of its
/// own is looked for where --in would be without a word. Refuses (Refusal.h) what is not a file of pairs, with the
/// line, and a pair without a new text unless the command is a find.
std::shared_ptr<FindAndReplaceItems> LoadPairs(const String& path, Command command);

/// Writes pairs to a file of plain pairs (IsPlainPairsName), an older one is replaced. Raises what ReplacementFile
/// does.
void SavePairs(const String& path, const FindAndReplaceItems& list);

}  // namespace tessarine::batch
