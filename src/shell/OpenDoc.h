#pragma once

#include <cstdint>
#include <functional>

#include "platform/String.h"

/// Opening things with the program that the desktop has for them.
namespace tessarine
{

/// Result codes of the shell. 33 and more is success, anything below a failure.
namespace ShellResult
{
inline constexpr std::int32_t FileNotFound = 2;    ///< Its folder is there.
inline constexpr std::int32_t PathNotFound = 3;    ///< Its folder is not there either.
inline constexpr std::int32_t AccessDenied = 5;    ///< It is there and can't be read.
inline constexpr std::int32_t NoAssociation = 31;  ///< No program for the type, or no shell.
inline constexpr std::int32_t Opened = 33;         ///< As any number above it.
}  // namespace ShellResult

/// Opens a document or folder and gives the shell's result code; an empty name is a file that is not there. On failure
/// `ErrorText` gets its text; on success it stays. Nothing is shown. A failure of another kind is logged and gives 0.
std::int32_t OpenDoc(const String& File, String& ErrorText);

/// The same, and a message tells of a failure.
void OpenOrTell(const String& File);

/// The text of a failure: "Unknown error" for a code without one of its own.
String OpenDocErrorText(std::int32_t code);

/// Opens a page of the web: in the browser that can be automated (BrowserObject.h), and where there is none with the
/// opener, which knows the user's own. Nothing is shown when that fails.
void OpenAddress(const String& address);

/// Opens a path or an address and gives the result code. Paths are full on Linux, on Windows as they were given.
using DocumentOpenerPort = std::function<std::int32_t(const String& target)>;

/// Puts another opener in the place of the desktop's, and gives the one before. An empty one brings the desktop's back.
DocumentOpenerPort SetDocumentOpener(DocumentOpenerPort port);

/// Shows an address and tells whether it could.
using BrowserPort = std::function<bool(const String& address)>;

/// Puts another browser in the place of the one that can be automated, and gives the one before. An empty one brings
/// that back.
BrowserPort SetBrowser(BrowserPort port);

}  // namespace tessarine
