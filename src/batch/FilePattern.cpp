#include "batch/FilePattern.h"

#include "platform/CaseFolding.h"

namespace tessarine::batch
{

FilePattern::FilePattern(StringView pattern) : stem_(ToUpper(pattern.substr(0, pattern.rfind(u'.'))))
{
    const std::size_t dot = pattern.rfind(u'.');
    // Without a dot the pattern is for the whole name, whatever its extension.
    if (dot != StringView::npos)
        extension_.emplace(ToUpper(pattern.substr(dot + 1)));
}

bool FilePattern::Matches(StringView fileName) const
{
    const String name = ToUpper(fileName);
    if (!extension_)
        return stem_.Matches(name);
    const std::size_t dot = name.rfind(u'.');
    return dot != String::npos && stem_.Matches(StringView(name).substr(0, dot)) &&
           extension_->Matches(StringView(name).substr(dot + 1));
}

}  // namespace tessarine::batch
