#include <algorithm>
#include <atomic>
#include <chrono>
#include <thread>

#include "Expected.h"
#include "Kinds.h"
#include "Scene.h"

namespace tessarine::torture
{

namespace
{

/// Another program that copies decks over those of the folder, in place or by renaming, until it is told to stop.
class Copier
{
public:
    Copier(const Scene& scene, const Path& aside, std::uint64_t seed) : scene_(scene), aside_(aside), random_(seed)
    {
        std::filesystem::create_directories(aside_);
        for (int number = 0; number < 8; ++number)
            contents_.push_back(DeckBytes("Fabrikam, copy " + std::to_string(number), random_.Below(60'000)));
        for (const Scene::Deck& deck : scene_.Decks())
            last_.push_back(deck.old);
        thread_ = std::thread([this] { Copy(); });
    }
    ~Copier()
    {
        if (thread_.joinable())
            Stop();
    }
    Copier(const Copier&) = delete;
    Copier& operator=(const Copier&) = delete;

    void Stop()
    {
        isOver_ = true;
        thread_.join();
    }

    /// The last content that was copied over a deck, or its first one. After Stop.
    const std::string& LastOf(std::size_t deck) const { return last_[deck]; }
    bool IsOneOfIts(const std::string& content) const
    {
        return std::ranges::find(contents_, content) != contents_.end();
    }

private:
    void Copy()
    {
        while (!isOver_) {
            const std::size_t deck = random_.Below(last_.size());
            const std::string& content = random_.OneOf(contents_);
            const Path path = scene_.PathOf(scene_.Decks()[deck]);
            if (random_.Chance(50)) {
                Write(path, content);
            } else {
                Write(aside_ / "new", content);
                std::filesystem::rename(aside_ / "new", path);
            }
            last_[deck] = content;
            std::this_thread::sleep_for(std::chrono::microseconds(random_.Below(6'000)));
        }
    }

    const Scene& scene_;
    Path aside_;
    Random random_;
    std::vector<std::string> contents_;
    std::vector<std::string> last_;
    std::atomic<bool> isOver_ = false;
    std::thread thread_;
};

const std::vector<DeckPlan>& WritableDecks()
{
    static const std::vector<DeckPlan> decks{
        ManyDecks()[0], ManyDecks()[2], {"e.pptx", DeckBytes("Fabrikam", 50'000), 0644}};
    return decks;
}

void PlayRound(Round& round)
{
    const Operation& operation = Operations()[0];
    Scene scene(round, WritableDecks());
    Copier copier(scene, round.Folder() / "other", round.random.Below(1'000'000));
    std::string reports;
    for (int run = 0; run < 3; ++run) {
        const Outcome outcome = Run(round, scene.CallOf(operation));
        reports += outcome.output;
        if (outcome.hung || outcome.signal != 0 || !ReadReport(outcome).hasSummary)
            round.Add(Harm::Other, "a run beside another program does not end as it should: " + outcome.Text());
    }
    copier.Stop();

    for (std::size_t number = 0; number < scene.Decks().size(); ++number) {
        const Scene::Deck& deck = scene.Decks()[number];
        round.Checked(2);
        const std::string content = ContentIfThere(scene.PathOf(deck)).value_or("");
        const std::string& last = copier.LastOf(number);
        if (content != last && content != ReplacedBytes(deck.name, last)) {
            const bool isIntact = Describe(content).starts_with("an intact");
            round.Add(isIntact ? Harm::Lost : Harm::Damaged,
                      "in place of what another program wrote last, " + deck.name + " is " + Describe(content));
        }
        const auto backup = ContentIfThere(scene.BackupOf(deck));
        if (backup && *backup != deck.old && !copier.IsOneOfIts(*backup) && !Describe(*backup).starts_with("an intact"))
            round.Add(Harm::Damaged, "the backup of " + deck.name + " is " + Describe(*backup));
    }
    for (const Scene::Deck& deck : scene.Decks()) {
        // What a run could neither put back nor throw away, and has said so.
        if (reports.find(deck.name + ".kept") != std::string::npos)
            std::filesystem::remove(Path(scene.PathOf(deck)) += ".kept");
    }
    scene.CheckNothingLeftOver();
}

}  // namespace

Kind RacesAtAnyMoment()
{
    return {"race", PlayRound, 4};
}

}  // namespace tessarine::torture
