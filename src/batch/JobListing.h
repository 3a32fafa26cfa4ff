#pragma once

#include <string>

#include "platform/String.h"

namespace tessarine
{
class Project;
}

namespace tessarine::batch
{

/// What a saved job holds, as lines for people. `path` is the job's file as it was named.
std::string JobAsText(const String& path, const Project& project);

/// The same as one JSON object on one line: "job", "list", "items", "files", "options", "customProperties". Bytes that
/// are not UTF-8 become U+FFFD.
std::string JobAsJson(const String& path, const Project& project);

}  // namespace tessarine::batch
