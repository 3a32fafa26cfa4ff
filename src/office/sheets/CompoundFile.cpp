#include "office/sheets/CompoundFile.h"

#include <gsf/gsf-outfile-msole.h>
#include <gsf/gsf-output-memory.h>
#include <gsf/gsf.h>

#include <cstdint>

#include "office/sheets/Refusal.h"

namespace tessarine::sheets
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

/// What the library thinks of a damaged file is no message for the user's terminal; the failure says it.
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

bool IsCompoundFile(std::string_view file)
{
    return file.starts_with("\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1");
}

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
    if (!directory_->entries)
        throw Damage("its compound file can't be read");
}

CompoundFile::~CompoundFile() = default;

int CompoundFile::IndexOf(std::string_view name) const
{
    GsfInfile* const entries = directory_->entries.get();
    const int count = gsf_infile_num_children(entries);
    for (int i = 0; i < count; ++i) {
        const char* const found = gsf_infile_name_by_index(entries, i);
        // Case doesn't matter to names in a compound file (MS-CFB 2.6.4).
        if (found && g_ascii_strcasecmp(found, std::string(name).c_str()) == 0)
            return i;
    }
    return -1;
}

std::string CompoundFile::Stream(std::string_view name) const
{
    const int index = IndexOf(name);
    const GsfPointer<GsfInput> stream(index < 0 ? nullptr
                                                : gsf_infile_child_by_index(directory_->entries.get(), index));
    // A stream is no larger than the file that it lies in, whatever its entry says.
    if (!stream || gsf_input_size(stream.get()) < 0 || static_cast<std::uint64_t>(gsf_input_size(stream.get())) > size_)
        throw Damage("its stream " + std::string(name) + " can't be read");
    std::string bytes(static_cast<std::size_t>(gsf_input_size(stream.get())), '\0');
    if (!bytes.empty() && !gsf_input_read(stream.get(), bytes.size(), reinterpret_cast<guint8*>(bytes.data())))
        throw Damage("its stream " + std::string(name) + " can't be read to its end");
    return bytes;
}

std::string CompoundFileOf(const char* name, std::string_view stream)
{
    KeepLibraryQuiet();
    const GsfPointer<GsfOutput> memory(gsf_output_memory_new());
    const GsfPointer<GsfOutfile> root(gsf_outfile_msole_new(memory.get()));
    const GsfPointer<GsfOutput> entry(gsf_outfile_new_child(root.get(), name, FALSE));
    // The stream is closed before the root that holds it.
    if (!gsf_output_write(entry.get(), stream.size(), BytesOf(stream)) || !gsf_output_close(entry.get()) ||
        !gsf_output_close(GSF_OUTPUT(root.get())))
        throw Refusal("The workbook is too large to be written");
    const auto* bytes = gsf_output_memory_get_bytes(GSF_OUTPUT_MEMORY(memory.get()));
    return {reinterpret_cast<const char*>(bytes), static_cast<std::size_t>(gsf_output_size(memory.get()))};
}

}  // namespace tessarine::sheets
