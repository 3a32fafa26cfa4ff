#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <thread>

#include <gmock/gmock.h>

#include "batch/ProcessGuards.h"
#include "batch/Worker.h"
#include "batch/WorkerMessages.h"
#include "batch/WorkerProcess.h"
#include "platform/NativePath.h"
#include "support/Surroundings.h"

/// The program of these tests starts itself as a worker, which does what the names of its files say.
namespace tessarine::batch
{
namespace
{

Json ReportOf(const std::string& path)
{
    return {{"file", path},
            {"status", 1},
            {"state", "found"},
            {"error", ""},
            {"items", {{{"find", "cat"}, {"replace", ""}, {"counts", {{"slides", 2}}}}}},
            {"warnings", Json::array()}};
}

/// Waits for a file to be there, which another worker or the test makes.
void WaitFor(const std::filesystem::path& path)
{
    while (!std::filesystem::exists(path))
        std::this_thread::yield();
}

/// The file beside a file whose name holds these words and then that file's own name.
std::optional<std::filesystem::path> NameBehind(std::string_view words, const std::string& path)
{
    const std::size_t at = path.find(words);
    if (at == std::string::npos)
        return std::nullopt;
    return std::filesystem::path(NativePath(FromUtf8(path))).parent_path() / path.substr(at + words.size());
}

void Process(const std::string& path, RunOfWorker& run)
{
    const auto has = [&](std::string_view word) { return path.find(word) != std::string::npos; };
    if (has("ends-before"))
        std::_Exit(4);
    run.Say("begun", true);
    if (has("ends-within"))
        std::_Exit(3);
    if (has("garbage")) {
        std::fputs("this is no message at all", stdout);
        std::fflush(stdout);
        std::_Exit(0);
    }
    if (has("nonsense"))
        return run.Say("file", {{"file", path}});
    if (has("note"))
        run.Say("note", "a note of " + path);
    // "waits-for-NAME" waits until the file NAME beside it is there, which "makes-NAME" makes.
    if (const auto name = NameBehind("waits-for-", path))
        WaitFor(*name);
    if (const auto name = NameBehind("makes-", path))
        std::ofstream(*name) << "made";
    run.Say("file", ReportOf(path));
}

int WorkAsWritten()
{
    RunOfWorker run;
    const auto input = run.NextMessage();
    // What the run hands over as standard input tells how the worker begins.
    if (!input || *input == "ends at its start")
        return 5;
    if (*input == "refuses") {
        run.Say("refused", "there is no list");
        return 2;
    }
    run.Say("ready", {{"job", *input == "reads another job" ? "other" : "job"}});
    while (const auto path = run.NextMessage())
        Process(*path, run);
    run.Say("note", "a note at the end");
    return 0;
}

}  // namespace
}  // namespace tessarine::batch

int main(int argumentCount, char** arguments)
{
    if (argumentCount > 1 && arguments[1] == tessarine::batch::WorkerArgument) {
        tessarine::batch::GuardProcess();
        tessarine::batch::EndWithStarter();
        return tessarine::batch::WorkAsWritten();
    }
    tessarine::PinSurroundings();
    testing::InitGoogleMock(&argumentCount, arguments);
    return RUN_ALL_TESTS();
}
