#include "office/builtin/matching/SoughtText.h"

#include <algorithm>

#include "office/builtin/matching/TripleTable.h"
#include "platform/CaseFolding.h"

namespace tessarine::builtin
{

SoughtText::SoughtText(const String& text)
    : text_(text),
      folded_(FoldCaseLocally(text)),
      foldedWidely_(FoldCaseWidely(StringView(text))),
      hasControls_(std::ranges::any_of(text, [](char16_t unit) { return unit < 0x20; })),
      // Of the folded text, as gathered texts are folded.
      triples_(HashesOfTriples(foldedWidely_))
{
}

}  // namespace tessarine::builtin
