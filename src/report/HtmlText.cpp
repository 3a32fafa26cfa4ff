#include "report/HtmlText.h"

#include "platform/Utf16.h"
#include "platform/VisibleText.h"
#include "report/CleanText.h"

namespace tessarine
{

std::string HtmlText(StringView text)
{
    std::string html;
    html.reserve(text.size());
    for (std::size_t at = 0; at < text.size(); at += IsPairAt(text, at) ? 2 : 1) {
        const char32_t codePoint = CodePointAt(text, at);
        switch (codePoint) {
            case U'&':
                html += "&amp;";
                break;
            case U'<':
                html += "&lt;";
                break;
            case U'>':
                html += "&gt;";
                break;
            case U'"':
                html += "&quot;";
                break;
            case U'\'':
                html += "&#39;";
                break;
            default:
                AppendUtf8(html, CleanCharacter(codePoint));
        }
    }
    return html;
}

std::string HtmlName(StringView text)
{
    return HtmlText(VisibleText(text));
}

}  // namespace tessarine
