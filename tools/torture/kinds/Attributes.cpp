#include <sys/stat.h>
#include <unistd.h>

#include "Kinds.h"
#include "Scene.h"

namespace tessarine::torture
{

namespace
{

/// What is special about the access to the decks of a folder.
enum class Dress { OwnerAlone, Group, AccessList, AccessListWithoutGroup, OtherGroup, ExtendedAttribute };
constexpr std::size_t dresses = 6;

/// False where this user or this file system can't have it.
bool PutOn(Dress dress, const Path& path)
{
    switch (dress) {
        case Dress::OwnerAlone:
            return chmod(path.c_str(), 0600) == 0;
        case Dress::Group:
            return chmod(path.c_str(), 0660) == 0;
        case Dress::AccessList:
            return SetAccessList(path, 12'345, 6, 4);
        case Dress::AccessListWithoutGroup:
            return SetAccessList(path, 12'345, 6, 0);
        case Dress::OtherGroup:
            return chown(path.c_str(), geteuid(), 54'321) == 0 && chmod(path.c_str(), 0640) == 0;
        case Dress::ExtendedAttribute:
            return chmod(path.c_str(), 0640) == 0 && SetAttribute(path, "user.label", "confidential");
    }
    return false;
}

/// At each call of the run no file in the folder may be open to anybody to whom the decks are not.
void Watch(Round& round, const Scene& scene, const Access& allowed, const Question& question)
{
    for (const std::string& name : NamesIn(scene.Folder())) {
        const auto access = name == ".tessarine-backups" ? std::nullopt : AccessOf(scene.Folder() / name);
        const std::string gained = access ? Gained(allowed, *access, geteuid()) : std::string();
        round.Checked();
        if (!gained.empty() && round.AllFound().size() < 3)
            round.Add(Harm::Widened, std::string(name.starts_with(".tessarine-") ? "a new file" : name) +
                                         " in front of " + question.call + " (call " + std::to_string(question.number) +
                                         "): " + gained);
    }
}

void PlayRound(Round& round)
{
    const auto dress = static_cast<Dress>(round.Number() % dresses);
    const Operation& operation = Operations()[round.Number() / dresses % 3];
    static const std::vector<DeckPlan> decks{FewDecks()[0]};
    Scene scene(round, decks);
    const Scene::Deck& deck = scene.Decks()[0];
    const Path path = scene.PathOf(deck);
    if (!PutOn(dress, path))
        return round.Note("not possible here");
    const Access before = AccessOf(path).value();
    const std::string list = AttributeOf(path, "system.posix_acl_access");
    const std::string label = AttributeOf(path, "user.label");
    scene.Prepare(operation);

    Running running(round, scene.CallOf(operation).AsksAtAll());
    while (const auto question = running.NextQuestion()) {
        Watch(round, scene, before, *question);
        running.LetGo();
    }
    const Outcome outcome = running.End();

    round.Checked();
    const Report report = ReadReport(outcome);
    const FileLine* line = report.Of(deck.name);
    if (line == nullptr || line->result != FileResult::Done)
        round.Add(Harm::Other, "the deck was not processed: " + outcome.Text());
    const auto after = AccessOf(path);
    if (after != before) {
        const std::string gained = after ? Gained(before, *after, geteuid()) : std::string();
        round.Add(gained.empty() ? Harm::Other : Harm::Widened,
                  "the deck has another owner, group, mode or access list: " + gained);
    }
    if (AttributeOf(path, "system.posix_acl_access") != list)
        round.Add(Harm::Other, "the access list of the deck is another one");
    if (AttributeOf(path, "user.label") != label)
        round.Add(Harm::Other, "the deck has lost its extended attribute");
}

}  // namespace

Kind Attributes()
{
    return {"attributes", PlayRound, dresses};
}

}  // namespace tessarine::torture
