#include <sched.h>
#include <sys/mount.h>
#include <unistd.h>

#include "Kinds.h"
#include "Scene.h"

namespace tessarine::torture
{

namespace
{

/// Writes fail after so many bytes, by a limit of the process or because the disk is full.
void FullAfter(Round& round, const Operation& operation, bool byLimit)
{
    Scene scene(round);
    scene.Prepare(operation);
    Call call = scene.CallOf(operation);
    if (byLimit)
        // The report, which is a file here, is to fit.
        call.longestFile = round.random.Below(20'000) + 4'096;
    else
        call.DiskIsFullAfter(round.random.Below(2'400'000));

    const Outcome outcome = Run(round, call);

    scene.CheckTruth(operation, outcome);
    scene.CheckCut(operation);
    scene.CheckNothingLeftOver();
    scene.FinishUndisturbed(operation);
}

bool MayMount()
{
    static const bool may =
        geteuid() == 0 && unshare(CLONE_NEWNS) == 0 && mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0;
    return may;
}

/// A file system in memory for a scope.
class SmallDisk
{
public:
    SmallDisk(Path folder, std::size_t kilobytes) : folder_(std::move(folder))
    {
        std::filesystem::create_directories(folder_);
        const std::string size = "size=" + std::to_string(kilobytes) + "k";
        isThere_ = mount("tmpfs", folder_.c_str(), "tmpfs", 0, size.c_str()) == 0;
    }
    ~SmallDisk()
    {
        if (isThere_)
            umount2(folder_.c_str(), MNT_DETACH);
    }
    SmallDisk(const SmallDisk&) = delete;
    SmallDisk& operator=(const SmallDisk&) = delete;

    bool IsThere() const { return isThere_; }

private:
    Path folder_;
    bool isThere_ = false;
};

void ReallyFull(Round& round)
{
    const Operation& operation = Operations()[round.random.Below(2)];
    const SmallDisk disk(round.Folder() / "decks", 2'800);
    if (!disk.IsThere())
        return FullAfter(round, operation, false);
    Scene scene(round);
    const Path filler = round.Folder() / "decks" / "filler";
    const std::size_t free = std::filesystem::space(scene.Folder()).available;
    Write(filler, std::string(free - std::min(free, round.random.Below(1'500'000)), 'f'));

    const Outcome outcome = Run(round, scene.CallOf(operation));

    scene.CheckTruth(operation, outcome);
    scene.CheckCut(operation);
    std::filesystem::remove(filler);
    std::filesystem::remove_all(round.Folder() / "data");
    if (operation.backups == Operation::Backups::None)
        scene.FinishUndisturbed(operation);
}

void PlayRound(Round& round)
{
    const std::size_t way = round.Number() % 3;
    const Operation& operation = Operations()[round.Number() / 3 % Operations().size()];
    if (way == 2 && MayMount())
        ReallyFull(round);
    else
        FullAfter(round, operation, way == 1);
}

}  // namespace

Kind FullDisks()
{
    return {"full-disk", PlayRound, 12};
}

}  // namespace tessarine::torture
