#include "files/FileLock.h"

namespace tessarine
{

bool IsLockFileName(StringView name)
{
    return name.starts_with(u"~$") || (name.starts_with(u".~lock.") && name.ends_with(u'#'));
}

}  // namespace tessarine
