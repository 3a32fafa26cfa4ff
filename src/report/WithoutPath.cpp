#include "report/WithoutPath.h"

#include <algorithm>

namespace tessarine
{

namespace
{

/// A path in a text, with the quotes around it.
struct Mention {
    std::size_t begin;
    std::size_t end;
};

/// Whether the path could go on after this: a dot, or a colon, may be the end of the sentence or of its first part.
bool EndsAPath(StringView rest)
{
    if (rest.empty() || rest.front() == u' ' || rest.front() == u'"')
        return true;
    const bool isPunctuation = StringView(u".,:;)").find(rest.front()) != StringView::npos;
    return isPunctuation && (rest.size() == 1 || rest[1] == u' ');
}

Mention FindMention(StringView text, StringView path, std::size_t from)
{
    for (std::size_t at = text.find(path, from); at != StringView::npos; at = text.find(path, at + 1)) {
        const std::size_t end = at + path.size();
        const bool isQuoted = at > 0 && text[at - 1] == u'"' && text.substr(end).starts_with(u'"');
        if (isQuoted)
            return {at - 1, end + 1};
        if ((at == 0 || text[at - 1] == u' ') && EndsAPath(text.substr(end)))
            return {at, end};
    }
    return {StringView::npos, StringView::npos};
}

}  // namespace

String WithoutPath(StringView text, StringView path)
{
    String result;
    std::size_t copied = 0;
    while (!path.empty()) {
        Mention mention = FindMention(text, path, copied);
        if (mention.begin == StringView::npos)
            break;
        result += text.substr(copied, mention.begin - copied);
        StringView rest = text.substr(mention.end);
        if (result.empty() && rest.starts_with(u": ")) {
            rest.remove_prefix(2);  // "/decks/a.pptx: The file is damaged"
        } else if (result.ends_with(u": ") && rest.empty()) {
            result.resize(result.size() - 2);  // "The file ends too early: /decks/a.pptx"
        } else if (result.empty()) {
            result = u"The file";  // ""/decks/a.pptx" is in use"
        } else if (result.ends_with(u"The file ") || result.ends_with(u") ")) {
            // "The file /decks/a.pptx is in the way", "Can't open (it is locked) "/decks/a.pptx": Text file busy".
            if (rest.starts_with(u' '))
                rest.remove_prefix(1);
            else if (result.ends_with(u' '))
                result.pop_back();
        } else {
            result += u"it";
        }
        copied = text.size() - rest.size();
    }
    result += text.substr(copied);
    return result;
}

}  // namespace tessarine
