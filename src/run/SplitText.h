#pragma once

#include <cstddef>
#include <vector>

namespace tessarine
{

/// The pieces of a text between separators, as views of it. An empty text has none.
template <class View>
std::vector<View> SplitText(View text, View separator)
{
    std::vector<View> pieces;
    if (text.empty())
        return pieces;
    for (std::size_t end = text.find(separator); end != View::npos; end = text.find(separator)) {
        pieces.push_back(text.substr(0, end));
        text.remove_prefix(end + separator.size());
    }
    pieces.push_back(text);
    return pieces;
}

}  // namespace tessarine
