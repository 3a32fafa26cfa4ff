#pragma once

#include <sys/stat.h>

#include "files/FileState.h"

namespace tessarine
{

FileState StateFrom(const struct ::stat& status);
FileFacts StatusFrom(const struct ::stat& status, Look look);

}  // namespace tessarine
