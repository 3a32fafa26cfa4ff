#pragma once

#include <sys/types.h>

#include <map>
#include <string>
#include <vector>

#include "support/TemporaryFolder.h"

namespace tessarine::test
{

/// What a program left behind when it had ended.
struct Outcome {
    int status = -1;  ///< Exit status; 128 + the signal when one ended it.
    std::string output;
    std::string error;
};

/// Runs the real tessarine-batch in a fresh folder of its own, with locale, time zone and data folder pinned.
class Program
{
public:
    Program();

    TemporaryFolder folder;                          ///< Where the program runs.
    std::map<std::string, std::string> environment;  ///< All that the program sees; may be changed.
    std::size_t fileSizeLimit = 0;                   ///< No file may grow beyond it; 0 for no limit.

    /// Runs it to its end. `input` is its standard input.
    Outcome Run(const std::vector<std::string>& arguments, const std::string& input = {});

    /// The same with its standard output going to a path.
    Outcome RunInto(const std::string& outputPath, const std::vector<std::string>& arguments);

    /// Starts it with the given descriptors as standard output and error.
    pid_t Start(const std::vector<std::string>& arguments, int input, int output, int error);

    /// Waits for the end of what Start started, gives its exit status as in Outcome.
    static int WaitFor(pid_t process);
};

/// Reads a descriptor to its end.
std::string ReadAll(int descriptor);

}  // namespace tessarine::test
