#pragma once

#include <memory>

#include "model/OptionSetting.h"
#include "platform/String.h"

namespace tessarine
{

class Project;

/// One find/replace pair. The texts are held unchanged; setting a reference replaces it and copies nothing.
struct FindAndReplaceItem {
    /// The options of this pair, made with it. May be shared with other pairs.
    std::shared_ptr<tessarine::OptionSetting> OptionSetting = std::make_shared<tessarine::OptionSetting>();

    /// The project that the pair belongs to, may be null. The circle project, list, item, project is opened by the
    /// project's owner, see ProjectOwner.
    std::shared_ptr<tessarine::Project> Project;

    String ReplaceWith;  ///< May be empty: what is found is deleted.
    String FindWhat;     ///< Taken literally. With an empty one nothing is looked for.
};

}  // namespace tessarine
