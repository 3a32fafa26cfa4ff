#include "app/GlobalState.h"

namespace tessarine
{

std::shared_ptr<Project> CurrentProject;
String CurrentLanguageFile;
bool IsSearchRun = false;

}  // namespace tessarine
