#include <gsf/gsf-outfile-msole.h>
#include <gsf/gsf-output-memory.h>
#include <gsf/gsf.h>

#include <cstdint>

#include "files/CompoundFile.h"

namespace tessarine
{

namespace
{

struct Unreference {
    void operator()(void* object) const { g_object_unref(object); }
};
template <class Object>
using GsfPointer = std::unique_ptr<Object, Unreference>;

const guint8* BytesOf(std::string_view text)
{
    return reinterpret_cast<const guint8*>(text.data());
}

void KeepQuiet(const char*, GLogLevelFlags, const char*, void*) {}

/// What the library thinks of a damaged file is no message for the user's terminal; whoever opens the file says it.
void KeepLibraryQuiet()
{
    [[maybe_unused]] static const bool isQuiet = [] {
        gsf_init();
        constexpr const char* unnamed = nullptr;  // some of its messages have no domain
        for (const char* domain : {"libgsf", "libgsf:msole", unnamed})
            g_log_set_handler(domain, G_LOG_LEVEL_MASK, KeepQuiet, nullptr);
        return true;
    }();
}

}  // namespace

struct CompoundFile::Directory {
    GsfPointer<GsfInput> input;
    GsfPointer<GsfInfile> entries;
};

CompoundFile::CompoundFile(std::string_view file) : size_(file.size()), directory_(std::make_unique<Directory>())
{
    KeepLibraryQuiet();
    // FALSE: the library doesn't free the bytes, which are borrowed.
    directory_->input.reset(gsf_input_memory_new(BytesOf(file), static_cast<gsf_off_t>(file.size()), FALSE));
    if (directory_->input)
        directory_->entries.reset(gsf_infile_msole_new(directory_->input.get(), nullptr));
    GsfInfile* const entries = directory_->entries.get();
    for (int i = 0; entries && i < gsf_infile_num_children(entries); ++i) {
        const char* const name = gsf_infile_name_by_index(entries, i);
        names_.emplace_back(name ? name : "");  // at their places, by which streams are opened
    }
}

CompoundFile::~CompoundFile() = default;

std::optional<std::string> CompoundFile::Stream(std::string_view name) const
{
    const std::size_t entry = EntryOf(name);
    if (entry == names_.size())
        return std::nullopt;
    const GsfPointer<GsfInput> stream(gsf_infile_child_by_index(directory_->entries.get(), static_cast<int>(entry)));
    // A stream is no larger than the file that it lies in, whatever its entry says.
    if (!stream || gsf_input_size(stream.get()) < 0 || static_cast<std::uint64_t>(gsf_input_size(stream.get())) > size_)
        return std::nullopt;
    std::string bytes(static_cast<std::size_t>(gsf_input_size(stream.get())), '\0');
    if (!bytes.empty() && !gsf_input_read(stream.get(), bytes.size(), reinterpret_cast<guint8*>(bytes.data())))
        return std::nullopt;
    return bytes;
}

std::optional<std::string> CompoundFileOf(std::string_view name, std::string_view stream)
{
    KeepLibraryQuiet();
    const GsfPointer<GsfOutput> memory(gsf_output_memory_new());
    const GsfPointer<GsfOutfile> root(gsf_outfile_msole_new(memory.get()));
    const GsfPointer<GsfOutput> entry(gsf_outfile_new_child(root.get(), std::string(name).c_str(), FALSE));
    // The stream is closed before the root that holds it.
    if (!gsf_output_write(entry.get(), stream.size(), BytesOf(stream)) || !gsf_output_close(entry.get()) ||
        !gsf_output_close(GSF_OUTPUT(root.get())))
        return std::nullopt;
    const auto* bytes = gsf_output_memory_get_bytes(GSF_OUTPUT_MEMORY(memory.get()));
    return std::string(reinterpret_cast<const char*>(bytes), static_cast<std::size_t>(gsf_output_size(memory.get())));
}

}  // namespace tessarine
