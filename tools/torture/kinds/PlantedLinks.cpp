#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <string_view>

#include "Expected.h"
#include "Kinds.h"
#include "Scene.h"

namespace tessarine::torture
{

namespace
{

constexpr uid_t stranger = 65534;

/// A folder with a file of somebody else's, to which links are planted. Nothing in it may change.
class Victim
{
public:
    explicit Victim(const Path& folder) : folder_(folder)
    {
        std::filesystem::create_directories(folder_);
        Write(File(), DeckBytes("Fabrikam of the victim"));
        std::filesystem::permissions(File(), std::filesystem::perms(0600));
        SetModified(File(), 1'500'000'000);
        if (geteuid() == 0) {
            for (const Path& path : {folder_, File()})
                if (chown(path.c_str(), stranger, stranger) != 0)
                    throw std::runtime_error("can't give files away");
        }
        before_ = SnapshotOf(File());
    }

    Path File() const { return folder_ / "a.pptx"; }
    Path NoFile() const { return folder_ / "none.pptx"; }

    void Check(Round& round, const std::string& how) const
    {
        round.Checked();
        const Snapshot now = SnapshotOf(File());
        if (now.content != before_.content)
            round.Add(Harm::Lost, "the victim's file was overwritten through " + how);
        else if ((now.mode & ~before_.mode & 07777) != 0 || now.user != before_.user || now.group != before_.group)
            round.Add(Harm::Widened, "the victim's file has another mode or owner, through " + how);
        else if (now != before_)
            round.Add(Harm::Other, "the victim's file was touched through " + how);
        if (NamesIn(folder_) != std::vector<std::string>{"a.pptx"})
            round.Add(Harm::Other, "there is another file in the victim's folder, through " + how);
    }

private:
    Path folder_;
    Snapshot before_;
};

/// What a trap is made of, and the run that steps into it.
struct Trap {
    Round& round;
    Scene& scene;
    const Victim& victim;
    const Operation& operation;
};

void Step(const Trap& trap, const std::string& how, const std::vector<std::string>& further = {})
{
    Call call = trap.scene.CallOf(trap.operation);
    call.arguments.insert(call.arguments.end(), further.begin(), further.end());
    const Outcome outcome = Run(trap.round, call);
    if (outcome.hung || outcome.signal != 0)
        trap.round.Add(Harm::Other, "the program hangs or was ended by a signal at " + how);
    trap.victim.Check(trap.round, how);
}

void BackupIsLink(const Trap& trap)
{
    std::filesystem::create_symlink(trap.victim.File(), trap.scene.BackupOf(trap.scene.Decks()[0]));
    Step(trap, "a link in place of a backup");
}

void BackupIsLinkToNothing(const Trap& trap)
{
    std::filesystem::create_symlink(trap.victim.NoFile(), trap.scene.BackupOf(trap.scene.Decks()[0]));
    Step(trap, "a link to nothing in place of a backup");
}

void BackupIsSecondName(const Trap& trap)
{
    std::filesystem::create_hard_link(trap.victim.File(), trap.scene.BackupOf(trap.scene.Decks()[0]));
    Step(trap, "a second name in place of a backup");
}

void NumberedBackupIsLink(const Trap& trap)
{
    if (!HasOption("replace", "numbered"))
        return BackupIsLink(trap);
    const Path backup = trap.scene.BackupOf(trap.scene.Decks()[0]);
    Write(backup, "of before");
    std::filesystem::create_symlink(trap.victim.File(), backup.string() + ".2");
    Step(trap, "a link in place of a numbered backup", {"--backup=numbered"});
}

void RecordIsLink(const Trap& trap)
{
    std::filesystem::create_symlink(trap.victim.File(), trap.scene.Folder() / ".tessarine-backups");
    Step(trap, "a link in place of the record of backups");
}

/// Of somebody else only where files can be given away; a link to one's own file may be followed.
bool VictimIsOneself()
{
    return geteuid() != 0;
}

void DeckIsLink(const Trap& trap)
{
    if (VictimIsOneself())
        return BackupIsLink(trap);
    std::filesystem::create_symlink(trap.victim.File(), trap.scene.Folder() / "q.pptx");
    Step(trap, "a link in place of a deck");
}

void NamedDeckIsLink(const Trap& trap)
{
    if (VictimIsOneself())
        return BackupIsLinkToNothing(trap);
    std::filesystem::create_symlink(trap.victim.File(), trap.scene.Folder() / "q.pptx");
    Step(trap, "a link that is named", {(trap.scene.Folder() / "q.pptx").string()});
}

void CleanedBackupIsLink(const Trap& trap)
{
    const Operation& clean = Operations()[3];
    trap.scene.Prepare(clean);
    const Path backup = trap.scene.BackupOf(trap.scene.Decks()[0]);
    std::filesystem::remove(backup);
    std::filesystem::create_symlink(trap.victim.File(), backup);
    Step({trap.round, trap.scene, trap.victim, clean}, "a link in place of a backup to remove");
}

void RestoreTargetIsLink(const Trap& trap)
{
    if (VictimIsOneself())
        return CleanedBackupIsLink(trap);
    // A deck with a true backup, whose place a link then takes.
    const Operation& restore = Operations()[2];
    trap.scene.Prepare(restore);
    const Path deck = trap.scene.PathOf(trap.scene.Decks()[0]);
    std::filesystem::remove(deck);
    std::filesystem::create_symlink(trap.victim.File(), deck);
    Step({trap.round, trap.scene, trap.victim, restore}, "a link in place of a deck to restore");
}

Path OwnDataFolder(const Trap& trap)
{
    const Path folder = trap.round.Folder() / "data" / "Tessarine" / "Tessarine";
    std::filesystem::create_directories(folder);
    return folder;
}

void ErrorLogIsLink(const Trap& trap)
{
    std::filesystem::create_symlink(trap.victim.File(), OwnDataFolder(trap) / "Errors.Log");
    Write(trap.scene.Folder() / "broken.pptx", "no deck");
    Step(trap, "a link in place of the error log");
}

/// The names of journals hold the number of the process, which is soon guessed.
void JournalIsLink(const Trap& trap)
{
    const Path folder = OwnDataFolder(trap);
    for (int number = 1; number <= 200; ++number) {
        const Path name = folder / ("Run-" + std::to_string(getpid() + number) + ".journal");
        std::filesystem::create_symlink(number % 2 == 0 ? trap.victim.File() : trap.victim.NoFile(), name);
    }
    Step(trap, "a link in place of a journal");
}

/// While the run is at a deck, the folder becomes a link to the victim's, whose file has the same name. Before the deck
/// is opened the link would be as good a way to it as any.
void FolderIsSwapped(const Trap& trap)
{
    const std::vector<Question>& trace = TraceOf(trap.operation, FewDecks());
    const auto open = std::ranges::find_if(trace, [](const Question& call) {
        return std::string_view(call.call).starts_with("open") && std::string_view(call.path).ends_with("a.pptx");
    });
    const auto rest = static_cast<std::size_t>(trace.end() - open);
    const std::uint64_t number = trace.size() - rest + 2 + trap.round.random.Below(rest);
    {
        Running running(trap.round, trap.scene.CallOf(trap.operation).AsksAt({number}));
        if (running.NextQuestion()) {
            const Path moved = trap.round.Folder() / "moved";
            std::filesystem::rename(trap.scene.Folder(), moved);
            std::filesystem::create_symlink(trap.victim.File().parent_path(), trap.scene.Folder());
            running.LetGo();
        }
        if (running.End().hung)
            trap.round.Add(Harm::Other, "the program hangs");
    }
    trap.victim.Check(trap.round, "a folder swapped at call " + std::to_string(number));
}

/// In front of a call, the new file beside the deck is replaced by a link.
void NewFileIsSwapped(const Trap& trap)
{
    const std::uint64_t number = 1 + trap.round.random.Below(CallsOf(trap.operation, FewDecks()));
    {
        Running running(trap.round, trap.scene.CallOf(trap.operation).AsksAtAll());
        while (const auto question = running.NextQuestion()) {
            for (const std::string& name : NamesIn(trap.scene.Folder())) {
                const Path path = trap.scene.Folder() / name;
                if (question->number >= number && name.starts_with(".tessarine-") &&
                    !std::filesystem::is_symlink(path)) {
                    std::filesystem::remove(path);
                    std::filesystem::create_symlink(trap.victim.File(), path);
                }
            }
            running.LetGo();
        }
        if (running.End().hung)
            trap.round.Add(Harm::Other, "the program hangs");
    }
    trap.victim.Check(trap.round, "a new file swapped from call " + std::to_string(number) + " on");
}

constexpr std::array traps{
    BackupIsLink,  BackupIsLinkToNothing, BackupIsSecondName,  NumberedBackupIsLink, RecordIsLink,
    DeckIsLink,    NamedDeckIsLink,       RestoreTargetIsLink, CleanedBackupIsLink,  ErrorLogIsLink,
    JournalIsLink, FolderIsSwapped,       NewFileIsSwapped};

void PlayRound(Round& round)
{
    Scene scene(round, FewDecks());
    const Victim victim(round.Folder() / "victim");
    traps[round.Number() % traps.size()]({round, scene, victim, Operations()[0]});
}

}  // namespace

Kind PlantedLinks()
{
    return {"links", PlayRound, traps.size()};
}

}  // namespace tessarine::torture
