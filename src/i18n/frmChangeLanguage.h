#pragma once

#include <QDialog>

#include "model/Event.h"

class QComboBox;
class QLabel;
class QPushButton;

namespace tessarine
{

/// Lets the user pick one of the language files beside the executable. Shown modally. Its title is "Options" in every
/// language. A failure in a handler is logged under the handler's name and ends it.
class frmChangeLanguage : public QDialog
{
    Q_OBJECT

public:
    explicit frmChangeLanguage(QWidget* parent = nullptr);

    /// Raised when the user has chosen: CurrentLanguageFile, the project and the settings hold the choice already.
    Event<> LanguageChanged;

    /// Puts the chosen language in force, keeps it, closes the dialog and raises LanguageChanged.
    void cmdOK_Click();
    void cmdCancel_Click();  ///< Closes the dialog and changes nothing.

    /// Applies the active language to the labels and buttons; a missing text empties a caption.
    void LoadLng();

    /// Fills cboLanguage with the names of the language files, without ".lng", and selects the one in force, if there.
    void LoadLanguageFiles();

private:
    void BuildControls();
    void Form_Load();  // a failure is logged, and the dialog opens as far as it got

    QLabel* lblLanguage = nullptr;
    QComboBox* cboLanguage = nullptr;  // the languages that have a file
    QPushButton* cmdOK = nullptr;
    QPushButton* cmdCancel = nullptr;
};

}  // namespace tessarine
