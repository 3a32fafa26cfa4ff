#include "Scene.h"

#include <unistd.h>

#include <algorithm>
#include <map>
#include <stdexcept>

#include "Expected.h"
#include "support/TemporaryFolder.h"

namespace tessarine::torture
{

namespace
{

/// 2020-01-02; each deck of a folder is a day older than the one after it.
constexpr std::time_t firstDay = 1'577'923'200;
constexpr std::time_t day = 86'400;

/// What the program itself keeps beside backups.
constexpr const char* backupRecord = ".tessarine-backups";

bool AllFailuresAreOf(const std::vector<std::string>& names, const Report& report)
{
    return !report.files.empty() && std::ranges::all_of(report.files, [&](const auto& file) {
        return file.second.result != FileResult::Failed || std::ranges::find(names, file.first) != names.end();
    });
}

std::string ModeText(mode_t mode)
{
    char text[8];
    std::snprintf(text, sizeof text, "%04o", mode & 07777u);
    return text;
}

}  // namespace

const std::vector<Operation>& Operations()
{
    static const std::vector<Operation> all = [] {
        const std::vector<std::string> replace{"replace",  "--find", findText,      "--with",     replaceText,
                                               "--format", "json",   "--read-only", "--keep-date"};
        auto withBackup = replace;
        withBackup.push_back("--backup");
        std::vector<std::string> restore{"restore", "--format", "json"};
        if (HasOption("restore", "--read-only"))
            restore.push_back("--read-only");
        std::vector<Operation> operations{
            {"replace --backup", false, true, Operation::Backups::Made, withBackup},
            {"replace", false, true, Operation::Backups::None, replace},
            {"restore", true, false, Operation::Backups::Stay, restore},
            {"clean", true, true, Operation::Backups::Removed, {"clean", "--format", "json"}},
        };
        if (HasOption("replace", "--backup=numbered")) {
            auto numbered = replace;
            numbered.push_back("--backup=numbered");
            operations.push_back({"replace --backup=numbered", false, true, Operation::Backups::Made, numbered});
        }
        return operations;
    }();
    return all;
}

Scene::Scene(Round& round, const std::vector<DeckPlan>& plans, const std::string& name)
    : round_(round), folder_(round.Folder() / name)
{
    std::filesystem::create_directories(folder_);
    for (const DeckPlan& plan : plans) {
        Deck deck;
        deck.name = plan.name;
        deck.old = plan.bytes;
        deck.replaced = ReplacedBytes(plan.name, plan.bytes);
        deck.mode = plan.mode;
        deck.modified = firstDay + day * static_cast<std::time_t>(decks_.size());
        Write(PathOf(deck), deck.old);
        std::filesystem::permissions(PathOf(deck), static_cast<std::filesystem::perms>(deck.mode));
        SetModified(PathOf(deck), deck.modified);
        deck.access = AccessOf(PathOf(deck)).value();
        decks_.push_back(std::move(deck));
    }
    Remember();
}

Path Scene::BackupOf(const Deck& deck) const
{
    return folder_ / (deck.name.substr(0, deck.name.size() - 4) + ".bak");
}

Call Scene::CallOf(const Operation& operation) const
{
    Call call;
    call.arguments = operation.arguments;
    call.arguments.push_back(folder_.string());
    call.dataFolder = round_.Folder() / "data";
    return call;
}

void Scene::Prepare(const Operation& operation)
{
    if (operation.startsReplaced && Run(round_, CallOf(Operations()[0])).status != 0)
        throw std::runtime_error("the decks can't be prepared");
    Remember();
}

void Scene::Remember()
{
    remembered_.clear();
    rememberedBackups_.clear();
    for (const Deck& deck : decks_) {
        remembered_.push_back(ContentIfThere(PathOf(deck)));
        rememberedBackups_.push_back(ContentIfThere(BackupOf(deck)));
    }
}

void Scene::CheckDeck(const Deck& deck, bool mayBeOld, bool mayBeReplaced)
{
    round_.Checked();
    const auto content = ContentIfThere(PathOf(deck));
    if (!content)
        return round_.Add(Harm::Lost, deck.name + " is missing");
    if ((mayBeOld && *content == deck.old) || (mayBeReplaced && *content == deck.replaced)) {
        // Rights count only while the deck's content is in the file.
        if (const std::string gained = Gained(deck.access, AccessOf(PathOf(deck)).value(), geteuid()); !gained.empty())
            round_.Add(Harm::Widened, deck.name + ": " + gained);
        return;
    }
    if (*content == deck.old)
        return round_.Add(Harm::Other, deck.name + " is still the old one");
    if (*content == deck.replaced)
        return round_.Add(Harm::Other, deck.name + " is still the new one");
    round_.Add(Harm::Damaged, deck.name + " is " + Describe(*content));
}

void Scene::CheckBackup(const Deck& deck, bool mustBeThere)
{
    round_.Checked();
    const auto content = ContentIfThere(BackupOf(deck));
    if (!content) {
        if (mustBeThere && !IsInNumberedBackup(deck))
            round_.Add(Harm::Lost, "the backup of " + deck.name + " is missing");
        return;
    }
    if (*content == deck.replaced && deck.HasHit())
        round_.Add(Harm::Lost, "the backup of " + deck.name + " holds the new deck in place of the original");
    else if (*content != deck.old)
        round_.Add(Harm::Damaged, "the backup of " + deck.name + " is " + Describe(*content));
    if (const std::string gained = Gained(deck.access, AccessOf(BackupOf(deck)).value(), geteuid()); !gained.empty())
        round_.Add(Harm::Widened, "the backup of " + deck.name + ": " + gained);
}

std::vector<std::string> Scene::NumberedBackupsOf(const Deck& deck) const
{
    std::vector<std::string> names = NamesIn(folder_);
    const std::string start = BackupOf(deck).filename().string() + ".";
    std::erase_if(names, [&](const std::string& name) { return !name.starts_with(start); });
    return names;
}

bool Scene::IsInNumberedBackup(const Deck& deck) const
{
    return std::ranges::any_of(NumberedBackupsOf(deck),
                               [&](const std::string& name) { return ContentIfThere(folder_ / name) == deck.old; });
}

void Scene::CheckNumberedBackups(const Deck& deck)
{
    for (const std::string& name : NumberedBackupsOf(deck)) {
        round_.Checked();
        const auto content = ContentIfThere(folder_ / name);
        if (content != deck.old && content != deck.replaced)
            round_.Add(Harm::Damaged, name + " is " + Describe(content.value_or("")));
    }
}

void Scene::CheckCut(const Operation& operation)
{
    using Backups = Operation::Backups;
    for (const Deck& deck : decks_) {
        CheckDeck(deck, !operation.startsReplaced || !operation.endsReplaced, true);
        const bool isReplaced = deck.HasHit() && ContentIfThere(PathOf(deck)) == deck.replaced;
        CheckNumberedBackups(deck);
        if (operation.backups != Backups::None)
            CheckBackup(deck, operation.backups == Backups::Stay || (operation.backups == Backups::Made && isReplaced));
    }
}

void Scene::CheckDone(const Operation& operation, const std::vector<std::string>& excused)
{
    using Backups = Operation::Backups;
    for (const Deck& deck : decks_) {
        CheckDeck(deck, !operation.endsReplaced, operation.endsReplaced);
        CheckNumberedBackups(deck);
        if (operation.backups == Backups::Removed) {
            round_.Checked();
            if (StatusOf(BackupOf(deck)))
                round_.Add(Harm::Other, "the backup of " + deck.name + " was not removed");
        } else if (operation.backups != Backups::None) {
            CheckBackup(deck, true);
        }
    }
    if (operation.backups == Backups::Removed && StatusOf(folder_ / backupRecord))
        round_.Add(Harm::Other, "the record of backups is left over");
    if (operation.backups == Backups::Made || operation.backups == Backups::None)
        CheckAttributes(excused);
    CheckNothingLeftOver();
}

void Scene::FinishUndisturbed(const Operation& operation, const std::vector<std::string>& excused)
{
    Remember();
    const Outcome outcome = Run(round_, CallOf(operation));
    CheckTruth(operation, outcome);
    if (outcome.status != 0 && !AllFailuresAreOf(excused, ReadReport(outcome)))
        round_.Add(Harm::Other, "an undisturbed run afterwards does not succeed: " + outcome.Text());
    CheckDone(operation, excused);
}

void Scene::CheckAttributes(const std::vector<std::string>& excused)
{
    for (const Deck& deck : decks_) {
        const auto status = StatusOf(PathOf(deck));
        if (!status || std::ranges::find(excused, deck.name) != excused.end())
            continue;
        if ((status->st_mode & 07777) != deck.mode)
            round_.Add(Harm::Other,
                       deck.name + " has the mode " + ModeText(status->st_mode) + ", not " + ModeText(deck.mode));
        if (status->st_mtime != deck.modified)
            round_.Add(Harm::Other, deck.name + " has lost its date");
    }
}

void Scene::CheckNothingLeftOver()
{
    // Where the folder's record can't be used for once, a user has one of his own.
    const std::string ownRecord = backupRecord + ("-" + std::to_string(geteuid()));
    for (const std::string& name : NamesIn(folder_)) {
        const bool isKnown = std::ranges::any_of(decks_, [&](const Deck& deck) {
            // Of numbered backups the first has the plain name.
            return name == deck.name || name == backupRecord || name == ownRecord ||
                   name.starts_with(BackupOf(deck).filename().string());
        });
        if (!isKnown)
            round_.Add(Harm::Other, (name.starts_with(".tessarine-") ? "a new file" : name) + " is left over");
    }
}

std::optional<std::string> Scene::Watched(const Operation& operation, const Deck& deck) const
{
    return ContentIfThere(operation.backups == Operation::Backups::Removed ? BackupOf(deck) : PathOf(deck));
}

void Scene::CheckLine(const Operation& operation, const Deck& deck, const Report& report, const Outcome& outcome)
{
    const auto position = static_cast<std::size_t>(&deck - decks_.data());
    const bool isClean = operation.backups == Operation::Backups::Removed;
    const bool hasChanged = Watched(operation, deck) != (isClean ? rememberedBackups_ : remembered_)[position];
    const FileLine* line = report.Of(deck.name);
    if (line == nullptr) {
        if (outcome.status == 0 || (!hasChanged && outcome.error.empty() && !report.AnyFailed()))
            round_.Add(Harm::Other, "the report is silent about " + deck.name);
        else if (hasChanged)
            round_.Add(Harm::Other, deck.name + " was changed and has no line in the report");
        return;
    }
    if (hasChanged && line->result != FileResult::Done)
        round_.Add(Harm::Other, deck.name + " was changed and is reported as " +
                                    (line->result == FileResult::Failed ? "failed: " + line->error : "unchanged"));
    const bool shows = isClean || deck.HasHit();
    if (!hasChanged && shows && line->result == FileResult::Done &&
        (isClean || remembered_[position] != (operation.endsReplaced ? deck.replaced : deck.old)))
        round_.Add(Harm::Other, deck.name + " was not changed and is reported as changed");
}

void Scene::CheckTruth(const Operation& operation, const Outcome& outcome)
{
    if (outcome.hung)
        return round_.Add(Harm::Other, "the program hangs");
    if (outcome.signal != 0)
        return round_.Add(Harm::Other, "the program was ended by signal " + std::to_string(outcome.signal));
    const Report report = ReadReport(outcome);
    if (!report.isReadable)
        round_.Add(Harm::Other, "the report is damaged");
    if (outcome.status == 2) {
        if (outcome.error.empty())
            round_.Add(Harm::Other, "a refused call gives no reason");
        for (const Deck& deck : decks_)
            if (Watched(operation, deck) != (operation.backups == Operation::Backups::Removed
                                                 ? rememberedBackups_
                                                 : remembered_)[static_cast<std::size_t>(&deck - decks_.data())])
                round_.Add(Harm::Other, deck.name + " was changed by a call that was refused");
        return;
    }
    if (outcome.status != 0 && outcome.status != 1)
        round_.Add(Harm::Other, "the exit status is " + std::to_string(outcome.status));
    if (!report.hasSummary)
        round_.Add(Harm::Other, "there is no summary");
    if (report.AnyFailed() && outcome.status == 0)
        round_.Add(Harm::Other, "a file failed and the exit status is 0");
    for (const Deck& deck : decks_)
        CheckLine(operation, deck, report, outcome);
}

const std::vector<Question>& TraceOf(const Operation& operation, const std::vector<DeckPlan>& plans)
{
    static std::map<std::string, std::vector<Question>> known;
    std::string key = operation.name;
    for (const DeckPlan& plan : plans)
        key += "/" + plan.name;
    std::vector<Question>& trace = known[key];
    if (trace.empty()) {
        const TemporaryFolder folder;
        Round aside(ToUtf8(folder.Path()), 0, 0);
        Scene scene(aside, plans);
        scene.Prepare(operation);
        Running running(aside, scene.CallOf(operation).AsksAtAll());
        while (const auto question = running.NextQuestion()) {
            trace.push_back(*question);
            running.LetGo();
        }
        running.End();
    }
    return trace;
}

std::uint64_t CallsOf(const Operation& operation, const std::vector<DeckPlan>& plans)
{
    static std::map<std::pair<std::string, std::size_t>, std::uint64_t> known;
    std::uint64_t& calls = known[{operation.name, plans.size()}];
    if (calls == 0) {
        const TemporaryFolder folder;
        Round aside(ToUtf8(folder.Path()), 0, 0);
        Scene scene(aside, plans);
        scene.Prepare(operation);
        calls = Run(aside, scene.CallOf(operation).Counted()).callsMet;
        if (calls == 0)
            throw std::runtime_error("no call was met: the library that stands in front of them was not loaded");
    }
    return calls;
}

}  // namespace tessarine::torture
