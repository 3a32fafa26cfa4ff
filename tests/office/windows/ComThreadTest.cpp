#include "office/windows/ComThread.h"

#include <atomic>
#include <chrono>

#include <gmock/gmock.h>

#include "office/windows/ComHeaders.h"
#include "platform/Failure.h"
#include "platform/Messages.h"

namespace tessarine::windows
{
namespace
{

using testing::ElementsAre;

/// Delivers events as a program with windows does.
class DeliversMessages
{
public:
    explicit DeliversMessages(std::function<void(const MSG&)> handle)
        : before_(SetDeliverPendingEvents([handle = std::move(handle)] {
              for (MSG message; PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE);)
                  handle(message);
          }))
    {
    }
    ~DeliversMessages() { SetDeliverPendingEvents(std::move(before_)); }
    DeliversMessages(const DeliversMessages&) = delete;
    DeliversMessages& operator=(const DeliversMessages&) = delete;

private:
    PendingEventsPort before_;
};

/// Something that happens on another thread while this one waits.
constexpr UINT happened = WM_APP + 1;

TEST(ComThread, RunsJobsInOrderOnOneThreadOfItsOwn)
{
    ComThread thread;
    std::vector<int> order;
    std::vector<DWORD> threads;

    thread.Post([&] { order.push_back(1); });
    thread.Run([&] {
        order.push_back(2);
        threads.push_back(GetCurrentThreadId());
    });
    const DWORD another = thread.Ask([] { return GetCurrentThreadId(); });

    EXPECT_THAT(order, ElementsAre(1, 2));
    EXPECT_THAT(threads, ElementsAre(another));
    EXPECT_NE(another, GetCurrentThreadId());
}

TEST(ComThread, RaisesWhatAJobRaises)
{
    ComThread thread;

    EXPECT_THROW(thread.Run([] { throw Failure(462, u"gone"); }), Failure);
    EXPECT_EQ(thread.Ask([] { return 7; }), 7) << "and goes on";
}

TEST(ComThread, IsOfTheMultithreadedApartment)
{
    ComThread thread;

    // A thread that has it already gets it once more; another apartment would be refused.
    EXPECT_EQ(thread.Ask([] {
        const HRESULT result = CoInitializeEx(nullptr, COINIT_MULTITHREADED);
        CoUninitialize();
        return result;
    }),
              S_FALSE);
}

TEST(ComThread, DeliversMessagesWhileAJobTakesItsTime)
{
    ComThread thread;
    const DWORD main = GetCurrentThreadId();
    int delivered = 0;
    HANDLE done = CreateEventW(nullptr, TRUE, FALSE, nullptr);
    const DeliversMessages delivery([&](const MSG& message) {
        if (message.message == happened && ++delivered == 2)
            SetEvent(done);
    });

    // The job ends only when this thread has handled both messages.
    const DWORD outcome = thread.Ask([&] {
        PostThreadMessageW(main, happened, 0, 0);
        PostThreadMessageW(main, happened, 0, 0);
        return WaitForSingleObject(done, 10'000);
    });
    CloseHandle(done);

    EXPECT_EQ(outcome, WAIT_OBJECT_0);
    EXPECT_EQ(delivered, 2);
}

TEST(ComThread, TimersTickWhileAJobTakesItsTime)
{
    ComThread thread;
    std::atomic<int> ticks = 0;
    const DeliversMessages delivery([&](const MSG& message) { ticks += message.message == WM_TIMER ? 1 : 0; });
    const UINT_PTR timer = SetTimer(nullptr, 0, 10, nullptr);

    thread.Run([&] {
        for (int wait = 0; wait < 1000 && ticks < 3; ++wait)
            Sleep(10);
    });
    KillTimer(nullptr, timer);

    EXPECT_GE(ticks, 3);
}

TEST(ComThread, TakesAJobOfAnEventAfterTheOneInProgress)
{
    ComThread thread;
    const DWORD main = GetCurrentThreadId();
    std::vector<std::string> order;
    const DeliversMessages delivery([&](const MSG& message) {
        if (message.message == happened)
            thread.Run([&] { order.emplace_back("event's"); });
    });

    thread.Run([&] {
        PostThreadMessageW(main, happened, 0, 0);
        Sleep(50);
        order.emplace_back("first");
    });
    thread.Run([&] { order.emplace_back("last"); });

    EXPECT_THAT(order, ElementsAre("first", "event's", "last"));
}

TEST(ComThread, RaisesWhatAnEventRaisesWhenTheJobIsDone)
{
    ComThread thread;
    const DWORD main = GetCurrentThreadId();
    bool isDone = false;
    const DeliversMessages delivery([](const MSG&) { throw Failure(5, u"event"); });

    EXPECT_THROW(thread.Run([&] {
        PostThreadMessageW(main, happened, 0, 0);
        Sleep(50);
        isDone = true;
    }),
                 Failure);
    EXPECT_TRUE(isDone);
}

TEST(ComThread, DoesWhatIsPostedBeforeItEnds)
{
    int done = 0;
    {
        ComThread thread;
        for (int job = 0; job < 100; ++job)
            thread.Post([&] { ++done; });
    }

    EXPECT_EQ(done, 100);
}

}  // namespace
}  // namespace tessarine::windows
