#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "office/builtin/matching/GapBuffer.h"
#include "platform/String.h"

namespace tessarine::builtin
{

/// An element's content while its text is edited, many times and mostly from front to back. An edit costs what it
/// changes and the way from the edit before, however long the content is.
///
/// What stands between the characters (CDATA marks, comments) stays, unless characters that come together mean
/// something else there; then the content is written anew from its text.
class ContentEditor
{
public:
    /// Raises `FileCorrupt` for markup that does not end.
    explicit ContentEditor(const std::string& content);

    std::size_t Size() const;  ///< UTF-16 units of its text.

    /// Replaces units of the text. Raises `FileCorrupt` when there are fewer.
    void Replace(std::size_t offset, std::size_t count, StringView with);

    /// Takes the units in front of an offset away and gives them as content of their own.
    std::string TakeFront(std::size_t offset);

    void AppendTo(std::string& bytes) const;  ///< The content as it is now.
    std::size_t KeptBytes() const;            ///< What it takes of memory.

private:
    /// A unit of the text by its bytes. They follow those of the unit in front; the second half of a pair has none.
    struct Unit {
        std::uint32_t before = 0;  // bytes in front of it that stand for no character
        std::uint32_t size = 0;    // its own
        char16_t unit = 0;
        bool inCData = false;
    };

    void MoveTo(std::size_t offset);
    /// Whether the edits so far leave the bytes of units [from, to) reading as these units.
    bool ReadsRight(std::size_t from, std::size_t to) const;
    String TextOf(std::size_t from, std::size_t to) const;
    /// The place of a unit's first byte, of those that stand in front of it.
    std::size_t ByteOf(std::size_t offset) const;
    void WriteAnew();  ///< From now on the text alone is kept.

    GapBuffer<std::vector<Unit>> units_;
    GapBuffer<std::string> bytes_;
    std::size_t at_ = 0;                     // where the last edit was, in units
    std::size_t byteAt_ = 0;                 // the same in bytes
    bool isMixed_ = false;                   // a character's bytes have marks in them
    std::optional<GapBuffer<String>> text_;  // in place of both, once the content is written anew
};

}  // namespace tessarine::builtin
