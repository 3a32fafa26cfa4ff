#pragma once

#include <string>

/// The files by which a freedesktop.org desktop knows a program and its file type, as bytes. All texts are UTF-8.
namespace tessarine
{

/// A program with the one MIME type that it opens.
struct DesktopProgram {
    std::string path;         ///< Full path of the executable.
    std::string name;         ///< Of its icon and, for the window manager, of its windows.
    std::string title;        ///< What people call it.
    std::string description;  ///< In a few words.
    std::string keywords;     ///< More words to find it by, each with ";" after it.
    std::string mimeType;     ///< Such as "application/x-tsqfile".
};

/// The desktop entry of a program, as freedesktop.org defines it (Desktop Entry 1.0). The program is called with one
/// file as its only argument, or with none.
std::string DesktopEntry(const DesktopProgram& program);

/// A path as the command of an "Exec" key: quoted, with what is reserved in it escaped, so that it is one word
/// and means itself.
std::string ExecCommand(const std::string& path);

/// A type of files, as the shared database keeps it.
struct MimeType {
    std::string name;         ///< Such as "application/x-tsqfile".
    std::string description;  ///< What people call it.
    std::string extension;    ///< Of its files, without the dot.
};

/// The package of one MIME type for the shared MIME database.
std::string MimePackage(const MimeType& type);

}  // namespace tessarine
