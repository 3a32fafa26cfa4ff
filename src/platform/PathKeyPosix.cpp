#include "platform/PathKey.h"

namespace tessarine
{

String PathKey(StringView path)
{
    return String(path);
}

}  // namespace tessarine
