#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "Random.h"

/// The frame of all attacks. A kind of attack plays rounds; each round has a folder of its own, attacks the program in
/// it, and then checks what lies there.
namespace tessarine::torture
{

enum class Harm {
    Damaged,  ///< A file is neither what it was nor what it was to become.
    Lost,     ///< A content is gone that somebody had: a deck, an original, what another program wrote.
    Widened,  ///< Somebody may do with a file what they could not before, be it for a moment.
    Other,    ///< The report is untrue, a file is left over, the program hangs or ends without a summary.
};
inline constexpr std::array<const char*, 4> harmNames{"damaged", "lost", "widened", "other faults"};

struct Found {
    Harm harm = Harm::Other;
    std::string what;
};

/// One round. Equal seed, kind and number give the same attack, as far as chance is the attacker's.
class Round
{
public:
    /// `folder` is there and empty.
    Round(std::filesystem::path folder, std::size_t number, std::uint64_t seed);

    const std::filesystem::path& Folder() const { return folder_; }
    std::size_t Number() const { return number_; }  ///< From 0. Systematic attacks take their place from it.
    Random random;

    void Checked(std::size_t files = 1) { files_ += files; }
    void Add(Harm harm, const std::string& what) { found_.push_back({harm, what}); }
    void Note(const std::string& line) { notes_.push_back(line); }  ///< For whoever looks into a kept folder.

    std::size_t Files() const { return files_; }
    const std::vector<Found>& AllFound() const { return found_; }
    const std::vector<std::string>& Notes() const { return notes_; }

private:
    std::filesystem::path folder_;
    std::size_t number_;
    std::size_t files_ = 0;
    std::vector<Found> found_;
    std::vector<std::string> notes_;
};

struct Kind {
    std::string name;
    std::function<void(Round&)> play;
    std::size_t quickRounds = 3;               ///< Of a quick run.
    std::function<std::string()> whyNot = {};  ///< Why it can't be played here; "" or no function: it can.
};

/// What the rounds of a kind came to.
struct Tally {
    std::string name;
    std::size_t rounds = 0;
    std::size_t files = 0;
    std::array<std::size_t, harmNames.size()> harms{};
};

/// Until when a kind is played: for a time or for a number of rounds.
struct Bounds {
    double seconds = 0;          ///< 0: no bound
    std::size_t rounds = 0;      ///< 0: no bound
    std::size_t firstRound = 0;  ///< To play one round again.
};

/// Plays rounds of a kind in folders below `work`. The first three rounds with a find are told on standard error at
/// once, and their folders kept below `work`/found, with a file `what.txt`; at the end all finds are told by their
/// sorts.
Tally Play(const Kind& kind, const Bounds& bounds, std::uint64_t seed, const std::filesystem::path& work);

}  // namespace tessarine::torture
