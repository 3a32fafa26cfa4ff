#include "office/builtin/objects/OpenFile.h"

namespace tessarine::builtin
{

const SoughtText& OpenFile::Sought(const String& text)
{
    // Preparing a text costs more than comparing it, and a walk asks with the same one for every shape.
    if (!sought_ || sought_->Text() != text)
        sought_.emplace(text);
    return *sought_;
}

bool OpenFile::MayKeepShapes(std::size_t count)
{
    constexpr std::size_t most = 1u << 15;  // about 4 MiB
    if (count > most - keptShapes_)
        return false;
    keptShapes_ += count;
    return true;
}

}  // namespace tessarine::builtin
