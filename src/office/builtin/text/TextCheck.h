#pragma once

#include <cstddef>
#include <string>

#include "office/builtin/xml/XmlDocument.h"
#include "office/builtin/xml/XmlEdits.h"
#include "platform/String.h"

namespace tessarine::builtin
{

/// Reads an edited text again without the rest of its part: the new paragraphs alone, inside of an element that
/// declares what the part's root declares. Outside of them the part keeps its bytes, so that with paragraphs that are
/// well-formed, use no prefix that nothing declares, and end where they should, it stays what it was (see EditedPart).
class TextCheck
{
public:
    /// `before` is the part that the texts were read from. Both are borrowed.
    TextCheck(const XmlDocument& before, const Limits& limits);

    /// Whether the text of a body (`p:txBody` of the part) reads as it should once its paragraphs have been edited.
    /// False as well where this can't be told cheaply, so that the whole part has to be read again: texts that have
    /// links or are next to characters, bodies inside of elements that declare namespaces or deep in others, parts that
    /// are near a limit, and as soon as all texts together are large or would take longer than the part.
    bool ReadsAs(Node body, const ByteEdit& paragraphs, StringView text);

private:
    bool HasUsualPlace(Node body) const;
    bool IsOfAllParagraphs(Node body, const ByteEdit& edit) const;

    const XmlDocument& before_;
    Limits limits_;          // for paragraphs
    std::string tag_;        // start tag of the element around them
    std::size_t bytesLeft_;  // to be read
    std::size_t elements_;   // of the part and of all that was read
};

}  // namespace tessarine::builtin
