#include <atomic>
#include <filesystem>
#include <vector>

#include <gmock/gmock.h>

#include "batch/WorkerRun.h"
#include "platform/Failure.h"
#include "platform/NativePath.h"
#include "support/TemporaryFolder.h"

namespace tessarine::batch
{
namespace
{

using testing::Each;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using testing::UnorderedElementsAre;

/// A run whose workers do what the names of the files say (ScriptedWorker.cpp).
class WorkerRunTest : public testing::Test
{
protected:
    WorkerTerms Terms(const std::string& input = {}) const
    {
        return {.arguments = {"find"}, .standardInput = input, .job = {{"job", "job"}}, .replaces = replaces};
    }

    /// Runs the files of these names, and gives a line for each report.
    std::vector<std::string> Run(const std::vector<std::string>& names, std::size_t workers = 2)
    {
        std::vector<JobFile> files;
        for (const std::string& name : names)
            files.push_back({folder.PathOf(FromUtf8(name)), {}});
        return RunFiles(files, workers);
    }

    std::vector<std::string> RunFiles(const std::vector<JobFile>& files, std::size_t workers = 2)
    {
        std::vector<std::string> lines;
        WorkerRun run(Terms(), workers, [&](const FileReport& file) {
            lines.push_back(NameOf(file.path) + (file.error.empty() ? "" : ": " + ToUtf8(file.error)));
            occurrences += file.Occurrences();
            reported = lines.size();
        });
        run.Note = [this](const std::string& line) { notes.push_back(line); };
        run.InHand = [this](const std::vector<String>& paths) {
            inHand.emplace_back();
            for (const String& path : paths) {
                inHand.back().push_back(NameOf(path));
                const auto number = static_cast<std::size_t>(std::atoi(NameOf(path).c_str()));
                farthestAhead = std::max(farthestAhead, number - std::min(number, reported.load()));
            }
        };
        run.CancelRequested = [this] { return isCancelled && isCancelled(); };
        notReached = run.Run(files);
        return lines;
    }

    static std::string NameOf(const String& path)
    {
        return std::filesystem::path(NativePath(path)).filename().string();
    }

    TemporaryFolder folder;
    bool replaces = false;
    std::function<bool()> isCancelled;
    std::atomic<std::size_t> reported = 0;
    std::int64_t occurrences = 0;
    std::size_t notReached = 0;
    std::vector<std::string> notes;
    std::vector<std::vector<std::string>> inHand;
    std::size_t farthestAhead = 0;  // that a file in hand with a number was of the report
};

TEST_F(WorkerRunTest, ReportsEachFileInTheOrderOfTheFiles)
{
    EXPECT_THAT(Run({"waits-for-1", "makes-1", "2", "3", "4"}), ElementsAre("waits-for-1", "makes-1", "2", "3", "4"));
    EXPECT_EQ(occurrences, 10);
    EXPECT_EQ(notReached, 0u);
}

TEST_F(WorkerRunTest, HasSeveralFilesInHandAtATime)
{
    // The first one is done when the last has begun.
    EXPECT_THAT(Run({"waits-for-end", "b", "c", "makes-end"}), SizeIs(4));
    EXPECT_THAT(Run({"waits-for-ten", "b", "c", "makes-ten"}, 10), SizeIs(4));
    EXPECT_THAT(inHand, testing::Contains(SizeIs(2)));
    EXPECT_THAT(inHand.back(), IsEmpty());
}

TEST_F(WorkerRunTest, FailsTheFileAtWhichAWorkerEndsAndNoOther)
{
    EXPECT_THAT(Run({"a", "ends-within", "b", "ends-within too", "c", "d"}),
                ElementsAre("a", "ends-within: The worker that had the file in hand ended (exit status 3).", "b",
                            "ends-within too: The worker that had the file in hand ended (exit status 3).", "c", "d"));
}

TEST_F(WorkerRunTest, TellsThatAFileOfADeadWorkerIsWhole)
{
    replaces = true;

    EXPECT_THAT(Run({"a", "ends-within"}),
                ElementsAre("a",
                            "ends-within: The worker that had the file in hand ended (exit status 3); the file is "
                            "as it was, or changed completely."));
}

TEST_F(WorkerRunTest, FailsAFileOfWhichAWorkerSaysNothingThatMakesSense)
{
    EXPECT_THAT(Run({"garbage", "a", "nonsense", "b"}),
                ElementsAre(HasSubstr("garbage: The worker that had the file in hand ended ("), "a",
                            HasSubstr("nonsense: The worker that had the file in hand ended ("), "b"));
}

TEST_F(WorkerRunTest, GivesAFileThatADeadWorkerHadNotBegunToAnother)
{
    // It kills every worker that it comes to, each before it has begun.
    EXPECT_THAT(Run({"a", "ends-before", "b"}),
                ElementsAre("a", HasSubstr("ends-before: No worker lived to begin the file"), "b"));
}

TEST_F(WorkerRunTest, ReportsFilesThatAreRefusedInTheirPlaces)
{
    const auto file = [this](StringView name, StringView refusal = {}) {
        return JobFile{folder.PathOf(name), String(refusal)};
    };
    EXPECT_THAT(RunFiles({file(u"a", u"File not found."), file(u"b"), file(u"c", u"Not a regular file."), file(u"d"),
                          file(u"e", u"File not found.")}),
                ElementsAre("a: File not found.", "b", "c: Not a regular file.", "d", "e: File not found."));
    EXPECT_THAT(RunFiles({file(u"a", u"File not found.")}), ElementsAre("a: File not found."));
}

TEST_F(WorkerRunTest, HasOneFileUnderTwoNamesInHandOnceAtATime)
{
    replaces = true;
    folder.Write(u"a", "a");
    std::filesystem::create_hard_link(NativePath(folder.PathOf(u"a")), NativePath(folder.PathOf(u"b")));

    EXPECT_THAT(Run({"a", "b", "a", "c"}), ElementsAre("a", "b", "a", "c"));

    for (const auto& names : inHand)
        EXPECT_LE(std::ranges::count_if(names, [](const std::string& name) { return name != "c"; }), 1);
}

TEST_F(WorkerRunTest, HasFilesWithOneBackupInHandOnceAtATime)
{
    replaces = true;

    EXPECT_THAT(Run({"a.pptx", "a.pptm", "a.potx"}), SizeIs(3));

    EXPECT_THAT(inHand, Each(testing::SizeIs(testing::Le(1u))));
}

TEST_F(WorkerRunTest, BeginsNoFileAfterACancel)
{
    // Asked for with the first report. What is in hand by then is done, and reported.
    std::vector<std::string> names{"a", "waits-for-cancel"};
    for (int i = 0; i < 5000; ++i)
        names.push_back("file " + std::to_string(i));
    isCancelled = [this] {
        if (reported == 0)
            return false;
        folder.Write(u"cancel", "");
        return true;
    };

    const std::vector<std::string> lines = Run(names);

    EXPECT_GE(lines.size(), 1u);
    EXPECT_LT(lines.size(), names.size());
    EXPECT_EQ(notReached, names.size() - lines.size());
    EXPECT_TRUE(std::equal(lines.begin(), lines.end(), names.begin()));
}

TEST_F(WorkerRunTest, HoldsBackWorkersThatAreFarAheadOfTheReport)
{
    std::vector<std::string> names{"waits-for-go"};
    for (int number = 1; number < 3000; ++number)
        names.push_back(std::to_string(number));
    names[1000] = "1000-makes-go";

    EXPECT_EQ(Run(names), names);

    // The answers that wait for the first one stay bounded.
    EXPECT_GE(farthestAhead, 900u);
    EXPECT_LE(farthestAhead, 1026u);
}

TEST_F(WorkerRunTest, TellsTheNotesOfWorkers)
{
    EXPECT_THAT(Run({"note", "b"}), SizeIs(2));

    EXPECT_THAT(notes, UnorderedElementsAre("a note of " + ToUtf8(folder.PathOf(u"note")), "a note at the end",
                                            "a note at the end"));
}

TEST_F(WorkerRunTest, StartsNoMoreWorkersThanThereAreFiles)
{
    EXPECT_THAT(Run({"a", "b"}, 50), ElementsAre("a", "b"));

    EXPECT_THAT(notes, ElementsAre("a note at the end", "a note at the end"));
}

TEST_F(WorkerRunTest, RaisesWhyAWorkerCannotBegin)
{
    const auto reason = [this](const std::string& input) {
        WorkerRun run(Terms(input), 2, [](const FileReport&) { FAIL() << "no file was to be touched"; });
        try {
            run.Run({{u"a", {}}, {u"b", {}}});
        } catch (const Failure& failure) {
            return ToUtf8(failure.Reason());
        }
        return std::string();
    };
    EXPECT_EQ(reason("refuses"), "there is no list");
    EXPECT_EQ(reason("ends at its start"), "a worker ended at its start: exit status 5");
    EXPECT_EQ(reason("reads another job"), "the job was changed while the workers of the run were started");
}

}  // namespace
}  // namespace tessarine::batch
