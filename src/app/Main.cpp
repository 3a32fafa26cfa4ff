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

/// 0, or the number of the failure.
std::int32_t FailureToStart(const std::shared_ptr<powerpoint::Provider>& provider)
{
    return Skip([&] { NotNull(provider)->CreateApplication()->Quit(); });
}

bool AgreesToBuiltInEngine(const Desktop& desktop)
{
    if (ShowMessage(GetLngString(u"Global Msg", u"1060"), MessageIcon::Question, MessageButtons::YesNo) !=
        MessageAnswer::Yes)
        return false;
    desktop.RememberBuiltInEngine();
    return true;
}

/// False, after messages, when there is none to work with.
bool ChooseEngine(const Engines& engines, const Desktop& desktop)
{
    IsBuiltInEngine = !engines.powerPoint;
    const auto& expected = IsBuiltInEngine ? engines.builtIn : engines.powerPoint;
    const bool isChoice = engines.powerPoint && engines.builtIn;
    const bool isAgreed = isChoice && desktop.IsBuiltInEngineAgreed();
    if (isAgreed ? FailureToStart(expected) == 0 : IsPowerPointAvailable(expected))
        return true;
    if (!isAgreed && !(isChoice && AgreesToBuiltInEngine(desktop))) {
        // The second message in a row; the first one told what went wrong.
        ShowMessage(u"PowerPoint has not been installed.", MessageIcon::None);
        return false;
    }
    CurrentProject->UseProvider(engines.builtIn);
    IsBuiltInEngine = true;
    return true;
}

}  // namespace

String DefaultProjectPath()
{
    return ApplicationDataFolder + PathSeparator + u"Default.tsq";
}

bool IsPowerPointAvailable(const std::shared_ptr<powerpoint::Provider>& provider)
{
    const std::int32_t failure = FailureToStart(provider);
    if (failure == 0)
        return true;
    ShowMessage(GetLngString(u"global msg", failure == FailureNumber::CannotCreateObject ? u"1028" : u"1029"),
                MessageIcon::Critical);
    return false;
}

void Main(const Engines& engines, const Desktop& desktop)
{
    if (desktop.IsPreviousInstanceRunning())
        return;
    LogAndReturn({u"Main", u"Module modMain"}, [&] {
        if (!GetFileStorageFolder())
            return;
        CurrentProject = std::make_shared<Project>(engines.powerPoint ? engines.powerPoint : engines.builtIn);
        LoadDefaultProject();
        ChooseLanguage();
        PutRightWhatKilledRunsLeft();
        // Before the check: the file type stays registered when the start ends there.
        desktop.RegisterFileType(u"tsqfile", u"tsq", u"Tessarine-PowerPoint Setting File",
                                 ProgramFolder() + PathSeparator + String(ExecutableName) + u".exe, 30001");
        if (ChooseEngine(engines, desktop))
            desktop.ShowMainWindow();
    });
}

}  // namespace tessarine
