#include "i18n/frmChangeLanguage.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "app/GlobalState.h"
#include "app/LanguageText.h"
#include "files/Files.h"
#include "i18n/QtText.h"
#include "log/Treatments.h"
#include "model/JobProperties.h"
#include "platform/CaseFolding.h"
#include "platform/FolderOf.h"
#include "platform/ProgramInfo.h"
#include "settings/SettingsStore.h"

namespace tessarine
{

namespace
{

constexpr StringView place = u"Form frmChangeLanguage";
constexpr StringView extension = u".lng";

/// File names of the language files; none when there is no folder for them.
std::vector<String> LanguageFiles()
{
    std::vector<String> names;
    if (!FolderExists(LanguageFolder()))
        return names;
    for (const String& path : FilesOfFolder(LanguageFolder()))
        // In any case of letters, unlike the part that is cut off below.
        if (FoldCase(path).ends_with(extension))
            names.push_back(String(FileNameOf(path)));
    return names;
}

}  // namespace

frmChangeLanguage::frmChangeLanguage(QWidget* parent) : QDialog(parent)
{
    setObjectName("frmChangeLanguage");
    setWindowTitle("Options");
    BuildControls();
    Form_Load();
}

void frmChangeLanguage::BuildControls()
{
    auto* const pnlOptions = new QFrame(this);
    pnlOptions->setObjectName("pnlOptions");
    auto* const frmOption = new QFrame(pnlOptions);
    frmOption->setObjectName("frmOption");

    lblLanguage = new QLabel("&Language", frmOption);
    lblLanguage->setObjectName("lblLanguage");
    cboLanguage = new QComboBox(frmOption);
    cboLanguage->setObjectName("cboLanguage");
    cboLanguage->setMinimumContentsLength(24);
    // Replaced by the languages that have a file, see LoadLanguageFiles.
    cboLanguage->addItems({"Chinese(Big5)", "English", "French", "German", "Polish", "Russian", "Spanish"});
    lblLanguage->setBuddy(cboLanguage);

    auto* const buttons = new QDialogButtonBox(this);  // the desktop's own order of the two
    cmdOK = buttons->addButton("OK", QDialogButtonBox::AcceptRole);
    cmdOK->setObjectName("cmdOK");
    cmdOK->setDefault(true);
    cmdCancel = buttons->addButton("Cancel", QDialogButtonBox::RejectRole);
    cmdCancel->setObjectName("cmdCancel");

    auto* const row = new QHBoxLayout(frmOption);
    row->setContentsMargins({});
    row->addWidget(lblLanguage);
    row->addWidget(cboLanguage, 1);
    auto* const panel = new QVBoxLayout(pnlOptions);
    panel->setContentsMargins({});
    panel->addWidget(frmOption);
    auto* const whole = new QVBoxLayout(this);
    whole->addWidget(pnlOptions);
    whole->addStretch();
    whole->addWidget(buttons);
    whole->setSizeConstraint(QLayout::SetFixedSize);

    connect(cmdOK, &QPushButton::clicked, this, &frmChangeLanguage::cmdOK_Click);
    connect(cmdCancel, &QPushButton::clicked, this, &frmChangeLanguage::cmdCancel_Click);
}

void frmChangeLanguage::Form_Load()
{
    LogAndReturn({u"Form_Load", place}, [this] {
        // English, for as long as the folder has not been read.
        cboLanguage->setCurrentIndex(1);
        LoadLng();
        LoadLanguageFiles();
    });
}

void frmChangeLanguage::LoadLng()
{
    LogAndReturn({u"LoadLng", place}, [this] {
        const String window = FromQt(objectName());
        const auto captionOf = [&](const QObject* control) {
            return ToQt(GetLngString(window, FromQt(control->objectName()) + u".caption"));
        };
        for (QLabel* label : findChildren<QLabel*>())
            label->setText(captionOf(label));
        for (QPushButton* button : findChildren<QPushButton*>())
            button->setText(captionOf(button));
        // The box has no caption; whoever hears the dialog is told its label's.
        cboLanguage->setAccessibleName(lblLanguage->text().remove(u'&'));
    });
}

void frmChangeLanguage::LoadLanguageFiles()
{
    LogAndReturn({u"LoadLanguageFiles", place}, [this] {
        cboLanguage->clear();
        // No entry is chosen when the language in force has no file here.
        int chosen = -1;
        for (const String& name : LanguageFiles()) {
            // Intended: only ".lng" in small letters goes, so that "a.lng" and "a.LNG" are two entries.
            cboLanguage->addItem(ToQt(name).remove(ToQt(extension)));
            if (name == CurrentLanguageFile)
                chosen = cboLanguage->count() - 1;
        }
        cboLanguage->setCurrentIndex(chosen);
    });
}

void frmChangeLanguage::cmdOK_Click()
{
    LogAndReturn({u"cmdOK_Click", place}, [this] {
        const String chosen = FromQt(cboLanguage->currentText());
        CurrentLanguageFile = chosen + String(extension);
        // Appended on every OK, without the extension, and never read: the next start takes the third property, and
        // closing the main window builds that anew from CurrentLanguageFile.
        AddLanguage(*NotNull(CurrentProject)->CustomProperies, chosen);
        SaveSetting(String(ExecutableName), u"INIFILE", u"PATH", CurrentLanguageFile);
        // Gone before the windows below change their texts.
        hide();
        LanguageChanged.Raise();
    });
}

void frmChangeLanguage::cmdCancel_Click()
{
    LogAndReturn({u"cmdCancel_Click", place}, [this] { reject(); });
}

}  // namespace tessarine
