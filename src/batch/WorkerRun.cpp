#include "batch/WorkerRun.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>
#include <utility>

#include "batch/SameFiles.h"
#include "platform/Failure.h"
#include "platform/FolderOf.h"
#include "saving/Leftovers.h"

namespace tessarine::batch
{

namespace
{

/// Reports that wait for one before them. More would only be memory: the file that holds them up holds up the end, too.
constexpr std::size_t mostWaiting = 1024;
constexpr std::size_t mostWaitingBytes = 32u << 20;

/// How soon a cancel is seen while no worker has anything to tell.
constexpr std::chrono::milliseconds cancelLook{50};

/// Workers that a file is given to while they die with nothing in hand, as by a user who kills them all.
constexpr int mostTries = 3;

}  // namespace

/// A thread for each worker, and what they share with the thread of the run.
class WorkerRun::Threads
{
public:
    Threads(const WorkerRun& run, const std::vector<JobFile>& files);
    ~Threads();
    Threads(const Threads&) = delete;
    Threads& operator=(const Threads&) = delete;

    /// Waits until all workers can begin. Raises why one can't.
    void WaitUntilReady();

    /// Hands on what the workers have to tell, until they are at the end. Returns the number of reported files.
    std::size_t HandOn();

    /// Why there is no worker any more, where there is none.
    const std::optional<Failure>& failure() const { return failure_; }
    bool isCancelled() const { return stops_; }

private:
    using Lock = std::unique_lock<std::mutex>;
    using Answer = WorkerOfRun::Answer;

    // On the thread of a worker.
    void Work(std::size_t number);
    std::unique_ptr<WorkerOfRun> NewWorker();
    std::optional<std::size_t> NextFile(std::size_t number);
    bool MayBegin(std::size_t file) const;
    Answer AnswerFor(std::unique_ptr<WorkerOfRun>& worker, std::size_t file);
    Answer AnswerOf(std::unique_ptr<WorkerOfRun>& worker, const String& path);
    String TextOfDeath(const String& path, const String& end) const;
    void Take(std::size_t number, Answer answer);
    void TellNote(const std::string& line);

    // On that of the run.
    bool HasNews() const;
    void TellNews(Lock& lock);
    std::optional<FileReport> NextReport();

    const WorkerRun& run_;
    const std::vector<JobFile>& files_;
    const std::map<std::size_t, std::size_t> sameFiles_;

    std::mutex mutex_;  // guards all below
    std::condition_variable changed_;
    std::size_t settled_ = 0;                         // workers that are ready, or have failed to be
    std::size_t ended_ = 0;                           // threads
    bool goes_ = false;                               // the first file may be begun
    bool stops_ = false;                              // no further one may
    std::optional<Failure> failure_;                  // of the last worker that could not be started
    std::size_t next_ = 0;                            // the file to begin next
    std::size_t reported_ = 0;                        // files that have their report
    std::map<std::size_t, Answer> waiting_;           // answers for files that have not
    std::size_t waitingBytes_ = 0;                    // that those have come in
    std::vector<std::optional<std::size_t>> inHand_;  // the file of each worker
    std::optional<std::size_t> begun_;                // the one begun last
    bool isHandNew_ = false;                          // inHand_ has changed since that was told
    std::vector<std::string> notes_;                  // until they are told

    std::vector<std::thread> threads_;
};

WorkerRun::Threads::Threads(const WorkerRun& run, const std::vector<JobFile>& files)
    : run_(run),
      files_(files),
      sameFiles_(run.terms_.replaces ? SameFiles(files) : std::map<std::size_t, std::size_t>())
{
    const auto count = std::ranges::count_if(files, [](const JobFile& file) { return file.refusal.empty(); });
    inHand_.resize(std::min(run.workers_, static_cast<std::size_t>(count)));
    for (std::size_t number = 0; number < inHand_.size(); ++number)
        threads_.emplace_back([this, number] { Work(number); });
}

WorkerRun::Threads::~Threads()
{
    {
        const Lock lock(mutex_);
        goes_ = true;
        stops_ = true;
    }
    changed_.notify_all();
    for (std::thread& thread : threads_)
        thread.join();
}

void WorkerRun::Threads::WaitUntilReady()
{
    Lock lock(mutex_);
    changed_.wait(lock, [this] { return settled_ == threads_.size(); });
    TellNews(lock);
    if (failure_)
        throw Failure(*failure_);
    goes_ = true;
    changed_.notify_all();
}

std::size_t WorkerRun::Threads::HandOn()
{
    Lock lock(mutex_);
    while (true) {
        changed_.wait_for(lock, cancelLook, [this] { return HasNews() || ended_ == threads_.size(); });
        stops_ = stops_ || (run_.CancelRequested && run_.CancelRequested());
        TellNews(lock);
        while (const auto report = NextReport()) {
            lock.unlock();
            run_.sink_(*report);
            lock.lock();
            TellNews(lock);
        }
        changed_.notify_all();  // there is room for more answers
        if (ended_ == threads_.size() && !HasNews())
            return reported_;
    }
}

bool WorkerRun::Threads::HasNews() const
{
    const bool isReportable =
        reported_ < files_.size() && (!files_[reported_].refusal.empty() || waiting_.contains(reported_));
    return isReportable || isHandNew_ || !notes_.empty();
}

void WorkerRun::Threads::TellNews(Lock& lock)
{
    const bool isHandNew = std::exchange(isHandNew_, false);
    std::vector<String> inHand;
    if (isHandNew && run_.InHand) {
        for (const auto& file : inHand_) {
            if (file && file != begun_)
                inHand.push_back(files_[*file].path);
        }
        if (begun_)
            inHand.push_back(files_[*begun_].path);
    }
    const std::vector<std::string> notes = std::exchange(notes_, {});
    lock.unlock();
    for (const std::string& note : notes) {
        if (run_.Note)
            run_.Note(note);
    }
    if (isHandNew && run_.InHand)
        run_.InHand(inHand);
    lock.lock();
}

/// The report that is next in the order of the files, where there is one by now.
std::optional<FileReport> WorkerRun::Threads::NextReport()
{
    if (reported_ == files_.size())
        return {};
    if (const JobFile& file = files_[reported_]; !file.refusal.empty()) {
        ++reported_;
        return RefusedFile(file);
    }
    auto answer = waiting_.extract(reported_);
    if (answer.empty())
        return {};
    ++reported_;
    waitingBytes_ -= answer.mapped().bytes;
    return std::move(answer.mapped().report);
}

void WorkerRun::Threads::Work(std::size_t number)
{
    {
        std::unique_ptr<WorkerOfRun> worker = NewWorker();
        {
            Lock lock(mutex_);
            ++settled_;
            changed_.notify_all();
            changed_.wait(lock, [this] { return goes_; });
        }
        while (worker) {
            const auto file = NextFile(number);
            if (!file)
                break;
            Take(number, AnswerFor(worker, *file));
            if (!worker)
                worker = NewWorker();
        }
        if (worker)
            worker->End();
    }
    const Lock lock(mutex_);
    ++ended_;
    changed_.notify_all();
}

std::unique_ptr<WorkerOfRun> WorkerRun::Threads::NewWorker()
{
    try {
        return std::make_unique<WorkerOfRun>(run_.terms_, [this](const std::string& line) { TellNote(line); });
    } catch (...) {
        const Lock lock(mutex_);
        failure_ = CurrentFailure();
        return {};
    }
}

/// The file that a worker is to take next; nothing when it is done. Waits where that takes others to come on.
std::optional<std::size_t> WorkerRun::Threads::NextFile(std::size_t number)
{
    Lock lock(mutex_);
    changed_.notify_all();  // once for the file, and for the answer before it: waking others takes time
    while (true) {
        while (next_ < files_.size() && !files_[next_].refusal.empty())
            ++next_;
        if (next_ == files_.size())
            return {};
        stops_ = stops_ || (run_.CancelRequested && run_.CancelRequested());
        if (stops_)
            return {};
        if (MayBegin(next_))
            break;
        changed_.wait(lock);
    }
    inHand_[number] = next_;
    begun_ = next_;
    isHandNew_ = true;
    return next_++;
}

bool WorkerRun::Threads::MayBegin(std::size_t file) const
{
    if (waiting_.size() >= mostWaiting || waitingBytes_ >= mostWaitingBytes)
        return false;
    const auto same = sameFiles_.find(file);
    return same == sameFiles_.end() || std::ranges::find(inHand_, std::optional(same->second)) == inHand_.end();
}

WorkerRun::Threads::Answer WorkerRun::Threads::AnswerFor(std::unique_ptr<WorkerOfRun>& worker, std::size_t file)
{
    const String& path = files_[file].path;
    if (run_.Begins && !run_.Begins(file)) {
        const Lock lock(mutex_);
        stops_ = true;
        return {FailedFile(path, u"It could not be recorded that the file is in hand."), 0};
    }
    Answer answer = AnswerOf(worker, path);
    answer.report.number = files_[file].number;
    if (run_.Done)
        run_.Done(file, answer.report);
    return answer;
}

/// What becomes of a file. Leaves no worker where it died at the file.
WorkerRun::Threads::Answer WorkerRun::Threads::AnswerOf(std::unique_ptr<WorkerOfRun>& worker, const String& path)
{
    String end;
    for (int tries = 0; tries < mostTries; ++tries) {
        if (!worker)
            worker = NewWorker();
        if (!worker)
            break;
        bool hasBegun = true;
        try {
            if (auto answer = worker->Process(path))
                return std::move(*answer);
            hasBegun = worker->hasBegun();
            end = FromUtf8(worker->End());
        } catch (...) {
            end = CurrentFailure().Reason();  // what it said makes no sense
        }
        worker.reset();
        if (hasBegun)
            return {FailedFile(path, TextOfDeath(path, end)), 0};
    }
    return {FailedFile(path, u"No worker lived to begin the file (" + end + u")."), 0};
}

String WorkerRun::Threads::TextOfDeath(const String& path, const String& end) const
{
    const String ended = u"The worker that had the file in hand ended (" + end + u")";
    if (!run_.terms_.replaces)
        return ended + u".";
    // Nobody holds what it has left of a new file.
    const StringView folder = FolderOf(StringView(path));
    RemoveLeftovers(folder.empty() ? u"." : folder);
    return ended + u"; the file is as it was, or changed completely.";
}

void WorkerRun::Threads::Take(std::size_t number, Answer answer)
{
    const Lock lock(mutex_);
    const std::size_t file = *std::exchange(inHand_[number], {});
    if (begun_ == file)
        begun_.reset();
    isHandNew_ = true;
    waitingBytes_ += answer.bytes;
    waiting_.emplace(file, std::move(answer));
}

void WorkerRun::Threads::TellNote(const std::string& line)
{
    const Lock lock(mutex_);
    notes_.push_back(line);
    changed_.notify_all();
}

WorkerRun::WorkerRun(WorkerTerms terms, std::size_t workers, Sink sink)
    : terms_(std::move(terms)), workers_(workers), sink_(std::move(sink))
{
}

std::size_t WorkerRun::Run(const std::vector<JobFile>& files)
{
    Threads threads(*this, files);
    threads.WaitUntilReady();
    std::size_t reported = threads.HandOn();
    if (threads.isCancelled())
        return files.size() - reported;
    // Each worker died, and none could be started in its place.
    for (; reported < files.size(); ++reported)
        sink_(FailedFile(files[reported].path, threads.failure()->Reason()));
    return 0;
}

std::size_t CoreCount()
{
    return std::max(1u, std::thread::hardware_concurrency());
}

}  // namespace tessarine::batch
