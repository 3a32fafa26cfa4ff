#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "support/TemporaryFolder.h"

namespace tessarine::test
{

/// What a program left behind when it had ended.
struct Outcome {
    int status = -1;  ///< Exit status; on Linux 128 + the signal when one ended it.
    std::string output;
    std::string error;
};

/// Runs the real tessarine-batch in a fresh folder of its own, with locale, time zone and data folder pinned.
///
/// On Windows language and data folder are the user's, which no variable changes, and PowerPoint must not be installed:
/// the constructor raises std::runtime_error where it is, because runs would start it and end the one that is open.
class Program
{
public:
    Program();

    TemporaryFolder folder;  ///< Where the program runs.

    /// All that the program sees; may be changed. On Windows it sees the variables of this process besides.
    std::map<std::string, std::string> environment;

    std::size_t fileSizeLimit = 0;  ///< No file may grow beyond it; 0 for no limit. Windows has no such limit.

    /// Runs it to its end. `input` is its standard input.
    Outcome Run(const std::vector<std::string>& arguments, const std::string& input = {});

    /// What the program's error log has got since this was made.
    std::string Log() const;

private:
    std::size_t earlierLog_ = 0;  // bytes
};

/// A text with this system's separators for each "/".
std::string Native(std::string text);

/// The same for a text in which a backslash is written as two, as in JSON.
std::string NativeInJson(std::string_view text);

/// What a report says of the engine that the program has chosen by itself: the first line of a text report, and what
/// the summary of one in JSON begins with. Empty where there is no choice.
#ifdef _WIN32
inline const std::string EngineLine = "Engine: built-in\n";
inline const std::string EngineEntry = R"("engine":"builtin",)";
#else
inline const std::string EngineLine;
inline const std::string EngineEntry;
#endif

}  // namespace tessarine::test
