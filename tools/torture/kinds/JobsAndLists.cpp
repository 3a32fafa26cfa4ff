#include <unistd.h>

#include <cerrno>

#include "Expected.h"
#include "Kinds.h"
#include "Scene.h"
#include "support/TemporaryFolder.h"

namespace tessarine::torture
{

namespace
{

/// A command that writes one file, over an older one.
struct Making {
    std::string file;
    std::vector<std::string> arguments;
};

/// The paths stay the same from round to round, as jobs hold them in full.
std::vector<Making> MakingsIn(const Path& folder)
{
    const std::string job = (folder / "rename.tsq").string();
    const std::string list = (folder / "pairs.xls").string();
    const std::string table = (folder / "pairs.tab").string();
    const std::string source = (folder / "pairs.csv").string();
    return {
        {"rename.tsq", {"job", "make", "--find", findText, "--with", replaceText, "--backup", "-o", job, "/srv/decks"}},
        {"pairs.xls", {"list", "convert", source, list}},
        {"pairs.tab", {"list", "convert", source, table}},
    };
}

/// A list of pairs, with the columns that docs/lists.md names.
std::string ListBytes()
{
    return "Find What,Replace With,InBuiltinProperty,InCustomProperties,InFooter,InHandoutMaster,InHeader,"
           "InHyperlinkAddresses,InLinks,InNotes,InNotesMaster,InShapesAndTextboxes,InSlideMasterPerPresentation,"
           "InSlideMasterPerSlide,InSlides,InTitleMaster,MatchCase,MatchWholeWord\r\n"
           "Fabrikam,Contoso,0,0,0,0,0,0,0,1,0,1,0,0,1,0,0,0\r\n"
           "2023,2024,0,0,0,0,0,0,0,0,0,0,0,0,1,0,0,0\r\n";
}

void PlayRound(Round& round)
{
    // Its own folder of decks is not needed; what is made stands alone.
    const Path folder = round.Folder() / "made";
    std::filesystem::create_directories(folder);
    const auto makings = MakingsIn(folder);
    const Making& making = makings[round.Number() % makings.size()];
    const Path path = folder / making.file;
    Write(folder / "pairs.csv", ListBytes());
    Call call;
    call.arguments = making.arguments;
    call.dataFolder = round.Folder() / "data";
    const Outcome undisturbed = Run(round, Call(call).Counted());
    const auto made = ContentIfThere(path);
    if (!made || undisturbed.callsMet == 0)
        return round.Add(Harm::Other, "an undisturbed command fails: " + undisturbed.Text());
    const std::string old = "an older file";
    Write(path, old);
    std::filesystem::permissions(path, std::filesystem::perms(0640));
    const Access before = AccessOf(path).value();

    const std::uint64_t number = 1 + Spread(round.Number() / makings.size() / 2, undisturbed.callsMet);
    const bool dies = round.Number() / makings.size() % 2 == 0;
    constexpr std::array failures{EIO, ENOSPC, EACCES, EMFILE, ENOMEM};
    if (dies)
        call.DiesAt(number);
    else
        call.FailsAt(number, round.random.OneOf(failures), round.random.Chance(30));
    const Outcome outcome = Run(round, call);

    round.Checked();
    const auto content = ContentIfThere(path);
    if (!content)
        return round.Add(Harm::Lost, making.file + " is missing");
    if (content != old && content != made)
        round.Add(Harm::Damaged, making.file + " is neither the old nor the new file");
    if (const std::string gained = Gained(before, AccessOf(path).value(), geteuid()); !gained.empty())
        round.Add(Harm::Widened, making.file + ": " + gained);
    if (ContentIfThere(folder / "pairs.csv") != ListBytes())
        round.Add(Harm::Lost, "the list that was read is another one");
    if (!dies) {
        if (outcome.hung || outcome.signal != 0)
            round.Add(Harm::Other, "the program hangs or was ended by a signal");
        if (outcome.status == 0 && content != made)
            round.Add(Harm::Other, making.file + " was not made, and the exit status is 0");
        if (outcome.status != 0 && outcome.error.empty())
            round.Add(Harm::Other, making.file + " was not made, and no reason is given");
    }
}

}  // namespace

Kind JobsAndLists()
{
    return {"jobs-and-lists", PlayRound, 18};
}

}  // namespace tessarine::torture
