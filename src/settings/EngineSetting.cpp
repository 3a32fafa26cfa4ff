#include "settings/EngineSetting.h"

#include "platform/ProgramInfo.h"
#include "settings/SettingsStore.h"

namespace tessarine
{

namespace
{

const String engineSection = u"Engine";
const String builtInKey = u"BuiltIn";
const String agreed = u"1";

}  // namespace

bool IsBuiltInEngineAgreed()
{
    return GetSetting(String(ApplicationTitle), engineSection, builtInKey) == agreed;
}

void RememberBuiltInEngine()
{
    SaveSetting(String(ApplicationTitle), engineSection, builtInKey, agreed);
}

}  // namespace tessarine
