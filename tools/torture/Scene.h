#pragma once

#include <ctime>
#include <optional>
#include <string>
#include <vector>

#include "Access.h"
#include "Program.h"
#include "Report.h"

namespace tessarine::torture
{

/// A deck to put into a folder.
struct DeckPlan {
    std::string name;
    std::string bytes;
    mode_t mode = 0644;
};

/// A deck with a slide that says `text` in several places; its size grows with `media` bytes that don't compress.
std::string DeckBytes(const std::string& text, std::size_t media = 0);

/// Five decks: plain, read-only, without a hit, with macros and for their owner alone, and one of a megabyte.
const std::vector<DeckPlan>& ManyDecks();
/// Two of them, plain and read-only, for attacks that go through all calls of a run.
const std::vector<DeckPlan>& FewDecks();

/// What a command does to the decks of a folder and to their backups.
struct Operation {
    enum class Backups { None, Made, Stay, Removed };

    std::string name;
    bool startsReplaced = false;
    bool endsReplaced = true;
    Backups backups = Backups::None;
    std::vector<std::string> arguments;  ///< Without the folder.
};

/// replace --backup, replace, restore, clean, and replace --backup=numbered, in this order.
const std::vector<Operation>& Operations();

/// A folder of decks in a round, and all that must hold of it.
class Scene
{
public:
    struct Deck {
        std::string name;
        std::string old;
        std::string replaced;  ///< Equal to `old` when there is no hit.
        mode_t mode = 0;
        std::time_t modified = 0;
        Access access;

        bool HasHit() const { return old != replaced; }
    };

    explicit Scene(Round& round, const std::vector<DeckPlan>& plans = ManyDecks(), const std::string& name = "decks");

    const Path& Folder() const { return folder_; }
    const std::vector<Deck>& Decks() const { return decks_; }
    Path PathOf(const Deck& deck) const { return folder_ / deck.name; }
    Path BackupOf(const Deck& deck) const;  ///< Where `--backup` puts it.

    /// Makes the folder what it is before the operation, by undisturbed runs.
    void Prepare(const Operation& operation);
    Call CallOf(const Operation& operation) const;

    /// After a run that was cut short: each deck is the old or the complete new one, no backup holds anything but the
    /// original, none is missing where the deck is new, nobody gained rights.
    void CheckCut(const Operation& operation);

    /// After a run to the end, besides: all is done; modes and kept dates are as they were, but of `excused` decks;
    /// nothing is left over.
    void CheckDone(const Operation& operation, const std::vector<std::string>& excused = {});
    /// Runs the operation once more, undisturbed: it must succeed, but for `excused` decks, tell the
    /// truth, and leave all done.
    void FinishUndisturbed(const Operation& operation, const std::vector<std::string>& excused = {});

    /// The exit status and the report say what is on the disk. Changes count from the last `Remember`.
    void Remember();
    void CheckTruth(const Operation& operation, const Outcome& outcome);

    void CheckAttributes(const std::vector<std::string>& excused = {});  ///< Modes and dates, but of these decks.
    void CheckNothingLeftOver();

private:
    std::optional<std::string> Watched(const Operation& operation, const Deck& deck) const;
    void CheckDeck(const Deck& deck, bool mayBeOld, bool mayBeReplaced);
    void CheckBackup(const Deck& deck, bool mustBeThere);
    std::vector<std::string> NumberedBackupsOf(const Deck& deck) const;  // from the second on
    bool IsInNumberedBackup(const Deck& deck) const;                     // that the original is
    void CheckNumberedBackups(const Deck& deck);                         // that no half of a copy lies there
    void CheckLine(const Operation& operation, const Deck& deck, const Report& report, const Outcome& outcome);

    Round& round_;
    Path folder_;
    std::vector<Deck> decks_;
    std::vector<std::optional<std::string>> remembered_;
    std::vector<std::optional<std::string>> rememberedBackups_;
};

/// What an undisturbed run asks the system for, call by call: the first stands at 0.
const std::vector<Question>& TraceOf(const Operation& operation, const std::vector<DeckPlan>& plans);

/// The number of calls of the system that an undisturbed run of the operation over the decks makes.
std::uint64_t CallsOf(const Operation& operation, const std::vector<DeckPlan>& plans);

}  // namespace tessarine::torture
