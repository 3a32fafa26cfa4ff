#include "office/builtin/objects/OpenFile.h"

namespace tessarine::builtin
{

const TextPattern& OpenFile::Pattern(const String& findWhat, bool matchCase, bool wholeWords)
{
    if (!pattern_ || !pattern_->IsFor(findWhat, matchCase, wholeWords))
        pattern_.emplace(findWhat, matchCase, wholeWords);
    return *pattern_;
}

const SoughtText& OpenFile::Sought(const String& text)
{
    if (!sought_ || sought_->text != text)
        sought_.emplace(text);
    return *sought_;
}

}  // namespace tessarine::builtin
