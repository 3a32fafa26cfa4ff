#pragma once

#include <sys/types.h>

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "Files.h"
#include "shim/Protocol.h"
#include "Torture.h"

/// The attacked program as a process.
namespace tessarine::torture
{

/// How to run it, and what is to happen at its calls of the system.
struct Call {
    std::vector<std::string> arguments;
    Path dataFolder;                            ///< XDG_DATA_HOME; made when it is missing.
    std::map<std::string, std::string> attack;  ///< Variables of Protocol.h.
    std::optional<std::uint64_t> longestFile;   ///< RLIMIT_FSIZE
    std::optional<uid_t> user;                  ///< To run as; needs a superuser.
    int output = -1;                            ///< Descriptor for its standard output; -1: a file that Outcome reads.

    Call& Counted();  ///< `Running::CallsMet` tells the number of calls.
    Call& DiesAt(std::uint64_t number);
    Call& FailsAt(std::uint64_t number, int error, bool andAllAfterIt = false);
    Call& WritesShortFrom(std::uint64_t number);
    Call& DiskIsFullAfter(std::uint64_t bytes);
    Call& RecordedIn(const Path& record);
    Call& AsksAt(const std::vector<std::uint64_t>& numbers);  ///< `Running::NextQuestion` waits for them.
    Call& AsksAtAll();
};

struct Outcome {
    int status = -1;  ///< Exit status; -1 when a signal ended it.
    int signal = 0;   ///< That ended it.
    bool hung = false;
    std::string output;
    std::string error;
    std::uint64_t callsMet = 0;

    std::string Text() const;  ///< "exit status 1", with what it wrote; for notes.
};

/// One run from its start to its end.
class Running
{
public:
    /// Its files of output lie in the round's folder.
    Running(Round& round, const Call& call);
    ~Running();
    Running(const Running&) = delete;
    Running& operator=(const Running&) = delete;

    pid_t Process() const { return process_; }
    void Signal(int signal) const;

    /// Waits until the program stands in front of a call that was asked for; nothing when it ended or hangs. Calls on
    /// an open file have its path, too.
    std::optional<Question> NextQuestion();
    void LetGo();
    void LetFail(int error);

    /// Waits for its end; a program that does not end in time is killed. Open questions are answered with "go".
    Outcome End();

private:
    void Start(const Call& call, const std::string& name);

    Round& round_;
    pid_t process_ = -1;
    int pidDescriptor_ = -1;
    int door_ = -1;
    Path outputPath_;
    Path errorPath_;
    Path counterPath_;
    bool hung_ = false;
};

/// Starts it and waits for its end.
Outcome Run(Round& round, const Call& call);

}  // namespace tessarine::torture
