#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "office/builtin/xml/XmlDocument.h"

/// The link elements of shapes and runs: a:hlinkClick, a:hlinkHover, a:hlinkMouseOver (ECMA-376 21.1.2.3.5).
namespace tessarine::builtin
{

/// Where a link element leads, by its attributes; "" for those that are absent.
struct LinkTarget {
    std::string relationshipId;  ///< r:id of the relationship whose target is the address.
    std::string action;          ///< What kind of link it is: "ppaction://hlinksldjump", "" for an ordinary one.
    std::string invalidUrl;      ///< The address, when it isn't a valid URI and so can't be a target.
    std::string tooltip;         ///< Tells one link from the next, but is never changed.

    bool operator==(const LinkTarget&) const = default;
};

/// False only when no link element is in the markup: the name of each begins with "hlink".
bool MayHoldLinks(std::string_view markup);

LinkTarget ReadLinkTarget(const XmlDocument& document, Node element);

/// Puts a new target into the start tag of a link element. Attributes in which the two are alike keep their bytes.
/// `idName` is the qualified name of the relationship id there.
void Retarget(std::string& startTag, std::string_view idName, const LinkTarget& before, const LinkTarget& after);

/// The link elements that a person sees as one link.
struct LinkRecord {
    LinkTarget target;
    std::optional<std::size_t> body;  ///< Index of the shape's text that it stands in.

    /// For a link of a body, the numbers of its elements among the body's, from 0; otherwise the offsets of their "<"
    /// in the part. Empty for a link that is gone.
    std::vector<std::size_t> elements;
};

/// Joins the link elements of a text to links, run by run: neighbouring runs with the same target are one link, also
/// across a line break.
class LinkJoiner
{
public:
    explicit LinkJoiner(std::vector<LinkRecord>& links, std::optional<std::size_t> body = {})
        : links_(links), body_(body)
    {
    }

    struct Found {
        LinkTarget target;
        std::size_t element;  ///< As in LinkRecord.
    };

    void BeginParagraph();  ///< No link goes over the end of a paragraph.
    /// The next run, field or line break of the paragraph, with what it has of the two kinds.
    void AddRun(bool isBreak, const std::optional<Found>& click, const std::optional<Found>& hover);

private:
    void Follow(std::optional<std::size_t>& current, bool isBreak, const std::optional<Found>& found);

    std::vector<LinkRecord>& links_;
    std::optional<std::size_t> body_;
    std::optional<std::size_t> click_;  // index of the link that the run in front belongs to
    std::optional<std::size_t> hover_;
};

}  // namespace tessarine::builtin
