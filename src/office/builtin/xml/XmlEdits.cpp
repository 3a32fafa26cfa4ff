#include "office/builtin/xml/XmlEdits.h"

#include <algorithm>

#include "office/builtin/limits/Damage.h"

namespace tessarine::builtin
{

std::string ApplyEdits(std::string_view bytes, std::vector<ByteEdit> edits)
{
    std::ranges::stable_sort(edits, {}, &ByteEdit::begin);
    std::size_t size = bytes.size();
    for (const ByteEdit& edit : edits)
        size += edit.text.size();
    std::string result;
    result.reserve(size);
    std::size_t copied = 0;
    for (const ByteEdit& edit : edits) {
        // Better no file than one in which one of two edits of a place is lost.
        if (edit.begin < copied || edit.end < edit.begin || edit.end > bytes.size())
            throw Damage({}, "two edits meet", edit.begin);
        result.append(bytes, copied, edit.begin - copied);
        result += edit.text;
        copied = edit.end;
    }
    result.append(bytes, copied);
    return result;
}

}  // namespace tessarine::builtin
