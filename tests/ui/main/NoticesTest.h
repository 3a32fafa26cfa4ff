#pragma once

#include <QLabel>
#include <QPushButton>

#include "ui/main/MainWindowTest.h"

namespace tessarine
{

/// The main window, and what its strip of notices tells.
class NoticesTest : public MainWindowTest
{
protected:
    /// The notice in sight; nothing when there is none.
    std::string Notice()
    {
        return The("fraNotice").isVisible() ? The("lblNotice").accessibleName().toStdString() : std::string();
    }

    /// What the strip says of other notices; nothing when it does not.
    std::string More()
    {
        const auto& label = The<QLabel>("lblMoreNotices");
        return label.isVisible() ? label.text().toStdString() : std::string();
    }

    /// A job over a folder as a project file, and its path.
    String ProjectFile(StringView name, const String& startFolder = u"/decks")
    {
        const ProjectOwner project(powerPoint.Provider());
        project->options->FileToProcessFolderPath = startFolder;
        project->CustomProperies->Add(u"FindAndReplaceFilePath", {});
        project->CustomProperies->Add(u"FindAndReplaceListSource", u"INTERNAL");
        String path = folder.PathOf(name);
        project->SaveAsProject(path, true);
        return path;
    }

    void Open(const String& path)
    {
        Window();
        shell.NextFile(path);
        Choose("mnuOpen");
    }

    void Import(const String& path)
    {
        Window();
        shell.NextFile(path);
        Choose("mnuImportList");
    }

    void Save(const char* command, const String& path)
    {
        shell.NextFile(path);
        Choose(command);
    }

    void TypeStartFolder(const QString& path)
    {
        Window();
        ShowTab(1);
        Type("txtStartFolder", path);
    }
};

}  // namespace tessarine
