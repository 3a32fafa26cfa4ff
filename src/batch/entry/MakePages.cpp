// Writes the man page and the completions of tessarine-batch into a folder: a program of the build, not one to install.

#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>

#include "batch/Completions.h"
#include "batch/ManPage.h"

namespace
{

void Write(const std::filesystem::path& path, const std::string& content)
{
    std::filesystem::create_directories(path.parent_path());
    std::ofstream file(path, std::ios::binary);
    file.exceptions(std::ios::failbit | std::ios::badbit);
    file << content;
    file.close();
}

}  // namespace

int main(int argumentCount, char** arguments)
{
    using namespace tessarine::batch;
    if (argumentCount != 2) {
        std::fputs("usage: make-batch-pages FOLDER\n", stderr);
        return 2;
    }
    try {
        const std::filesystem::path folder = arguments[1];
        Write(folder / "tessarine-batch.1", ManPage());
        Write(folder / "completions" / "bash", BashCompletion());
        Write(folder / "completions" / "zsh", ZshCompletion());
        Write(folder / "completions" / "fish", FishCompletion());
        return 0;
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "make-batch-pages: %s\n", failure.what());
        return 1;
    }
}
