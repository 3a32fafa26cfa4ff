#include "i18n/frmChangeLanguage.h"
#include "log/Treatments.h"
#include "platform/ProgramInfo.h"
#include "shell/frmAbout.h"
#include "shell/Help.h"
#include "shell/OpenDoc.h"
#include "ui/main/frmMain.h"

namespace tessarine
{

void frmMain::mnuChangeLanguage_Click()
{
    LogAndReturn({u"mnuChangeLanguage_Click", place}, [this] {
        mfrmChangeLanguage = std::make_unique<frmChangeLanguage>(this);
        mfrmChangeLanguage->LanguageChanged += [this] { mfrmChangeLanguage_LanguageChanged(); };
        mfrmChangeLanguage->exec();
        mfrmChangeLanguage.reset();
    });
}

void frmMain::mfrmChangeLanguage_LanguageChanged()
{
    LogAndReturn({u"mfrmChangeLanguage_LanguageChanged", place}, [this] { LoadLng(); });
}

void frmMain::mnuHelp1_Click()
{
    LogAndReturn({u"mnuHelp1_Click", place}, [] { ShowHelp(); });
}

void frmMain::mnuHomePage_Click()
{
    LogAndReturn({u"mnuHomePage_Click", place}, [] {
        // What there is to read comes with the program then.
        if (HomePage.empty())
            ShowHelp();
        else
            OpenAddress(String(HomePage));
    });
}

void frmMain::mnuAbout_Click()
{
    LogAndReturn({u"mnuAbout_Click", place}, [this] { frmAbout(this).exec(); });
}

void frmMain::Toolbar1_ButtonClick(int Index)
{
    LogAndReturn({u"Toolbar1_ButtonClick", place}, [&] {
        constexpr int open = 1;
        constexpr int save = 2;
        // 3 is the separator, which counts as a button.
        constexpr int help = 4;
        if (Index == open)
            mnuOpen_Click();
        else if (Index == save)
            menuSave_Click();
        else if (Index == help)
            ShowHelp();
    });
}

}  // namespace tessarine
