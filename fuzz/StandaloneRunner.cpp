// Hands files to a fuzz target one by one, with any compiler: replays seeds and past finds as ordinary tests.
//
//     <target>_replay FILE|FOLDER...
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace
{

int filesRun = 0;

void Replay(const std::filesystem::path& path)
{
    std::ifstream file(path, std::ios::binary);
    const std::string bytes((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
    std::fprintf(stderr, "%s (%zu bytes)\n", path.c_str(), bytes.size());  // in front of a crash
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
    ++filesRun;
}

}  // namespace

int main(int argc, char** argv)
{
    for (int i = 1; i < argc; ++i) {
        const std::filesystem::path path(argv[i]);
        if (!std::filesystem::is_directory(path)) {
            Replay(path);
            continue;
        }
        for (const auto& entry : std::filesystem::directory_iterator(path))
            if (entry.is_regular_file())
                Replay(entry.path());
    }
    if (filesRun == 0) {
        std::fprintf(stderr, "no file to replay\n");
        return 1;
    }
    return 0;
}
