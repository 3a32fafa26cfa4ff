#include "Expected.h"
#include "Kinds.h"
#include "Scene.h"

namespace tessarine::torture
{

namespace
{

/// A deck with a second name: that keeps the old text and the report says so, or, on request, both have the new one.
void PlayRound(Round& round)
{
    const bool inPlace = round.Number() % 2 == 1 && HasOption("replace", "--in-place-links");
    const Operation& operation = Operations()[round.random.Below(2)];
    Scene scene(round, FewDecks());
    const Scene::Deck& deck = scene.Decks()[0];
    const Path second = round.Folder() / "second.pptx";
    std::filesystem::create_hard_link(scene.PathOf(deck), second);
    Call call = scene.CallOf(operation);
    if (inPlace)
        call.arguments.push_back("--in-place-links");
    const bool dies = inPlace && round.random.Chance(60);
    if (dies)
        call.DiesAt(1 + round.random.Below(CallsOf(operation, FewDecks()) * 5 / 4));

    Outcome outcome = Run(round, call);
    if (dies && outcome.signal != 0) {
        // The next run completes what was half written.
        scene.Remember();
        call.attack.clear();
        outcome = Run(round, call);
    }

    if (outcome.status != 0)
        round.Add(Harm::Other, "a deck with a second name fails: " + outcome.Text());
    scene.CheckDone(operation);
    round.Checked();
    const auto content = ContentIfThere(second);
    if (content != deck.old && content != deck.replaced)
        return round.Add(Harm::Damaged, "the second name leads to " + Describe(content.value_or("")));
    const Report report = ReadReport(outcome);
    const FileLine* line = report.Of(deck.name);
    if (inPlace && content != deck.replaced)
        round.Add(Harm::Other, "the second name keeps the old text though both were to have the new one");
    if (!inPlace && content == deck.old && (line == nullptr || !line->warned))
        round.Add(Harm::Other, "the second name keeps the old text and the report doesn't say so");
}

}  // namespace

Kind HardLinks()
{
    return {"second-names", PlayRound, 6};
}

}  // namespace tessarine::torture
