#include "app/Main.h"

#include "app/GlobalState.h"
#include "app/LanguageText.h"
#include "files/Files.h"
#include "log/ErrorLog.h"
#include "log/Treatments.h"
#include "model/JobProperties.h"
#include "platform/CheckedInteger.h"
#include "platform/Failure.h"
#include "platform/Messages.h"
#include "platform/PathSeparator.h"
#include "platform/ProgramFolder.h"
#include "platform/ProgramInfo.h"
#include "saving/RunJournal.h"

namespace tessarine
{

namespace
{

void LoadDefaultProject()
{
    CustomProperties& properties = *CurrentProject->CustomProperies;
    // Whatever becomes of the loading, the start goes on: a language that isn't settled here is English.
    if (FileExists(DefaultProjectPath())) {
        std::int32_t error = 0;
        CurrentProject->LoadProject(DefaultProjectPath(), error);
        if (const std::optional<String> language = LanguageFileOf(properties))
            CurrentLanguageFile = *language;
        return;
    }
    // In two steps on purpose: the job begins with the list in the grid, and a first start then chooses the list file,
    // whose path is still empty.
    AddJobProperties(properties, {.languageFile = CurrentLanguageFile});
    PutListSource(properties, ListSource::External);
}

void ChooseLanguage()
{
    if (CurrentLanguageFile.empty() || !FileExists(LanguageFolder() + PathSeparator + CurrentLanguageFile))
        CurrentLanguageFile = DefaultLanguageFile;
}

void PutRightWhatKilledRunsLeft()
{
    const std::vector<RecoveredFile> files = RecoverFromKilledRuns();
    for (const RecoveredFile& file : files)
        WriteErrorLog(file.path + u": " + file.text);
    if (!files.empty())
        ShowMessage(
            GetLngString(u"Global Msg", u"1059", Checked<std::int32_t>(static_cast<std::int64_t>(files.size()))),
            MessageIcon::Information);
}

}  // namespace

String DefaultProjectPath()
{
    return ApplicationDataFolder + PathSeparator + u"Default.tsq";
}

bool IsPowerPointAvailable(const std::shared_ptr<powerpoint::Provider>& provider)
{
    const std::int32_t failure = Skip([&] { NotNull(provider)->CreateApplication()->Quit(); });
    if (failure == 0)
        return true;
    ShowMessage(GetLngString(u"global msg", failure == FailureNumber::CannotCreateObject ? u"1028" : u"1029"),
                MessageIcon::Critical);
    return false;
}

void Main(const std::shared_ptr<powerpoint::Provider>& provider, const Desktop& desktop)
{
    if (desktop.IsPreviousInstanceRunning())
        return;
    LogAndReturn({u"Main", u"Module modMain"}, [&] {
        if (!GetFileStorageFolder())
            return;
        CurrentProject = std::make_shared<Project>(provider);
        LoadDefaultProject();
        ChooseLanguage();
        PutRightWhatKilledRunsLeft();
        // Before the check: the file type stays registered when the start ends there.
        desktop.RegisterFileType(u"tsqfile", u"tsq", u"Tessarine-PowerPoint Setting File",
                                 ProgramFolder() + PathSeparator + String(ExecutableName) + u".exe, 30001");
        if (!IsPowerPointAvailable(provider)) {
            // The second message in a row; the first one told what went wrong.
            ShowMessage(u"PowerPoint has not been installed.", MessageIcon::None);
            return;
        }
        desktop.ShowMainWindow();
    });
}

}  // namespace tessarine
