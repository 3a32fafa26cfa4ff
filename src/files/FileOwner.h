#pragma once

#include <string>

namespace tessarine
{

/// The owner (FileFacts::owner) of the files that this process makes.
std::string OwnerOfNewFiles();

/// The owner that files of the superuser have, on Windows of its administrators.
std::string OwnerOfSuperuser();

/// Whether an owner is this process's user. On Windows also the one that new files of the process get, which for an
/// administrator is a group.
bool IsThisUser(const std::string& owner);

/// Whether an owner is one whom everybody has to trust: the superuser; on Windows the system and its administrators.
bool IsSuperuser(const std::string& owner);

}  // namespace tessarine
