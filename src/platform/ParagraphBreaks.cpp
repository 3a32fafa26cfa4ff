#include "platform/ParagraphBreaks.h"

namespace tessarine
{

String WithParagraphBreaks(StringView text)
{
    String paragraphs;
    paragraphs.reserve(text.size());
    for (std::size_t at = 0; at < text.size(); ++at) {
        // The CR in front has given the paragraph break.
        const bool isRestOfLineEnd = text[at] == u'\n' && at > 0 && text[at - 1] == u'\r';
        if (!isRestOfLineEnd)
            paragraphs += text[at] == u'\n' ? u'\r' : text[at];
    }
    return paragraphs;
}

}  // namespace tessarine
