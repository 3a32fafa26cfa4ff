#include <unistd.h>

#include "Expected.h"
#include "Kinds.h"
#include "Scene.h"

namespace tessarine::torture
{

namespace
{

/// Whom the run belongs to, and whose files it meets.
constexpr uid_t runner = 65534;
constexpr uid_t stranger = 12'345;

void Give(const Path& path, uid_t user, mode_t mode)
{
    if (chown(path.c_str(), user, user) != 0 || chmod(path.c_str(), mode) != 0)
        throw std::runtime_error("can't give files away");
}

/// An unprivileged user's run over a folder in which others' decks lie. What it can't keep it must not change.
void PlayRound(Round& round)
{
    const Operation& operation = Operations()[round.random.Below(2)];
    Scene scene(round, FewDecks());
    constexpr std::array<mode_t, 5> modes{0644, 0666, 0664, 0600, 0606};
    const mode_t mode = round.random.OneOf(modes);
    const bool strangersFolder = round.random.Chance(50);
    Give(scene.Folder(), strangersFolder ? stranger : runner, 0777);
    const Path deck = scene.PathOf(scene.Decks()[0]);
    Give(deck, stranger, mode);
    Give(scene.PathOf(scene.Decks()[1]), runner, 0640);
    const Access before = AccessOf(deck).value();
    const Access ownBefore = AccessOf(scene.PathOf(scene.Decks()[1])).value();

    Call call = scene.CallOf(operation);
    std::filesystem::create_directories(call.dataFolder);
    Give(call.dataFolder, runner, 0700);
    Give(round.Folder(), 0, 0755);
    call.user = runner;
    const bool inPlace = HasOption("replace", "--in-place ") && round.random.Chance(40);
    if (inPlace)
        call.arguments.push_back("--in-place");
    if (inPlace && round.random.Chance(50)) {
        // The next run completes what was half written.
        Call killed = call;
        Run(round, killed.DiesAt(1 + round.random.Below(CallsOf(operation, FewDecks()) * 5 / 4)));
    }
    const auto contentBefore = ContentIfThere(deck);
    const Outcome outcome = Run(round, call);
    if (outcome.hung || outcome.signal != 0 || !ReadReport(outcome).hasSummary)
        round.Add(Harm::Other, "the run does not end as it should");

    round.Checked(4);
    const auto content = ContentIfThere(deck);
    const auto after = AccessOf(deck);
    if (!content || !after)
        return round.Add(Harm::Lost, "the stranger's deck is missing");
    if (*content != scene.Decks()[0].old && *content != scene.Decks()[0].replaced)
        round.Add(Harm::Damaged, "the stranger's deck is " + Describe(*content));
    if (*after != before)
        round.Add(Harm::Widened, "the stranger's deck has another owner, group or mode");
    const Report report = ReadReport(outcome);
    const FileLine* line = report.Of(scene.Decks()[0].name);
    if ((line != nullptr && line->result == FileResult::Done) && content == scene.Decks()[0].old)
        round.Add(Harm::Other, "the stranger's deck is reported as changed and was not");
    if ((line == nullptr || line->result != FileResult::Done) && content != contentBefore &&
        contentBefore == scene.Decks()[0].old)
        round.Add(Harm::Other, "the stranger's deck was changed and is not reported so");
    if (inPlace && (mode & 0006) == 0006 && *content != scene.Decks()[0].replaced)
        round.Add(Harm::Other, "the stranger's deck was not written in place, as was asked for");
    const Path backup = scene.BackupOf(scene.Decks()[0]);
    if (const auto access = AccessOf(backup)) {
        if (const std::string gained = Gained(before, *access, runner); !gained.empty())
            round.Add(Harm::Widened, "the backup of the stranger's deck: " + gained);
    }
    if (AccessOf(scene.PathOf(scene.Decks()[1])) != ownBefore)
        round.Add(Harm::Widened, "the runner's own deck has another owner, group or mode");
    scene.CheckNothingLeftOver();
}

/// Only a superuser can run as somebody else.
std::string WhyNot()
{
    return geteuid() == 0 ? "" : "only root can run the program as another user";
}

}  // namespace

Kind ForeignFiles()
{
    return {"strangers", PlayRound, 6, WhyNot};
}

}  // namespace tessarine::torture
