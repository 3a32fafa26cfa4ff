#include "batch/Cancellation.h"

#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <string>

#include <gtest/gtest.h>

namespace tessarine::batch
{
namespace
{

struct ChildsEnd {
    int status = -1;    ///< Of waitpid.
    std::string error;  ///< What went to standard error.
};

/// Runs `body` in a process of its own, as signals are for a whole process.
template <class Body>
ChildsEnd RunInAChild(Body&& body)
{
    int ends[2] = {-1, -1};
    EXPECT_EQ(pipe(ends), 0);
    const pid_t child = fork();
    if (child == 0) {
        dup2(ends[1], STDERR_FILENO);
        body();
        _exit(0);
    }
    close(ends[1]);
    ChildsEnd end;
    char piece[256];
    for (ssize_t count = 0; (count = read(ends[0], piece, sizeof piece)) > 0;)
        end.error.append(piece, static_cast<std::size_t>(count));
    close(ends[0]);
    waitpid(child, &end.status, 0);
    return end;
}

TEST(Cancellation, FirstSignalIsAWish)
{
    const ChildsEnd end = RunInAChild([] {
        WatchForCancel();
        SetFilesInWork({u"a.pptx"});
        const bool before = IsCancelRequested();
        raise(SIGINT);
        _exit(!before && IsCancelRequested() ? 7 : 1);
    });

    EXPECT_EQ(WEXITSTATUS(end.status), 7);
    EXPECT_EQ(end.error, "");
}

TEST(Cancellation, SecondSignalNamesTheFileInWorkAndEnds)
{
    for (const int second : {SIGINT, SIGTERM}) {
        const ChildsEnd end = RunInAChild([&] {
            WatchForCancel();
            SetFilesInWork({u"a.pptx"});
            SetFilesInWork({});
            SetFilesInWork({u"Zürich/b.pptx"});
            raise(SIGINT);
            raise(second);
        });

        EXPECT_TRUE(WIFEXITED(end.status));
        EXPECT_EQ(WEXITSTATUS(end.status), 130);
        EXPECT_EQ(end.error,
                  "tessarine-batch: ended at once in the middle of Zürich/b.pptx, which is as it was or changed "
                  "completely\n");
    }
}

TEST(Cancellation, SecondSignalBetweenFilesNamesNone)
{
    const ChildsEnd end = RunInAChild([] {
        WatchForCancel();
        SetFilesInWork({u"a.pptx"});
        SetFilesInWork({});
        raise(SIGTERM);
        raise(SIGTERM);
    });

    EXPECT_EQ(end.error, "tessarine-batch: ended at once\n");
}

}  // namespace
}  // namespace tessarine::batch
