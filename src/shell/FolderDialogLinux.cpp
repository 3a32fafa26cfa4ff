#include "shell/FolderDialog.h"

#include <QFileDialog>

#include "i18n/QtText.h"

namespace tessarine
{

String ShowFolderDialog(QWidget* owner, const String& startFolder, const String& title, bool includeFiles,
                        bool /*newStyle*/)
{
    return FromQt(QFileDialog::getExistingDirectory(owner, ToQt(title), ToQt(startFolder),
                                                    includeFiles ? QFileDialog::Options() : QFileDialog::ShowDirsOnly));
}

}  // namespace tessarine
