#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/String.h"

namespace tessarine
{
class FindAndReplaceItems;
class Project;
}  // namespace tessarine

namespace tessarine::batch
{

struct BatchCall;

/// Whether a name ends as that of a list file does, whatever the case.
bool IsListName(StringView path);

/// Why the last import or export of `list` was refused or failed, for the end of a line; empty when it was not.
String ImportReason(const FindAndReplaceItems& list, const String& path);

/// The pairs of a list file, all of them. Refuses (Refusal.h) a list that can't be read to its end.
std::shared_ptr<FindAndReplaceItems> LoadList(const String& path);

/// Gives a project the pairs of the call's list file or file of pairs, without those that have no text to look for. A
/// pair is looked for in its own places, or in the call's when the call names some; the call's switches hold for every
/// pair besides its own. A find takes no new texts. Gives what the user should know before a run, a line each. Refuses
/// as LoadList or LoadPairs, and also a list without a pair, or with one whose replacement never ends.
std::vector<std::string> TakeListPairs(Project& project, const BatchCall& call);

/// What became of a list that was written in another format.
struct ConvertedList {
    std::int64_t pairs = 0;
    std::string loss;  ///< Not empty: the new file does not read back as the same list, and why.
};

/// Reads a list file or a file of pairs and writes it as another, in the format that the name asks for. Refuses
/// (Refusal.h) what is not possible; an older file stays then.
ConvertedList ConvertList(const String& from, const String& to);

}  // namespace tessarine::batch
