#include <sys/stat.h>

#include <stdexcept>

#include "Expected.h"
#include "Kinds.h"
#include "Scene.h"

namespace tessarine::torture
{

namespace
{

/// A pipe to which nobody writes: whoever opens it without care waits for ever.
Path MakePipe(const Path& path)
{
    std::filesystem::create_directories(path.parent_path());
    if (mkfifo(path.c_str(), 0666) != 0)
        throw std::runtime_error("can't make a pipe");
    return path;
}

/// The call ends, and says what is wrong.
void ExpectEnd(Round& round, const Call& call, const std::string& what, bool mustFail)
{
    round.Checked();
    const Outcome outcome = Run(round, call);
    if (outcome.hung)
        round.Add(Harm::Other, "a pipe as " + what + " hangs the program");
    else if (outcome.signal != 0)
        round.Add(Harm::Other, "a pipe as " + what + " ends the program by a signal");
    else if (mustFail && outcome.status == 0)
        round.Add(Harm::Other, "a pipe as " + what + " goes unnoticed");
}

void PlayRound(Round& round)
{
    const Operation& operation = Operations()[0];
    Scene scene(round, FewDecks());
    Call call = scene.CallOf(operation);
    const Path pipe = round.Folder() / "pipe";
    const std::vector<std::string> pair{"replace", "--find", findText, "--with", replaceText, "--format", "json"};
    const auto with = [&](std::vector<std::string> arguments, const std::vector<std::string>& further) {
        arguments.insert(arguments.end(), further.begin(), further.end());
        call.arguments = arguments;
    };
    switch (round.Number() % 8) {
        case 0:
            MakePipe(scene.Folder() / "pipe.pptx");
            ExpectEnd(round, call, "a deck in a folder", false);
            scene.CheckCut(operation);
            break;
        case 1:
            with(pair, {MakePipe(round.Folder() / "pipe.pptx").string()});
            ExpectEnd(round, call, "a deck that is named", true);
            break;
        case 2:
            with(pair, {"--files-from", MakePipe(pipe).string()});
            ExpectEnd(round, call, "a list of files", true);
            break;
        case 3:
            call.arguments = {"replace", "--list", MakePipe(round.Folder() / "pairs.csv").string(),
                              scene.Folder().string()};
            ExpectEnd(round, call, "a list of pairs", true);
            break;
        case 4:
            call.arguments = {"run", MakePipe(round.Folder() / "job.tsq").string()};
            ExpectEnd(round, call, "a job", true);
            break;
        case 5:
            MakePipe(round.Folder() / "data" / "Tessarine" / "Tessarine" / "Errors.Log");
            Write(scene.Folder() / "broken.pptx", "no deck");
            ExpectEnd(round, call, "the error log", true);
            scene.CheckCut(operation);
            break;
        case 6:
            MakePipe(scene.BackupOf(scene.Decks()[0]));
            ExpectEnd(round, call, "a backup", true);
            if (ContentIfThere(scene.PathOf(scene.Decks()[0])) != scene.Decks()[0].old)
                round.Add(Harm::Lost, "a deck was changed without a backup");
            break;
        default:
            MakePipe(scene.Folder() / ".tessarine-backups");
            ExpectEnd(round, call, "the record of backups", false);
            scene.CheckCut(operation);
            break;
    }
}

}  // namespace

Kind Pipes()
{
    return {"pipes", PlayRound, 8};
}

}  // namespace tessarine::torture
