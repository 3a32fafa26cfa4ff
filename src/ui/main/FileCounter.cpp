#include "ui/main/FileCounter.h"

#include <thread>
#include <utility>

#include "log/Treatments.h"

namespace tessarine
{

FileCounter::FileCounter(QObject* parent) : QObject(parent)
{
    constexpr int whileTyping = 300;  // milliseconds
    pause_.setSingleShot(true);
    pause_.setInterval(whileTyping);
    connect(&pause_, &QTimer::timeout, this, &FileCounter::Begin);
}

FileCounter::~FileCounter()
{
    Cancel();
}

void FileCounter::Count(FileChoice choice)
{
    Cancel();
    choice_ = std::move(choice);
    pause_.start();
}

void FileCounter::Cancel()
{
    pause_.stop();
    const auto task = std::exchange(task_, nullptr);
    if (!task)
        return;
    task->isToStop = true;
    const std::lock_guard lock(task->mutex);
    task->counter = nullptr;
}

void FileCounter::Begin()
{
    const auto task = std::make_shared<Task>();
    task->counter = this;
    const auto count = [task, choice = choice_] {
        const FileTotals totals = CountFiles(choice, [&] { return task->isToStop.load(); });
        // Held while the counter is told, so that it can't go away meanwhile.
        const std::lock_guard lock(task->mutex);
        FileCounter* const counter = task->counter;
        if (counter != nullptr)
            QMetaObject::invokeMethod(
                counter, [=] { counter->Take(task, totals); }, Qt::QueuedConnection);
    };
    // Not waited for at the end: a network that does not answer would keep the window open.
    if (Skip([&] { std::thread(count).detach(); }) != 0)
        return;
    task_ = task;
    Q_EMIT Begun();
}

void FileCounter::Take(const std::shared_ptr<Task>& task, const FileTotals& totals)
{
    if (task != task_)
        return;  // dropped when its totals were on their way
    task_.reset();
    Q_EMIT Counted(totals);
}

}  // namespace tessarine
