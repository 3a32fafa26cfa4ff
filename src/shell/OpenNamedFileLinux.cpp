#include "shell/OpenNamedFile.h"

#include <filesystem>
#include <fstream>
#include <system_error>

#include <QDir>

#include "i18n/QtText.h"
#include "platform/NativePath.h"

namespace tessarine
{

namespace
{

bool IsReadable(const std::filesystem::path& path, bool isFolder)
{
    if (!isFolder)
        return std::ifstream(path).is_open();
    std::error_code error;
    const std::filesystem::directory_iterator entries(path, error);
    return !error;
}

}  // namespace

std::int32_t OpenNamedFile(const String& name, const DocumentOpenerPort& open)
{
    const String path = FromQt(QDir::root().absoluteFilePath(ToQt(name)));
    const std::filesystem::path native = NativePath(path);
    std::error_code error;
    const auto status = std::filesystem::status(native, error);
    if (status.type() == std::filesystem::file_type::not_found)
        return std::filesystem::is_directory(native.parent_path(), error) ? ShellResult::FileNotFound
                                                                          : ShellResult::PathNotFound;
    const bool isFolder = std::filesystem::is_directory(status);
    const bool isDocument = isFolder || std::filesystem::is_regular_file(status);  // opening a pipe might wait
    if (error || (isDocument && !IsReadable(native, isFolder)))
        return ShellResult::AccessDenied;
    return open(path);
}

}  // namespace tessarine
