#include "model/Project.h"

#include <utility>

namespace tessarine
{

Project::Project(std::shared_ptr<powerpoint::Provider> provider)
    : CustomProperies(std::make_shared<CustomProperties>()),
      FindAndReplaceList(std::make_shared<FindAndReplaceItems>()),
      options(std::make_shared<ProjectOptions>()),
      FindAndReplaceItemsOptionSetting(std::make_shared<OptionSetting>()),
      provider_(std::move(provider))
{
    // A project that nobody has set up yet changes no file.
    options->IsFindOnly = true;
}

ProjectOwner::ProjectOwner(std::shared_ptr<powerpoint::Provider> provider)
    : project_(std::make_shared<Project>(std::move(provider)))
{
}

ProjectOwner::~ProjectOwner()
{
    // The items keep pointing at the project as long as somebody else holds them; the project lets go of the items.
    project_->FindAndReplaceList.reset();
}

}  // namespace tessarine
