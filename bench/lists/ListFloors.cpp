#include "ListFloors.h"

#include <fcntl.h>
#include <gsf/gsf.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <stdexcept>

namespace tessarine::bench
{

namespace
{

std::string BytesOf(const std::string& path)
{
    std::string bytes(std::filesystem::file_size(path), '\0');
    std::ifstream(path, std::ios::binary).read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    return bytes;
}

}  // namespace

std::size_t CountFields(const std::string& path)
{
    std::size_t fields = 0;
    bool isQuoted = false;
    for (const char character : BytesOf(path)) {
        if (character == '"')
            isQuoted = !isQuoted;
        else if (!isQuoted && (character == ',' || character == '\t' || character == '\n'))
            ++fields;
    }
    return fields;
}

std::size_t CountRecords(const std::string& path)
{
    const std::string file = BytesOf(path);
    GsfInput* const input =
        gsf_input_memory_new(reinterpret_cast<const guint8*>(file.data()), static_cast<gsf_off_t>(file.size()), FALSE);
    GsfInfile* const entries = gsf_infile_msole_new(input, nullptr);
    GsfInput* const stream = gsf_infile_child_by_name(entries, "Workbook");
    std::string bytes(static_cast<std::size_t>(gsf_input_size(stream)), '\0');
    gsf_input_read(stream, bytes.size(), reinterpret_cast<guint8*>(bytes.data()));
    for (void* const object : {static_cast<void*>(stream), static_cast<void*>(entries), static_cast<void*>(input)})
        g_object_unref(object);

    std::size_t records = 0;
    const auto byte = [&](std::size_t at) { return static_cast<std::size_t>(static_cast<unsigned char>(bytes[at])); };
    for (std::size_t at = 0; at + 4 <= bytes.size(); at += 4 + (byte(at + 2) | byte(at + 3) << 8))
        ++records;
    return records;
}

void WriteFlushed(const std::string& path, const std::string& bytes)
{
    const std::string temporary = path + ".new";
    const int file = open(temporary.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
    const bool isWritten = file >= 0 && write(file, bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size());
    if (!isWritten || fsync(file) != 0 || close(file) != 0 || std::rename(temporary.c_str(), path.c_str()) != 0)
        throw std::runtime_error("can't write " + path);
}

}  // namespace tessarine::bench
