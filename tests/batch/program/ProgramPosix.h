#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

#include "batch/program/Program.h"

namespace tessarine::test
{

/// Starts a program with the given descriptors as standard input, output and error.
pid_t Start(const Program& program, const std::vector<std::string>& arguments, int input, int output, int error);

/// Waits for the end of what Start started, gives its exit status as in Outcome.
int WaitFor(pid_t process);

/// Runs a program to its end with its standard output going to a path.
Outcome RunInto(const Program& program, const std::string& outputPath, const std::vector<std::string>& arguments);

/// Reads a descriptor to its end.
std::string ReadAll(int descriptor);

}  // namespace tessarine::test
