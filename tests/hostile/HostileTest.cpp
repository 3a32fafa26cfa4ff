#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <iterator>

#include "HostileSet.h"
#include "support/TemporaryFolder.h"

namespace tessarine::test
{
namespace
{

/// What a call of the program took.
struct Work {
    int status = -1;  // as wait gives it
    double seconds = 0;
    std::size_t peakBytes = 0;
};

constexpr rlim_t mostSeconds = 120;

// A sanitizer takes address space without bounds, keeps freed memory and puts more around each piece.
#if defined(__SANITIZE_ADDRESS__)
constexpr bool isSanitized = true;
#elif defined(__has_feature)
constexpr bool isSanitized = __has_feature(address_sanitizer);
#else
constexpr bool isSanitized = false;
#endif

/// Runs the batch program with all its places searched, within hard bounds.
Work RunProgram(const std::vector<std::string>& arguments, const std::string& folder)
{
    std::vector<std::string> all{TESSARINE_BATCH};
    all.insert(all.end(), arguments.begin(), arguments.end());
    std::vector<char*> argv;
    for (std::string& argument : all)
        argv.push_back(argument.data());
    argv.push_back(nullptr);
    const pid_t child = fork();
    if (child == 0) {
        const rlimit time{mostSeconds, mostSeconds};
        setrlimit(RLIMIT_CPU, &time);
        if (!isSanitized) {
            constexpr rlim_t gigabyte = 1u << 30;
            const rlimit memory{2 * gigabyte, 2 * gigabyte};
            setrlimit(RLIMIT_AS, &memory);
        }
        setenv("XDG_DATA_HOME", folder.c_str(), 1);
        setenv("HOME", folder.c_str(), 1);
        const int nowhere = open("/dev/null", O_RDWR);
        dup2(nowhere, 0);
        dup2(nowhere, 1);
        dup2(nowhere, 2);
        execv(argv[0], argv.data());
        _exit(127);
    }
    Work work;
    rusage used{};
    wait4(child, &work.status, 0, &used);
    work.seconds = static_cast<double>(used.ru_utime.tv_sec + used.ru_stime.tv_sec) +
                   static_cast<double>(used.ru_utime.tv_usec + used.ru_stime.tv_usec) / 1e6;
    work.peakBytes = static_cast<std::size_t>(used.ru_maxrss) * 1024;
    return work;
}

std::string BytesOf(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// Makes a file in a process of its own and gives the size of its largest part. What this process has ever held would
/// count as memory of the programs that it starts.
std::size_t Make(const HostileFile& file, const std::string& path)
{
    const pid_t maker = fork();
    if (maker == 0) {
        const std::string bytes = file.make();
        std::ofstream(path, std::ios::binary) << bytes;
        std::ofstream(path + ".size") << (file.largestPart > 0 ? file.largestPart : LargestEntry(bytes));
        _exit(0);
    }
    waitpid(maker, nullptr, 0);
    std::size_t largest = 0;
    std::ifstream(path + ".size") >> largest;
    return largest;
}

class Hostile : public testing::TestWithParam<HostileFile>
{
};

/// The program answers, with whatever it answers, within bounds that go by the size of the largest part alone: work in
/// proportion to it, and memory of twelve times that, of 32 MiB, and of what was changed.
void ExpectBounds(const Work& work, std::size_t largestPart, std::size_t changedBytes, const std::string& what)
{
    EXPECT_TRUE(WIFEXITED(work.status)) << what << " was ended by signal " << WTERMSIG(work.status);
    EXPECT_NE(WEXITSTATUS(work.status), 127) << what;
    if (!isSanitized) {
        EXPECT_LE(work.peakBytes, 12 * largestPart + (32u << 20) + changedBytes)
            << what << ", a largest part of " << largestPart;
    }
    // Seconds of processor time, for builds without optimisation and with sanitizers. Quadratic work takes minutes.
    constexpr double base = 10;
    constexpr double forEachMegabyte = 5;
    EXPECT_LE(work.seconds, base + forEachMegabyte * static_cast<double>(largestPart) / (1u << 20)) << what;
}

TEST_P(Hostile, IsSearchedAndChangedWithinBounds)
{
    const TemporaryFolder folder;
    const std::string path = ToUtf8(folder.PathOf(u"hostile.pptx"));
    const std::size_t largest = Make(GetParam(), path);
    const std::string bytes = BytesOf(path);
    const std::string root = ToUtf8(folder.PathOf(u""));

    std::vector<std::string> find{"find", "--in", "all", "--find", GetParam().find};
    // With hits shown, which costs beside what it costs to replace them.
    std::vector<std::string> replace{"replace", "--show",        "--in",   "all",
                                     "--find",  GetParam().find, "--with", GetParam().with};
    for (const std::string& text : GetParam().alsoFind) {
        std::ranges::copy(std::vector<std::string>{"--find", text}, std::back_inserter(find));
        std::ranges::copy(std::vector<std::string>{"--find", text, "--with", "c"}, std::back_inserter(replace));
    }
    find.push_back(path);
    replace.push_back(path);
    const Work found = RunProgram(find, root);
    const bool isLeftAlone = BytesOf(path) == bytes;
    const Work replaced = RunProgram(replace, root);
    const std::size_t grown = std::max(largest, LargestEntry(BytesOf(path)));

    RecordProperty("find_seconds", std::to_string(found.seconds));
    RecordProperty("replace_seconds", std::to_string(replaced.seconds));
    if (getenv("TESSARINE_HOSTILE_FIGURES") != nullptr)
        std::printf("%s largest %zu find %.2f s %zu KiB, replace %.2f s %zu KiB, status %d %d\n",
                    GetParam().name.c_str(), grown, found.seconds, found.peakBytes / 1024, replaced.seconds,
                    replaced.peakBytes / 1024, WEXITSTATUS(found.status), WEXITSTATUS(replaced.status));
    EXPECT_TRUE(isLeftAlone);
    ExpectBounds(found, largest, 0, "find");
    // Of the hits that it shows at most a thousand are kept, and the names of all shapes.
    constexpr std::size_t shownHits = 1u << 20;
    ExpectBounds(replaced, grown, GetParam().changedBytes + shownHits, "replace");
}

INSTANTIATE_TEST_SUITE_P(Files, Hostile, testing::ValuesIn(HostileSet(TESSARINE_FUZZ_FINDS)),
                         [](const auto& file) { return file.param.name; });

TEST(HostileSet, HasTwoHundredFilesAndMore)
{
    EXPECT_GE(HostileSet(TESSARINE_FUZZ_FINDS).size(), 200u);
}

}  // namespace
}  // namespace tessarine::test
