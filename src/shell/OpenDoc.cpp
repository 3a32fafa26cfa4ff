#include "shell/OpenDoc.h"

#include <filesystem>
#include <fstream>
#include <system_error>
#include <utility>

#include <QDir>

#include "i18n/QtText.h"
#include "log/Treatments.h"
#include "platform/NativePath.h"
#include "platform/PathSeparator.h"
#include "platform/ProgramFolder.h"
#include "shell/DesktopOpener.h"

namespace tessarine
{

namespace
{

DocumentOpenerPort documentOpener;

std::int32_t Open(const String& target)
{
    return documentOpener ? documentOpener(target) : OpenWithDesktop(target);
}

bool IsReadable(const std::filesystem::path& path, bool isFolder)
{
    if (!isFolder)
        return std::ifstream(path).is_open();
    std::error_code error;
    const std::filesystem::directory_iterator entries(path, error);
    return !error;
}

/// Opens what a full path names. An opener of the desktop does not tell why it could not reach a file, so that is
/// looked at here.
std::int32_t OpenPath(const QString& path)
{
    const std::filesystem::path native = NativePath(FromQt(path));
    std::error_code error;
    const auto status = std::filesystem::status(native, error);
    if (status.type() == std::filesystem::file_type::not_found)
        return std::filesystem::is_directory(native.parent_path(), error) ? ShellResult::FileNotFound
                                                                          : ShellResult::PathNotFound;
    const bool isFolder = std::filesystem::is_directory(status);
    const bool isDocument = isFolder || std::filesystem::is_regular_file(status);  // opening a pipe might wait
    if (error || (isDocument && !IsReadable(native, isFolder)))
        return ShellResult::AccessDenied;
    return Open(FromQt(path));
}

}  // namespace

std::int32_t OpenDoc(const String& File, String& ErrorText)
{
    return LogAndReturn({u"OpenDoc", u"Module modShell"}, [&] {
        // A name without a folder is looked for in the root and not in the current folder, which is whatever the start
        // made it.
        const std::int32_t code =
            File.empty() ? ShellResult::FileNotFound : OpenPath(QDir::root().absoluteFilePath(ToQt(File)));
        if (code < ShellResult::Opened)
            ErrorText = OpenDocErrorText(code);
        return code;
    });
}

String OpenDocErrorText(std::int32_t code)
{
    switch (code) {
        case ShellResult::FileNotFound:
            return u"File not found";
        case ShellResult::PathNotFound:
            return u"Path not found";
        case ShellResult::AccessDenied:
            return u"Access denied";
        // The numbers are the shell's. The opener of this system gives only those with a name.
        case 8:
            return u"Out of memory";
        case 11:
            return u"Invalid EXE file or error in EXE image";
        case 26:
            return u"A sharing violation occurred";
        case 27:
            return u"Incomplete or invalid file association";
        case 28:
            return u"DDE Time out";
        case 29:
            return u"DDE transaction failed";
        case 30:
            return u"DDE busy";
        case ShellResult::NoAssociation:
            return u"No association for file extension";
        case 32:
            return u"DLL not found";
        default:
            return u"Unknown error";
    }
}

void OpenAddress(const String& address)
{
    LogAndReturn({u"OpenAddress", u"Module modShell"}, [&] { Open(address); });
}

void ShowHelp()
{
    LogAndReturn({u"ShowHelp", u"Module modShell"},
                 [] { Open(ProgramFolder() + PathSeparator + u"Help" + PathSeparator + u"index.html"); });
}

DocumentOpenerPort SetDocumentOpener(DocumentOpenerPort port)
{
    return std::exchange(documentOpener, std::move(port));
}

}  // namespace tessarine
