#include "batch/program/ProgramPosix.h"

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <stdexcept>

namespace tessarine::test
{

namespace
{

/// A file of the folder, open for reading and writing.
class WorkFile
{
public:
    explicit WorkFile(const std::string& path) : descriptor_(open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600))
    {
        if (descriptor_ < 0)
            throw std::runtime_error("can't open " + path);
    }
    ~WorkFile() { close(descriptor_); }
    WorkFile(const WorkFile&) = delete;
    WorkFile& operator=(const WorkFile&) = delete;

    int descriptor() const { return descriptor_; }

    std::string Content() const
    {
        lseek(descriptor_, 0, SEEK_SET);
        return ReadAll(descriptor_);
    }

private:
    int descriptor_;
};

std::vector<char*> Pointers(std::vector<std::string>& texts)
{
    std::vector<char*> pointers;
    for (std::string& text : texts)
        pointers.push_back(text.data());
    pointers.push_back(nullptr);
    return pointers;
}

}  // namespace

Program::Program()
    : environment{{"LC_ALL", "C"},
                  {"TZ", "UTC"},
                  {"HOME", ToUtf8(folder.Path())},
                  {"XDG_DATA_HOME", ToUtf8(folder.PathOf(u".data"))},
                  {"TERM", "xterm"}}
{
}

Outcome Program::Run(const std::vector<std::string>& arguments, const std::string& input)
{
    folder.Write(u".input", input);
    const WorkFile in(ToUtf8(folder.PathOf(u".input")));
    const WorkFile out(ToUtf8(folder.Write(u".output", "")));
    const WorkFile error(ToUtf8(folder.Write(u".error", "")));

    const int status = WaitFor(Start(*this, arguments, in.descriptor(), out.descriptor(), error.descriptor()));
    return {status, out.Content(), error.Content()};
}

std::string Program::Log() const
{
    return ContentOf(folder.PathOf(u".data/Tessarine/Tessarine/Errors.Log")).substr(earlierLog_);
}

Outcome RunInto(const Program& program, const std::string& outputPath, const std::vector<std::string>& arguments)
{
    const WorkFile out(outputPath);
    const WorkFile error(ToUtf8(program.folder.Write(u".error", "")));

    const int status = WaitFor(Start(program, arguments, error.descriptor(), out.descriptor(), error.descriptor()));
    return {status, {}, error.Content()};
}

pid_t Start(const Program& program, const std::vector<std::string>& arguments, int input, int output, int error)
{
    std::vector<std::string> texts{TESSARINE_BATCH};
    texts.insert(texts.end(), arguments.begin(), arguments.end());
    std::vector<std::string> variables;
    for (const auto& [name, value] : program.environment)
        variables.push_back(name + "=" + value);
    const auto argumentPointers = Pointers(texts);
    const auto variablePointers = Pointers(variables);
    const std::string workFolder = ToUtf8(program.folder.Path());

    const pid_t process = fork();
    if (process < 0)
        throw std::runtime_error("can't start a process");
    if (process == 0) {
        const bool ready = dup2(input, 0) == 0 && dup2(output, 1) == 1 && dup2(error, 2) == 2;
        const rlimit limit{program.fileSizeLimit, program.fileSizeLimit};
        if (program.fileSizeLimit > 0)
            setrlimit(RLIMIT_FSIZE, &limit);
        if (ready && chdir(workFolder.c_str()) == 0)
            execve(argumentPointers[0], argumentPointers.data(), variablePointers.data());
        _exit(127);
    }
    return process;
}

int WaitFor(pid_t process)
{
    int status = 0;
    while (waitpid(process, &status, 0) < 0) {
        if (errno != EINTR)
            throw std::runtime_error("the process is lost");
    }
    return WIFSIGNALED(status) ? 128 + WTERMSIG(status) : WEXITSTATUS(status);
}

std::string ReadAll(int descriptor)
{
    std::string content;
    char piece[4096];
    for (ssize_t count = 0; (count = read(descriptor, piece, sizeof piece)) > 0;)
        content.append(piece, static_cast<std::size_t>(count));
    return content;
}

}  // namespace tessarine::test
