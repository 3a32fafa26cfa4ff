#include "app/GlobalState.h"

namespace tessarine
{

std::shared_ptr<Project> CurrentProject;
String CurrentLanguageFile;
bool IsSearchRun = false;
bool IsBuiltInEngine = false;

}  // namespace tessarine
