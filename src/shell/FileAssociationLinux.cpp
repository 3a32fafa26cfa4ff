#include "shell/FileAssociation.h"

#include <algorithm>
#include <cstddef>
#include <span>
#include <string>
#include <utility>

#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>

#include "files/Files.h"
#include "i18n/QtText.h"
#include "icons/Icons.h"
#include "log/Treatments.h"
#include "platform/ProgramFolder.h"
#include "platform/ProgramInfo.h"
#include "platform/SpecialFolders.h"
#include "saving/ReplacementFile.h"
#include "shell/DesktopEntry.h"
#include "shell/DesktopTool.h"

namespace tessarine
{

namespace
{

DesktopToolPort desktopTool;

/// A tool that is not there is no failure: such a desktop has no tables, or brings them up to date by itself.
void StartByItself(const QString& program, const QStringList& arguments)
{
    QProcess process;
    process.setProgram(program);
    process.setArguments(arguments);
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    process.startDetached();
}

void RunTool(const char* program, const String& folder)
{
    (desktopTool ? desktopTool : StartByItself)(QLatin1StringView(program), {ToQt(folder)});
}

bool HasContent(const String& path, const std::string& content)
{
    return FileExists(path) && ReadWholeFile(path) == content;
}

/// Gives a file its content and tells whether it has a new one now. What can't be written stays as it is.
bool PutFile(const String& folder, const std::string& name, const std::string& content)
{
    bool isNew = false;
    Skip([&] {
        const String path = folder + u"/" + FromUtf8(name);
        if (HasContent(path, content))
            return;
        EnsureFolderExists(folder);
        ReplacementFile file(path, ReplacementFile::Missing::IsMade);
        file.Write(std::as_bytes(std::span(content)));
        file.Commit();
        isNew = true;
    });
    return isNew;
}

bool PutIcon(const String& folder, const std::string& name, const char* drawing)
{
    return PutFile(folder, name + ".svg", IconDrawing(drawing).toStdString());
}

/// Icons for every size. Desktops look at the time of the theme's own folder to learn of new ones.
void PutIcons(const String& theme, const std::string& program, std::string mimeType)
{
    // Icons of file types are found by the type's name with "-" for the slash.
    mimeType.replace(mimeType.find('/'), 1, "-");
    // Both are written before either answer counts.
    const bool isNewProgram = PutIcon(theme + u"/scalable/apps", program, "tessarine");
    const bool isNewType = PutIcon(theme + u"/scalable/mimetypes", mimeType, "project");
    if (isNewProgram || isNewType)
        Skip([&] { TouchFile(theme); });
}

/// Whether the program is installed where this desktop looks for entries, with one.
bool IsKnownByItsInstallation(const String& entry)
{
    const String data = DataFolder();
    const QDir share(QFileInfo(ToQt(data)).path());
    if (data == ProgramFolder() || !share.exists(ToQt(entry)))
        return false;
    const QStringList places = QStandardPaths::standardLocations(QStandardPaths::GenericDataLocation);
    return std::any_of(places.begin(), places.end(), [&](const QString& place) { return QDir(place) == share; });
}

}  // namespace

void RegisterFileType(const String& ClassName, const String& Extension, const String& Description,
                      const String& /*IconPath*/)
{
    LogAndReturn({u"RegisterFileType", u"Module FileAssociation"}, [&] {
        const String data = GetSpecialFolderPath(ApplicationDataFolderNumber);
        if (data.empty())
            return;
        const std::string program = ToUtf8(ExecutableName);
        // An entry in the user's folder comes before the installed one. An old one is brought up to date, so that it
        // does not go on naming a program that was somewhere else.
        const String entry = u"applications/" + String(ExecutableName) + u".desktop";
        if (!FileExists(data + u"/" + entry) && IsKnownByItsInstallation(entry))
            return;
        const std::string mimeType = "application/x-" + ToUtf8(ClassName);

        PutIcons(data + u"/icons/hicolor", program, mimeType);
        // The desktop's tools take their time, so they run only after a change.
        if (PutFile(data + u"/mime/packages", program + ".xml",
                    MimePackage({mimeType, ToUtf8(Description), ToUtf8(Extension)})))
            RunTool("update-mime-database", data + u"/mime");
        if (PutFile(data + u"/applications", program + ".desktop",
                    DesktopEntry({.path = ToUtf8(ProgramFolder()) + "/" + program,
                                  .name = program,
                                  .title = ToUtf8(ApplicationTitle),
                                  .description = "Find and replace text in many presentations",
                                  .keywords = "PowerPoint;pptx;slides;search;",
                                  .mimeType = mimeType})))
            RunTool("update-desktop-database", data + u"/applications");
    });
}

DesktopToolPort SetDesktopTool(DesktopToolPort port)
{
    return std::exchange(desktopTool, std::move(port));
}

}  // namespace tessarine
