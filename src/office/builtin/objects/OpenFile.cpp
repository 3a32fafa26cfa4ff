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

}  // namespace tessarine::builtin
