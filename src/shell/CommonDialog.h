#pragma once

#include <cstdint>
#include <functional>
#include <optional>

#include <QString>

#include "platform/String.h"

namespace tessarine
{

/// Bits of CommonDialog::Flags.
namespace FileDialogFlag
{
inline constexpr std::int32_t AskBeforeOverwriting = 2;  ///< In: saving to a file that exists asks first.
inline constexpr std::int32_t ExtensionDiffers = 1024;   ///< Out: the chosen file's extension is not DefaultExt.
inline constexpr std::int32_t FileMustExist = 4096;      ///< In: opening takes only a file that exists.
}  // namespace FileDialogFlag

/// What a cancelled dialog raises.
inline constexpr std::int32_t CancelSelected = 32755;

/// The file dialog of a window, shared by its commands. Nothing is reset between two uses: what a command does not set
/// is as the last one left it.
class CommonDialog
{
public:
    /// Pairs of a text and its patterns, "CSV Files|*.csv|Pictures|*.png;*.jpg". A text without patterns stands for
    /// all files. The first one is in force when the dialog opens.
    String Filter;

    /// Full path. In: what the dialog proposes, which may be empty. Out: the file chosen.
    String FileName;

    String DialogTitle;

    /// Extension, without the dot, for a name typed without one; empty for none.
    String DefaultExt;

    /// Once the user has chosen a filter with one extension, a name typed without one gets that.
    bool FollowsFilter = false;

    /// Bits of FileDialogFlag. ExtensionDiffers is set or cleared by each dialog that ends with a file, and only
    /// while there is a DefaultExt.
    std::int32_t Flags = 0;

    /// Has the user choose a file to open, or to save to. A cancelled dialog raises CancelSelected ("Cancel was
    /// selected.") and changes nothing.
    void ShowOpen() { Show(false); }
    void ShowSave() { Show(true); }

private:
    void Show(bool isSave);
};

/// Shows a dialog with the properties given and hands back the full path chosen, as typed; nothing when cancelled.
using FileDialogPort = std::function<std::optional<QString>(const CommonDialog& dialog, bool isSave)>;

/// Puts another dialog in the place of Qt's, and gives the one before. An empty one brings Qt's back.
FileDialogPort SetFileDialog(FileDialogPort port);

}  // namespace tessarine
