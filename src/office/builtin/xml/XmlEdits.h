#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tessarine::builtin
{

/// Bytes [begin, end) of a part give way to `text`.
struct ByteEdit {
    std::size_t begin;
    std::size_t end;
    std::string text;
};

/// The part with the edits made. Edits may come in any order and may not overlap; those at one place keep their order.
std::string ApplyEdits(std::string_view bytes, std::vector<ByteEdit> edits);

}  // namespace tessarine::builtin
