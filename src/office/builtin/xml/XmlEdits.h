#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tessarine::builtin
{

/// Bytes [begin, end) of a part give way to `text`: an insertion when the two are equal, a removal when it is "".
struct ByteEdit {
    std::size_t begin;  ///< Offset in the bytes before any edit.
    std::size_t end;
    std::string text;  ///< Markup, escaped already.
};

/// The part with the edits made. Edits may come in any order and may not overlap; those at one place keep their order.
/// Raises `FileCorrupt` when two overlap or one lies outside of the bytes.
std::string ApplyEdits(std::string_view bytes, std::vector<ByteEdit> edits);

}  // namespace tessarine::builtin
