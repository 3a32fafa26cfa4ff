#include "shell/CommonDialog.h"

#include <utility>

#include "files/Files.h"
#include "i18n/QtText.h"
#include "platform/CaseFolding.h"
#include "platform/Failure.h"
#include "platform/FolderOf.h"
#include "shell/QtFileDialog.h"

namespace tessarine
{

namespace
{

FileDialogPort fileDialog;

/// What follows the last dot of a path's last part; empty without a dot.
StringView ExtensionOf(StringView path)
{
    const StringView name = FileNameOf(path);
    const std::size_t dot = name.rfind(u'.');
    return dot == StringView::npos ? StringView() : name.substr(dot + 1);
}

}  // namespace

void CommonDialog::Show(bool isSave)
{
    const std::optional<QString> chosen = fileDialog ? fileDialog(*this, isSave) : ShowQtFileDialog(*this, isSave);
    if (!chosen)
        throw Failure(CancelSelected, u"Cancel was selected.");
    FileName = FromQt(*chosen);
    if (DefaultExt.empty())
        return;

    Flags &= ~FileDialogFlag::ExtensionDiffers;
    const StringView extension = ExtensionOf(FileName);
    if (!extension.empty()) {
        if (FoldCase(extension) != FoldCase(DefaultExt))
            Flags |= FileDialogFlag::ExtensionDiffers;
    } else if (!FileName.empty() && (isSave || !FileExists(FileName))) {
        // To open, a file that exists under the very name is the one that was meant.
        FileName += (FileName.ends_with(u'.') ? String() : String(u".")) + DefaultExt;
    }
}

FileDialogPort SetFileDialog(FileDialogPort port)
{
    return std::exchange(fileDialog, std::move(port));
}

}  // namespace tessarine
