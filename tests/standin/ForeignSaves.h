#pragma once

#include <filesystem>
#include <memory>

#include "model/PowerPoint.h"

namespace tessarine::standin
{

/// The provider's presentations as another program has them: it knows nothing of this system's locks, works on a copy
/// in `folder`, and puts a new file into the old one's place when it saves.
std::shared_ptr<powerpoint::Provider> WithForeignSaves(std::shared_ptr<powerpoint::Provider> provider,
                                                       std::filesystem::path folder);

}  // namespace tessarine::standin
