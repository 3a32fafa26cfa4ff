#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "office/builtin/xml/XmlDocument.h"
#include "office/builtin/xml/XmlEdits.h"
#include "platform/String.h"

namespace tessarine::builtin
{

/// Reads the edited texts of a part again without the rest of it: the paragraphs that have changed alone, and of a
/// single one the runs that have, inside of an element that declares what the part's root declares. Outside of them the
/// part keeps its bytes, so that with paragraphs that are well-formed, use no prefix that nothing declares, and end
/// where they should, it stays what it was (see EditedPart). All texts are read at one time: most are shorter than what
/// the root declares.
class TextCheck
{
public:
    /// `before` is the part that the texts were read from. It is borrowed.
    TextCheck(const XmlDocument& before, const Limits& limits);

    /// Takes the edit of a body's paragraphs (`p:txBody` of the part), which should read as `text` once it is made.
    /// False when this can't be told cheaply, so that the whole part has to be read again: texts that have links or are
    /// next to characters, bodies inside of elements that declare namespaces or deep in others, parts that are near a
    /// limit, and as soon as what has changed in all texts is large or would take longer than the part.
    bool Take(Node body, const ByteEdit& paragraphs, StringView text);

    /// Whether each of the texts that were taken reads as it should. To be asked once. False for what Take gives false
    /// for, too, where only the reading tells.
    bool AllReadAsTheyShould();

private:
    /// What has changed in a text, in an element of its own.
    struct Change {
        std::size_t begin;  // of that element, in markup_
        std::size_t end;
        String text;  // as which it should read
    };
    /// The part of an edit that has changed: whole paragraphs, or whole children of one.
    struct Middle {
        std::string_view before;
        std::string_view after;
        StringView text;
        std::string_view paragraph;  // name of the one that the children are in; "" around whole paragraphs
    };

    bool HasUsualPlace(Node body) const;
    std::optional<Middle> MiddleOf(Node body, const ByteEdit& edit, StringView text) const;

    const XmlDocument& before_;
    Limits limits_;          // for paragraphs
    std::string markup_;     // of all that is read
    std::size_t mostBytes_;  // of it
    std::string prefix_;     // of the first element that has changed
    std::vector<Change> changes_;
};

}  // namespace tessarine::builtin
