// settle-help-file <file.chm>: puts into a compiled help a number made from its content, in the two places where chmcmd
// writes the time, so that the same pages give the same file. The viewer only asks whether the number is another one
// than that of a file it knows.
//
// The places: a number of four bytes at offset 16 of the file, its highest byte first; and the entry 10 of the stream
// "#SYSTEM", which is stored as it is, its lowest byte first. That stream begins with the version 3, this entry, and an
// entry 9 with the name of the compiler.
#include <cstdint>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>

namespace
{

using namespace std::string_literals;

constexpr std::size_t timeOfFile = 16;
const std::string signature = "ITSF";
const std::string beforeTime = "\x03\0\0\0\x0A\0\x04\0"s;
const std::string afterTime = "\x09\0"s;

/// FNV-1a
std::uint32_t NumberOf(const std::string& content)
{
    std::uint32_t number = 2166136261u;
    for (const char byte : content)
        number = (number ^ static_cast<unsigned char>(byte)) * 16777619u;
    return number;
}

bool Settle(std::string& content)
{
    const std::size_t stream = content.find(beforeTime);
    const std::size_t timeOfSystem = stream + beforeTime.size();
    if (!content.starts_with(signature) || stream == std::string::npos ||
        content.compare(timeOfSystem + 4, afterTime.size(), afterTime) != 0)
        return false;

    for (std::size_t i = 0; i < 4; ++i)
        content[timeOfFile + i] = content[timeOfSystem + i] = 0;
    const std::uint32_t number = NumberOf(content);
    for (std::size_t i = 0; i < 4; ++i) {
        content[timeOfFile + i] = static_cast<char>(number >> (24 - 8 * i) & 0xFF);
        content[timeOfSystem + i] = static_cast<char>(number >> 8 * i & 0xFF);
    }
    return true;
}

}  // namespace

int main(int count, char* arguments[])
{
    if (count != 2) {
        std::cerr << "usage: settle-help-file <file.chm>\n";
        return 2;
    }
    std::ifstream input(arguments[1], std::ios::binary);
    std::string content(std::istreambuf_iterator<char>(input), {});
    input.close();
    if (!Settle(content)) {
        std::cerr << "settle-help-file: " << arguments[1] << " is not laid out as chmcmd does it\n";
        return 1;
    }
    std::ofstream output(arguments[1], std::ios::binary);
    return (output << content).flush() ? 0 : 1;
}
