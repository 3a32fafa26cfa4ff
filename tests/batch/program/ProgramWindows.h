#pragma once

#include <string>
#include <vector>

#include "batch/program/Program.h"
#include "files/FileDescriptor.h"

namespace tessarine::test
{

/// What a program is given as standard input, output and error. The handles must be inheritable; without one the
/// program has none.
struct Streams {
    NativeFile input = NoFile;
    NativeFile output = NoFile;
    NativeFile error = NoFile;
};

/// A file that a program started later may be given as a stream.
FileDescriptor OpenStream(const String& path, unsigned long access);

/// A process that runs a program.
class RunningProgram
{
public:
    enum class Console {
        Shared,  ///< The one of this process.
        Own,     ///< One without a window, which Ctrl-C can be sent to (SendControlEvent).
    };

    RunningProgram(const Program& program, const std::vector<std::string>& arguments, const Streams& streams,
                   Console console = Console::Shared);
    ~RunningProgram();  ///< Ends it at once if it still runs.
    RunningProgram(const RunningProgram&) = delete;
    RunningProgram& operator=(const RunningProgram&) = delete;

    /// Whether it has ended, or does so within a time.
    bool HasEnded(unsigned long milliseconds = 0) const;

    /// Ends it at once, wherever it is, and returns when it has gone.
    void Kill();

    /// Waits for its end and gives its exit status.
    int WaitFor() const;

    enum class ControlEvent { CtrlC, CtrlBreak };

    enum class Sending {
        Done,
        NoConsole,  ///< The program has gone, or was started without a console of its own.
        Refused,    ///< By the system; Wine has no Ctrl-Break.
    };

    /// Sends an event to its own console, where it arrives some time later.
    Sending Send(ControlEvent event) const;

private:
    FileDescriptor process_;
    unsigned long id_ = 0;
};

/// The reading end of a pipe that holds little, so that who writes into it stands still when nobody reads.
class NarrowPipe
{
public:
    explicit NarrowPipe(unsigned long capacity);

    NativeFile writer() const { return writer_.get(); }
    void CloseWriter() { writer_.Close(); }  ///< To be called when the program has started, so that the pipe can end.
    void CloseReader() { reader_.Close(); }

    /// A line with its end; what is left at the end of all, empty after that.
    std::string ReadLine();

    /// All that is left.
    std::string ReadAll();

    /// Bytes that wait to be read.
    unsigned long Held() const;

private:
    FileDescriptor reader_;
    FileDescriptor writer_;
};

}  // namespace tessarine::test
