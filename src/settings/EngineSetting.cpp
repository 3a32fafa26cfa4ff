#include "settings/EngineSetting.h"

#include "platform/ProgramInfo.h"
#include "settings/SettingsStore.h"

namespace tessarine
{

namespace
{

const String section = u"Engine";
const String key = u"BuiltIn";
const String agreed = u"1";

}  // namespace

bool IsBuiltInEngineAgreed()
{
    return GetSetting(String(ApplicationTitle), section, key) == agreed;
}

void RememberBuiltInEngine()
{
    SaveSetting(String(ApplicationTitle), section, key, agreed);
}

}  // namespace tessarine
