#include "batch/WriteText.h"

namespace tessarine::batch
{

bool WriteText(std::FILE* stream, std::string_view text)
{
    const bool written = std::fwrite(text.data(), 1, text.size(), stream) == text.size();
    const bool flushed = std::fflush(stream) == 0;
    return written && flushed;  // a full disk shows at the flush
}

}  // namespace tessarine::batch
