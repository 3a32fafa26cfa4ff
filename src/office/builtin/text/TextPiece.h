#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "office/builtin/text/LinkElement.h"
#include "office/builtin/text/TextMarkup.h"
#include "office/builtin/xml/NamespaceScope.h"
#include "platform/String.h"

namespace tessarine::builtin
{

/// Bytes [begin, end) of a piece of markup.
struct Span {
    std::size_t begin = 0;
    std::size_t end = 0;
};

/// A link element in run properties.
struct PieceLink {
    Span place;
    bool isHover = false;
    std::string idName;  ///< Qualified name of its relationship id.
    LinkTarget target;
};

/// Run properties taken out of a text.
struct RunProperties {
    std::string bytes;             ///< The element; "" for none.
    std::vector<PieceLink> links;  ///< With their places in `bytes`.
    NamespaceScope scope;          ///< What the text declares around the element.

    /// A link goes with its text.
    void DropLinks();
};

/// A child of a paragraph, or what stands between two of them: its bytes as they stand in the part, and where in them
/// an edit finds what it needs.
struct TextPiece {
    PieceKind kind = PieceKind::Gap;
    std::string bytes = {};
    Span content = {};                  ///< Of the a:t; both 0 when there is none to write into.
    bool hasElementsInContent = false;  ///< Which are skipped (see InnerElements).
    Span properties = {};               ///< a:rPr, or the whole a:endParaRPr; both 0 without.
    std::vector<PieceLink> links = {};  ///< Click before hover.
    NamespaceScope scope = {};          ///< What its own start tag declares.
    std::size_t length = 0;             ///< UTF-16 units.

    /// A child of a paragraph, with a copy of its bytes.
    static TextPiece Read(const XmlDocument& document, Node child);

    /// True for what shows characters: a run or field that is not empty.
    bool IsText() const { return length > 0 && kind != PieceKind::Break; }

    std::string_view Content() const
    {
        return std::string_view(bytes).substr(content.begin, content.end - content.begin);
    }
    /// A copy of its run properties, to be put elsewhere; `around` is what its paragraph declares.
    RunProperties Properties(const NamespaceScope& around) const;

    /// Replaces units of the content in its bytes. What stands between the replaced characters (CDATA marks, comments)
    /// stays, unless the characters that come together mean something else there: then the content is written anew.
    /// Raises `FileCorrupt` when the content has fewer units.
    void ReplaceUnits(std::size_t offset, std::size_t count, StringView with);

    /// Leads one of the piece's own links elsewhere.
    void Retarget(PieceLink& link, const LinkTarget& target);
    void RemoveLink(std::size_t link);  ///< By its index in `links`; the text stays.

    /// Declares namespaces on the piece's element.
    void Declare(const NamespaceScope& needed);

private:
    void Splice(Span where, std::string_view text);
};

}  // namespace tessarine::builtin
