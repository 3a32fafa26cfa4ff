#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "office/builtin/text/ContentEditor.h"
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
    bool isRemoved = false;  ///< Its element is gone; the number of the link still counts.
};

/// Run properties taken out of a text.
struct RunProperties {
    std::string bytes;             ///< The element; "" for none.
    std::vector<PieceLink> links;  ///< With their places in `bytes`.
    NamespaceScope scope;          ///< What the text declares around the element.

    /// A link goes with its text.
    void DropLinks();

    /// The mark of a word that the spelling check has not found (err="1") says nothing of another text.
    void DropErrorMark();
};

/// A child of a paragraph, or what stands between two of them, to be edited: its bytes as they stand in the part, and
/// where in them an edit finds what it needs.
struct TextPiece {
    PieceKind kind = PieceKind::Gap;
    std::string bytes = {};
    Span content = {};                  ///< Of the a:t; both 0 when there is none to write into.
    bool hasElementsInContent = false;  ///< Which are skipped (see InnerElements).
    Span properties = {};               ///< a:rPr, or the whole a:endParaRPr; both 0 without.
    std::vector<PieceLink> links = {};  ///< Click before hover.
    NamespaceScope scope = {};          ///< What its own start tag declares.
    std::size_t length = 0;             ///< UTF-16 units.
    /// Null while the content is among the bytes. An edited one is kept apart until Close, so that a next edit of it
    /// costs no more than it changes.
    std::unique_ptr<ContentEditor> editor = nullptr;
    bool hasErrorMark = true;  ///< Its properties may have the mark of RunProperties::DropErrorMark.

    /// A child of a paragraph, with a copy of its bytes.
    static TextPiece Read(const XmlDocument& document, Node child);

    /// The same piece once more, for one whose content is not edited.
    TextPiece Copy() const;

    void AppendBytes(std::string& target) const;    ///< With the content as it is now.
    void AppendContent(std::string& target) const;  ///< The content alone.
    /// A copy of its run properties, to be put elsewhere; `around` is what its paragraph declares.
    RunProperties Properties(const NamespaceScope& around) const;

    /// Replaces units of the content in its bytes. What stands between the replaced characters (CDATA marks, comments)
    /// stays, unless the characters that come together mean something else there: then the content is written anew.
    /// The run's error mark goes. Raises `FileCorrupt` when the content has fewer units.
    void ReplaceUnits(std::size_t offset, std::size_t count, StringView with);
    void Close();  ///< Puts edited content back among the bytes.

    /// Takes the units in front of an offset into a piece of its own with the same properties.
    TextPiece TakeFront(std::size_t offset);

    /// Leads one of the piece's own links elsewhere.
    void Retarget(PieceLink& link, const LinkTarget& target);
    void RemoveLink(PieceLink& link);  ///< The text stays.

    /// Declares namespaces on the piece's element.
    void Declare(const NamespaceScope& needed);

private:
    void Open();
    void DropErrorMark();
    void Splice(Span where, std::string_view text);
};

}  // namespace tessarine::builtin
