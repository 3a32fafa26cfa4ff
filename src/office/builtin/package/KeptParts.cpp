#include "office/builtin/package/KeptParts.h"

#include <utility>

namespace tessarine::builtin
{

void KeptParts::Use(Part& part)
{
    if (last_ == &part)
        return;
    if (last_ != nullptr) {
        if (bytes_ + last_->KeptBytes() > mostBytes_)
            last_->LetGo();
        last_->counted_ = last_->KeptBytes();
        bytes_ += last_->counted_;
    }
    last_ = &part;
    bytes_ -= std::exchange(part.counted_, 0);
}

void KeptParts::Forget(Part& part)
{
    bytes_ -= part.counted_;
    if (last_ == &part)
        last_ = nullptr;
}

}  // namespace tessarine::builtin
