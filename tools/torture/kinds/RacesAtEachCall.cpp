#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <memory>

#include "Expected.h"
#include "Kinds.h"
#include "Scene.h"

namespace tessarine::torture
{

namespace
{

/// What another program does to a deck while a run stands in front of a call. Some need a second step, in front of a
/// later call or after the run.
class Other
{
public:
    Other(Path deck, Path aside) : deck_(std::move(deck)), aside_(std::move(aside)) {}
    virtual ~Other() = default;

    virtual void Begin() = 0;
    virtual void Finish() {}

    /// What the other program has written, complete; nothing when it deleted the deck.
    virtual std::optional<std::string> Content() const = 0;
    /// True when a step met a deck that lacks what the step before had written.
    virtual bool MissesItsOwn() const { return false; }
    /// What lay there, complete, between its steps.
    virtual std::optional<std::string> Earlier() const { return Content(); }

protected:
    Path deck_;
    Path aside_;  // a folder of its own
};

const std::string& OthersDeck()
{
    static const std::string deck = DeckBytes("Fabrikam of somebody else", 2'000);
    return deck;
}

class Replaces : public Other
{
public:
    using Other::Other;
    void Begin() override
    {
        Write(aside_ / "new", OthersDeck());
        std::filesystem::rename(aside_ / "new", deck_);
    }
    std::optional<std::string> Content() const override { return OthersDeck(); }
};

/// As `cp` does: cut off, half of it, then the rest.
class Rewrites : public Other
{
public:
    using Other::Other;
    ~Rewrites() override { close(file_); }
    void Begin() override
    {
        file_ = open(deck_.c_str(), O_WRONLY | O_TRUNC | O_CLOEXEC);
        Put(0, OthersDeck().size() / 2);
    }
    void Finish() override { Put(OthersDeck().size() / 2, OthersDeck().size()); }
    std::optional<std::string> Content() const override { return OthersDeck(); }

private:
    void Put(std::size_t from, std::size_t to) const
    {
        if (pwrite(file_, OthersDeck().data() + from, to - from, static_cast<off_t>(from)) < 0)
            throw std::runtime_error("the other program can't write");
    }
    int file_ = -1;
};

/// Changes a byte, not the size, and puts the date back; later another one. Only the time of the last change of the
/// file's own entry tells, and not even that when it is as young as the clock's grain.
class Tweaks : public Other
{
public:
    using Other::Other;
    void Begin() override
    {
        Put(first);
        earlier_ = content_;
    }
    void Finish() override
    {
        misses_ = ContentIfThere(deck_).value().at(first) != mark;
        Put(first + 1);
    }
    std::optional<std::string> Content() const override { return content_; }
    std::optional<std::string> Earlier() const override { return earlier_; }
    bool MissesItsOwn() const override { return misses_; }

private:
    // The time of the first entry, in front of its data: what a save hands on as it is.
    static constexpr std::size_t first = 10;
    static constexpr char mark = '!';

    void Put(std::size_t at)
    {
        const auto status = StatusOf(deck_);
        content_ = ContentIfThere(deck_).value();
        content_[at] = mark;
        const int file = open(deck_.c_str(), O_WRONLY | O_CLOEXEC);
        if (pwrite(file, &mark, 1, static_cast<off_t>(at)) != 1)
            throw std::runtime_error("the other program can't write");
        const timespec times[2] = {status->st_atim, status->st_mtim};
        futimens(file, times);
        close(file);
    }

    std::string content_;
    std::string earlier_;
    bool misses_ = false;
};

class Truncates : public Other
{
public:
    using Other::Other;
    void Begin() override
    {
        const std::string before = ContentIfThere(deck_).value();
        content_ = before.substr(0, before.size() / 2);
        if (truncate(deck_.c_str(), static_cast<off_t>(content_.size())) != 0)
            throw std::runtime_error("the other program can't cut off");
    }
    std::optional<std::string> Content() const override { return content_; }

private:
    std::string content_;
};

class Deletes : public Other
{
public:
    using Other::Other;
    void Begin() override { std::filesystem::remove(deck_); }
    std::optional<std::string> Content() const override { return std::nullopt; }
};

/// Puts a link in place of the deck, to a deck of its own.
class LinksAway : public Other
{
public:
    using Other::Other;
    void Begin() override
    {
        Write(aside_ / "target.pptx", OthersDeck());
        std::filesystem::create_symlink(aside_ / "target.pptx", aside_ / "link");
        std::filesystem::rename(aside_ / "link", deck_);
    }
    std::optional<std::string> Content() const override { return OthersDeck(); }
};

std::unique_ptr<Other> OtherOf(std::size_t number, const Path& deck, const Path& aside)
{
    switch (number) {
        case 0:
            return std::make_unique<Replaces>(deck, aside);
        case 1:
            return std::make_unique<Rewrites>(deck, aside);
        case 2:
            return std::make_unique<Tweaks>(deck, aside);
        case 3:
            return std::make_unique<Truncates>(deck, aside);
        case 4:
            return std::make_unique<Deletes>(deck, aside);
        default:
            return std::make_unique<LinksAway>(deck, aside);
    }
}
constexpr std::size_t programs = 6;

const std::vector<DeckPlan>& OneDeck()
{
    static const std::vector<DeckPlan> decks{{"a.pptx", DeckBytes("Fabrikam", 2'000), 0644}};
    return decks;
}

bool IsRename(const Question& call)
{
    return std::string(call.call).starts_with("rename");
}

/// The calls in front of which a run begins to read the deck, and puts the new one in its place. From 1.
struct Span {
    std::uint64_t open = 0;
    std::uint64_t rename = 0;
};

Span SpanOf(const std::vector<Question>& trace)
{
    Span span;
    for (const Question& call : trace) {
        if (!std::string_view(call.path).ends_with("a.pptx"))
            continue;
        if (span.open == 0 && std::string(call.call).starts_with("open"))
            span.open = call.number;
        if (IsRename(call))
            span.rename = call.number;
    }
    if (span.open == 0 || span.rename == 0)
        throw std::runtime_error("the run does not open or rename as expected");
    return span;
}

/// What the run makes of a content; nothing when that is no deck.
std::optional<std::string> ResultOf(const std::string& name, const std::string& content)
{
    try {
        return ReplacedBytes(name, content);
    } catch (const std::exception&) {
        return std::nullopt;
    }
}

void CheckDeck(Round& round, const Scene& scene, const Other& other, bool beforeRename, const FileLine* line)
{
    round.Checked();
    if (other.MissesItsOwn())
        return round.Add(Harm::Lost, "what another program wrote is gone");
    const Scene::Deck& deck = scene.Decks()[0];
    const auto content = ContentIfThere(scene.PathOf(deck));
    const auto others = other.Content();
    if (!others) {
        if (content)
            round.Add(Harm::Other, "a deck that another program deleted is there again");
        return;
    }
    if (content == others) {
        if (beforeRename && line != nullptr && line->result == FileResult::Done)
            round.Add(Harm::Other, "the deck holds what another program wrote, and is reported as changed");
        return;
    }
    if (content && content == ResultOf(deck.name, *others)) {
        if (line != nullptr && line->result == FileResult::Failed)
            round.Add(Harm::Other, "what another program wrote was processed, and is reported as failed");
        return;
    }
    const auto earlier = other.Earlier();
    if (!content || *content == deck.replaced || *content == deck.old ||
        (earlier && content == ResultOf(deck.name, *earlier)))
        round.Add(Harm::Lost, "what another program wrote is gone");
    else
        round.Add(Harm::Damaged, "the deck is " + Describe(*content));
}

/// Never a mix, never half of what was being written.
void CheckBackup(Round& round, const Scene& scene, const Other& other)
{
    round.Checked();
    const auto backup = ContentIfThere(scene.BackupOf(scene.Decks()[0]));
    if (backup && backup != scene.Decks()[0].old && backup != other.Content() && backup != other.Earlier())
        round.Add(Harm::Damaged, "the backup is " + Describe(*backup));
}

void PlayRound(Round& round)
{
    const Operation& operation = Operations()[0];
    const std::vector<Question>& trace = TraceOf(operation, OneDeck());
    const Span span = SpanOf(trace);
    const std::uint64_t first = 1 + Spread(round.Number() / programs, trace.size());
    const std::uint64_t second = first + 1 + round.random.Below(trace.size() / 2);
    // Nobody can look between the last look and the rename.
    if (IsRename(trace[first - 1]))
        return;

    Scene scene(round, OneDeck());
    const Path aside = round.Folder() / "other";
    std::filesystem::create_directories(aside);
    const auto other = OtherOf(round.Number() % programs, scene.PathOf(scene.Decks()[0]), aside);
    const Path deck = scene.PathOf(scene.Decks()[0]);
    const Snapshot before = SnapshotOf(deck);
    Snapshot left;
    Outcome outcome;
    bool finished = false;
    bool beforeRename = false;  // the other program's last step; a run that is disturbed makes more calls or fewer
    {
        Running running(round, scene.CallOf(operation).AsksAt({first, second}));
        const auto question = running.NextQuestion();
        if (question && IsRename(*question)) {
            running.LetGo();
            running.End();
            return;
        }
        if (question) {
            beforeRename = SnapshotOf(deck).inode == before.inode;
            other->Begin();
            left = SnapshotOf(deck);
            running.LetGo();
            const auto later = running.NextQuestion();
            if (later && !IsRename(*later)) {
                beforeRename = beforeRename && SnapshotOf(deck).inode == left.inode;
                other->Finish();
                finished = true;
            }
            if (later)
                running.LetGo();
        }
        outcome = running.End();
    }
    if (!finished) {
        const auto content = other->Content();
        other->Finish();
        beforeRename = beforeRename && other->Content() == content;
    }
    round.Note("another program at call " + std::to_string(first) + " and " + std::to_string(second) +
               "; the deck is opened at " + std::to_string(span.open) + " and replaced at " +
               std::to_string(span.rename));

    if (outcome.hung || outcome.signal != 0)
        return round.Add(Harm::Other, "the program hangs or was ended by a signal");
    const Report report = ReadReport(outcome);
    if (!report.hasSummary)
        round.Add(Harm::Other, "there is no summary");
    CheckDeck(round, scene, *other, beforeRename, report.Of("a.pptx"));
    CheckBackup(round, scene, *other);
    // A file that somebody else put there keeps the mode that it came with.
    const Snapshot now = SnapshotOf(deck);
    if (now.inode == left.inode && now.content == left.content && now.mode != left.mode)
        round.Add(Harm::Other, "the mode of the other program's file was changed");
    scene.CheckNothingLeftOver();
}

}  // namespace

Kind RacesAtEachCall()
{
    return {"race-call", PlayRound, 36};
}

}  // namespace tessarine::torture
