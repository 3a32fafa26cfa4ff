#include "model/ProjectOptions.h"

namespace tessarine
{

const std::shared_ptr<tessarine::OptionSetting>& ProjectOptions::OptionSetting()
{
    if (!optionSetting_)
        optionSetting_ = std::make_shared<tessarine::OptionSetting>();
    return optionSetting_;
}

void ProjectOptions::PutOptionSetting(const std::shared_ptr<tessarine::OptionSetting>& value)
{
    optionSetting_ = value;
}

}  // namespace tessarine
