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

/// Opens a document or folder and gives the shell's result code. On failure `ErrorText` gets its text; on success it
/// stays. Nothing is shown. A failure of another kind is logged and gives 0.
std::int32_t OpenDoc(const String& File, String& ErrorText);

/// The text of a failure: "Unknown error" for a code without one of its own.
String OpenDocErrorText(std::int32_t code);

/// Opens a page of the web in the user's browser. Nothing is shown when that fails.
void OpenAddress(const String& address);

/// Opens the program's help. Nothing is shown when that fails.
void ShowHelp();

/// Opens a full path or an address and gives the result code.
using DocumentOpenerPort = std::function<std::int32_t(const String& target)>;

/// Puts another opener in the place of the desktop's, and gives the one before. An empty one brings the desktop's back.
DocumentOpenerPort SetDocumentOpener(DocumentOpenerPort port);

}  // namespace tessarine
