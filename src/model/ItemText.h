#pragma once

#include "model/FindAndReplaceItem.h"
#include "platform/String.h"

/// What a list of pairs shows of a pair beside its two texts.
namespace tessarine
{

/// The locations that are on, with "," between them and no blank. "Header" stands twice: at its place, and once more
/// after "Footer". Empty with no location on.
String CreateLocationString(const FindAndReplaceItem& item);

/// The options that are on, in the same form.
String CreateOptionStrin(const FindAndReplaceItem& item);

/// "Normal Search" for a SearchMethod of 0, empty for any other.
String CreateSearchType(const FindAndReplaceItem& item);

}  // namespace tessarine
