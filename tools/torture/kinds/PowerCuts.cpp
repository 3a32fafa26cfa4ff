#include "Expected.h"
#include "Kinds.h"
#include "PowerCut.h"
#include "saving/JournalEntries.h"
#include "saving/JournalText.h"
#include "Scene.h"

namespace tessarine::torture
{

namespace
{

constexpr std::size_t cutsPerRun = 100;

std::string ContentOr(const std::map<std::string, std::string>& files, const Path& path, const std::string& otherwise)
{
    const auto found = files.find(path.string());
    return found == files.end() ? otherwise : found->second;
}

/// Whether a deck that is half written can be completed: a journal that survived names a copy that did, too, and holds
/// the new content.
bool IsCompletable(const Scene& scene, const Scene::Deck& deck, const std::map<std::string, std::string>& files)
{
    for (const auto& [path, content] : files) {
        if (!path.ends_with(".journal"))
            continue;
        for (const JournalFields& line : ReadJournal(content)) {
            const auto write = WriteEntry::From(line);
            if (write && write->path == scene.PathOf(deck).string() &&
                ContentOr(files, write->copy, {}) == deck.replaced)
                return true;
        }
    }
    return false;
}

/// Each deck is the old or the new one, and the original of a new one is in its backup.
void CheckSurvivors(Round& round, const Scene& scene, const Operation& operation,
                    const std::map<std::string, std::string>& files, const std::string& when)
{
    const std::string missing = "(missing)";
    for (const Scene::Deck& deck : scene.Decks()) {
        round.Checked(2);
        const std::string content = ContentOr(files, scene.PathOf(deck), missing);
        if (content == missing)
            round.Add(Harm::Lost, deck.name + " is missing after a power cut " + when);
        else if (content != deck.old && content != deck.replaced && !IsCompletable(scene, deck, files))
            round.Add(Harm::Damaged, deck.name + " is " + Describe(content) + " after a power cut " + when);
        const std::string backup = ContentOr(files, scene.BackupOf(deck), missing);
        const bool isReplaced = deck.HasHit() && content == deck.replaced;
        const bool needsBackup = operation.backups == Operation::Backups::Stay ||
                                 (operation.backups == Operation::Backups::Made && isReplaced);
        if (needsBackup && backup == missing)
            round.Add(Harm::Lost, "the backup of " + deck.name + " is missing after a power cut " + when);
        else if (backup != missing && backup != deck.old)
            round.Add(Harm::Damaged,
                      "the backup of " + deck.name + " is " + Describe(backup) + " after a power cut " + when);
    }
}

/// Lays out what survived, beside what the run made of the folder, and runs again.
void RunOver(Round& round, Scene& scene, const Operation& operation, const std::map<std::string, std::string>& files)
{
    for (const std::string& name : NamesIn(scene.Folder()))
        std::filesystem::remove(scene.Folder() / name);
    for (const auto& [path, content] : files)
        if (Path(path).parent_path() == scene.Folder())
            Write(path, content);
    const Outcome outcome = Run(round, scene.CallOf(operation));
    if (outcome.status != 0)
        round.Add(Harm::Other, "a run after the power cut does not succeed: " + outcome.Text());
    scene.CheckCut(operation);
}

void PlayRound(Round& round)
{
    // A clean needs no luck: what it removes may come back. The fourth writes into a deck itself.
    const bool inPlace = round.Number() % 4 == 3;
    const Operation& operation = Operations()[inPlace ? 1 : round.Number() % 4];
    Scene scene(round, FewDecks());
    scene.Prepare(operation);
    Call call = scene.CallOf(operation);
    if (inPlace) {
        std::filesystem::create_hard_link(scene.PathOf(scene.Decks()[0]), round.Folder() / "second.pptx");
        call.arguments.push_back("--in-place-links");
    }
    Disk disk(round.Folder());
    const Path record = round.Folder() / "record";
    Run(round, call.RecordedIn(record));
    const std::vector<Record> records = ReadRecords(record);
    if (records.empty())
        return round.Add(Harm::Other, "nothing was recorded");

    std::vector<std::size_t> cuts(records.size() + 1, 0);
    for (std::size_t cut = 0; cut < cutsPerRun; ++cut)
        ++cuts[round.random.Below(cuts.size())];
    std::map<std::string, std::string> last;
    const std::size_t chosen = round.random.Below(cuts.size());
    for (std::size_t step = 0; step < cuts.size(); ++step) {
        for (std::size_t cut = 0; cut < cuts[step]; ++cut)
            CheckSurvivors(round, scene, operation, disk.Surviving(round.random),
                           "at step " + std::to_string(step) + " of " + std::to_string(records.size()));
        if (step == chosen)
            last = disk.Surviving(round.random);
        if (step < records.size())
            disk.Apply(records[step]);
    }
    // What is half written lies elsewhere once it is laid out again, so that its journal no longer knows it.
    if (!inPlace)
        RunOver(round, scene, operation, last);
}

}  // namespace

Kind PowerCuts()
{
    return {"power-cut", PlayRound, 4};
}

}  // namespace tessarine::torture
