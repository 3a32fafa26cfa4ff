#include "log/ErrorLog.h"

#include <ctime>
#include <utility>

#include "files/AppendToFile.h"
#include "files/Files.h"
#include "log/Treatments.h"
#include "platform/Locale.h"
#include "platform/LocalTime.h"
#include "platform/Messages.h"
#include "platform/PathSeparator.h"
#include "platform/ProgramInfo.h"
#include "platform/SpecialFolders.h"
#include "platform/VisibleText.h"

namespace tessarine
{

String ApplicationDataFolder;

namespace
{

LoggedFile* loggedFile = nullptr;  // borrowed
std::optional<Failure> firstFailure;

String DataFolderPath()
{
    const String applicationData = GetSpecialFolderPath(ApplicationDataFolderNumber);
    if (applicationData.empty())
        throw Failure(FailureNumber::PathNotFound, u"Path not found: the system names no folder for application data");
    return applicationData + PathSeparator + String(CompanyName) + PathSeparator + String(ApplicationTitle);
}

String Now()
{
    return DisplayDateTime(LocalTime(std::time(nullptr)).value_or(std::tm{}));
}

}  // namespace

bool GetFileStorageFolder()
{
    if (Skip([] { ApplicationDataFolder = DataFolderPath(); }) != 0) {
        ShowMessage(u"Unable to get file storage folder path", MessageIcon::Critical);
        return false;
    }
    // A folder that can't be made ends the start without a message, unlike a path that can't be built. Intended: the
    // message has always been for the path alone.
    return EnsureFolderExists(ApplicationDataFolder);
}

String ErrorLogPath()
{
    return ApplicationDataFolder + PathSeparator + u"Errors.Log";
}

void WriteErrorLog(const String& message) noexcept
{
    try {
        // Before the folder is settled there is no place for a log; the root of the file system is not one.
        if (ApplicationDataFolder.empty())
            return;
        const String end = u"- " + Now() + u"\r\n";
        // A name or a text of a file must not be able to make lines of its own.
        String lines = VisibleText(message) + end;
        if (loggedFile != nullptr && message.find(loggedFile->path_) == String::npos)
            lines += u"In file " + VisibleText(loggedFile->path_) + end;
        AppendToFile(ErrorLogPath(), ToUtf8(lines), ErrorLogLimit);
    } catch (...) {
        // There is no other place here to tell that the log can't be written.
        Skip([&] {
            if (!firstFailure)
                firstFailure = CurrentFailure();
        });
    }
}

const std::optional<Failure>& ErrorLogFailure()
{
    return firstFailure;
}

LoggedFile::LoggedFile(String path) : path_(std::move(path)), before_(std::exchange(loggedFile, this)) {}

LoggedFile::~LoggedFile()
{
    loggedFile = before_;
}

}  // namespace tessarine
