#pragma once

#include <cstdint>

/// What the attacker and the library that it loads into the attacked program tell one another.
///
/// The library stands in front of the C library's functions that reach the file system. It numbers their calls from 1
/// and does with each what these variables of the environment say; without them it passes all calls on.
namespace tessarine::torture
{

/// A path to a file of eight bytes, in which the number of the last call stands, also when the program is gone.
inline constexpr const char* counterVariable = "TORTURE_COUNTER";
/// A call's number: the program kills itself in front of it.
inline constexpr const char* dieVariable = "TORTURE_DIE";
/// "number:errno" fails one call; "number:errno:+" fails that one and all after it.
inline constexpr const char* failVariable = "TORTURE_FAIL";
/// A call's number: from it on, writes take half of what they are given.
inline constexpr const char* shortVariable = "TORTURE_SHORT";
/// The disk is full after so many bytes.
inline constexpr const char* fullVariable = "TORTURE_FULL";
/// A path: what is made, written, flushed, renamed and removed is appended to that file as `RecordHead`s.
inline constexpr const char* recordVariable = "TORTURE_RECORD";
/// The number of an inherited socket for `Question`s and `Answer`s.
inline constexpr const char* doorVariable = "TORTURE_DOOR";
/// The calls to ask about: "all", or numbers with commas between them.
inline constexpr const char* askVariable = "TORTURE_ASK";

/// The program stands in front of a call and waits for the answer.
struct Question {
    std::uint64_t number = 0;
    char call[24] = {};            ///< "renameat"
    std::int32_t descriptor = -1;  ///< That the call is about, or the folder that `path` counts from.
    char path[1024] = {};          ///< That the call is about; the new name of a rename. Empty when there is none.
};

enum class Verdict : std::int32_t { Go, Fail };

struct Answer {
    Verdict verdict = Verdict::Go;
    std::int32_t error = 0;  ///< The errno of a failure.
};

enum class RecordKind : std::uint32_t {
    Made,       ///< `path` leads to a new file; `number` is its mode.
    Written,    ///< `bytes` at `number`.
    CutOff,     ///< The file ends at `number`.
    Flushed,    ///< The file, or the folder `path`.
    ModeSet,    ///< `number` is the mode.
    Renamed,    ///< `path` became `otherPath`.
    Exchanged,  ///< `path` and `otherPath` changed places.
    Linked,     ///< `path` leads to the file, too.
    Removed,    ///< `path`
};

/// Followed by the path, the other path and the bytes. Paths are absolute; a kind has those that its comment names.
struct RecordHead {
    RecordKind kind = RecordKind::Made;
    std::uint32_t pathSize = 0;
    std::uint32_t otherPathSize = 0;
    std::uint32_t byteCount = 0;
    std::uint64_t device = 0;  ///< Of the file, with `inode`; 0 where a kind needs none.
    std::uint64_t inode = 0;
    std::uint64_t number = 0;
};

}  // namespace tessarine::torture
