#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "office/builtin/xml/XmlDocument.h"
#include "office/builtin/xml/XmlEdits.h"

namespace tessarine::builtin
{

/// A part with its edits made, read again before anything of it is saved. What escaping, references, CDATA sections and
/// the like could do to an edit shows here, whatever made it: markup that ends too late or too early, an attribute that
/// became two, a prefix that nothing declares.
class EditedPart
{
public:
    /// Makes the edits in the bytes of a document. Raises `FileCorrupt` when two edits meet, when the document had
    /// undeclared prefixes before, and, saying that nothing was saved, unless
    /// - the new part is well-formed, and all its prefixes are declared,
    /// - outside of the edits it has the elements that it had, at the same bytes and in one another as before,
    /// - each edit brings in whole elements, or changes one start tag. The edits of XML that the engine makes are
    ///   either of these, or lie within one start tag or one element's characters.
    EditedPart(const XmlDocument& before, std::vector<ByteEdit> edits, std::string_view part, const Limits& limits);

    const std::string& Bytes() const { return bytes_; }
    const XmlDocument& Document() const { return document_; }  ///< Of the new bytes.

private:
    std::string bytes_;
    XmlDocument document_;  // borrows bytes_
};

/// What is wrong with a document's prefixes, as the text of a failure: an element or attribute has one that is not
/// declared, or two attributes of an element are the same one under two prefixes (Namespaces in XML 1.0, 5 and 6.3).
/// Nothing when all is well. Linear in the size of the document.
std::optional<std::string> NamespaceFault(const XmlDocument& document);

}  // namespace tessarine::builtin
