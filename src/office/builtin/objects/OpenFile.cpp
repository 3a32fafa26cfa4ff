#include "office/builtin/objects/OpenFile.h"

namespace tessarine::builtin
{

const SoughtText& OpenFile::Sought(const String& text)
{
    if (!sought_ || sought_->Text() != text)
        sought_.emplace(text);
    return *sought_;
}

}  // namespace tessarine::builtin
