#pragma once

namespace tessarine
{
class Project;
}

namespace tessarine::batch
{

struct BatchCall;

/// Gives a fresh project the pairs and options of a find or replace. The pairs share one OptionSetting.
void FillProject(Project& project, const BatchCall& call);

}  // namespace tessarine::batch
