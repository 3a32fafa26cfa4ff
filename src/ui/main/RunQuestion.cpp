#include "ui/main/RunQuestion.h"

#include <algorithm>

#include "app/GlobalState.h"
#include "app/LanguageText.h"
#include "files/ReadOnly.h"
#include "i18n/QtText.h"
#include "model/Project.h"
#include "run/BackupPaths.h"

namespace tessarine
{

namespace
{

String TextOfQuestion(const String& key)
{
    return GetLngString(u"Global Msg", key);
}

String TextOfQuestion(const String& key, std::int32_t number)
{
    return GetLngString(u"Global Msg", key, number);
}

/// With a path in place of "%s".
String TextOfQuestion(const String& key, const String& path)
{
    return FromQt(ToQt(TextOfQuestion(key)).replace(QLatin1String("%s"), ToQt(path)));
}

std::int32_t CountOfReadOnly(const std::vector<String>& paths)
{
    return static_cast<std::int32_t>(std::ranges::count_if(paths, [](const String& path) { return IsReadOnly(path); }));
}

String SourceOfFiles(const ProjectOptions& options)
{
    if (options.TakesListedFiles())
        return TextOfQuestion(u"Question.List", options.FileToProcessFilepath);
    return TextOfQuestion(options.Include_Subfolders ? u"Question.Subfolders" : u"Question.Folder",
                          options.FileToProcessFolderPath);
}

/// What the run will do, line by line.
String PlanOfRun(const Project& project, bool replaces, std::int32_t totalFiles)
{
    const ProjectOptions& options = *NotNull(project.options);
    String plan = TextOfQuestion(replaces ? u"Question.Replacing" : u"Question.Searching", totalFiles);
    plan += u'\n' + SourceOfFiles(options);
    // A search makes backups, too, when it is asked to; without them there is nothing to say of a search.
    if (replaces || options.BackupMode)
        plan += u'\n' + TextOfQuestion(options.BackupMode ? u"Question.Backups" : u"Question.NoBackups");
    if (const std::int32_t readOnly = CountOfReadOnly(project.FilesToProcess); readOnly > 0)
        plan += u'\n' +
                TextOfQuestion(options.ProcessReadonlyFiles ? u"Question.ReadOnlyTaken" : u"Question.ReadOnlyLeftOut",
                               readOnly);
    return plan;
}

}  // namespace

Message QuestionBeforeRun(const Project& project, bool replaces, std::int32_t totalFiles)
{
    // The built-in engine closes no PowerPoint.
    String question = TextOfQuestion(IsBuiltInEngine ? u"Question.Go" : u"1001");
    if (NotNull(project.options)->BackupMode)
        if (const std::int32_t backups = CountOfBackupsInTheWay(project.FilesToProcess); backups > 0)
            question += u"\n\n" + TextOfQuestion(u"1057", backups);
    return {question,
            MessageIcon::Exclamation,
            MessageButtons::YesNo,
            TextOfQuestion(u"1002"),
            true,
            PlanOfRun(project, replaces, totalFiles)};
}

}  // namespace tessarine
