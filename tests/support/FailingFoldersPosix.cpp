#include "support/FailingFolders.h"

#include <dirent.h>
#include <dlfcn.h>

#include <cerrno>
#include <map>
#include <optional>

namespace tessarine
{

namespace
{

std::optional<std::size_t> entriesUntilFailure;
std::map<DIR*, std::size_t> entriesRead;

}  // namespace

FailingFolders::FailingFolders(std::size_t entries)
{
    entriesUntilFailure = entries;
    entriesRead.clear();
}

FailingFolders::~FailingFolders()
{
    entriesUntilFailure.reset();
}

/// Whether this reading of the folder is to fail.
bool IsReadingToFail(DIR* folder)
{
    return entriesUntilFailure && entriesRead[folder]++ >= *entriesUntilFailure;
}

}  // namespace tessarine

/// Takes the place of the C library's own in programs that are linked with FailingFolders.
extern "C" dirent* readdir(DIR* folder)
{
    using Readdir = dirent* (*)(DIR*);
    static const auto original = reinterpret_cast<Readdir>(dlsym(RTLD_NEXT, "readdir"));
    if (!tessarine::IsReadingToFail(folder))
        return original(folder);
    errno = EIO;
    return nullptr;
}
