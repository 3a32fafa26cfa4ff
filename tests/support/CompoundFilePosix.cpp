#include "support/CompoundFile.h"

#include <gsf/gsf-outfile-msole.h>
#include <gsf/gsf-output-memory.h>
#include <gsf/gsf-utils.h>

#include <map>
#include <memory>
#include <stdexcept>

namespace tessarine::test
{
namespace
{

template <class Object>
using GObjectPointer = std::unique_ptr<Object, decltype(&g_object_unref)>;

GsfOutput* Storage(GsfOutfile* root, const std::string& name, std::map<std::string, GsfOutput*>& known)
{
    if (const auto found = known.find(name); found != known.end())
        return found->second;
    const std::size_t slash = name.rfind('/');
    GsfOutfile* parent = slash == std::string::npos ? root : GSF_OUTFILE(Storage(root, name.substr(0, slash), known));
    GsfOutput* storage = gsf_outfile_new_child(parent, name.substr(slash + 1).c_str(), TRUE);
    known[name] = storage;
    return storage;
}

void Close(GsfOutput* output)
{
    gsf_output_close(output);
    g_object_unref(output);
}

}  // namespace

std::string CompoundFile(const std::vector<std::pair<std::string, std::string>>& streams)
{
    gsf_init();
    const GObjectPointer<GsfOutput> memory(gsf_output_memory_new(), g_object_unref);
    const GObjectPointer<GsfOutfile> root(gsf_outfile_msole_new(memory.get()), g_object_unref);
    std::map<std::string, GsfOutput*> storages;
    for (const auto& [name, bytes] : streams) {
        const std::size_t slash = name.rfind('/');
        GsfOutfile* parent =
            slash == std::string::npos ? root.get() : GSF_OUTFILE(Storage(root.get(), name.substr(0, slash), storages));
        GsfOutput* stream = gsf_outfile_new_child(parent, name.substr(slash + 1).c_str(), FALSE);
        if (gsf_output_write(stream, bytes.size(), reinterpret_cast<const guint8*>(bytes.data())) == FALSE)
            throw std::runtime_error("can't write stream " + name);
        Close(stream);
    }
    // Deeper storages sort after their parents and close first.
    for (auto storage = storages.rbegin(); storage != storages.rend(); ++storage)
        Close(storage->second);
    gsf_output_close(GSF_OUTPUT(root.get()));
    const auto* bytes = reinterpret_cast<const char*>(gsf_output_memory_get_bytes(GSF_OUTPUT_MEMORY(memory.get())));
    return {bytes, static_cast<std::size_t>(gsf_output_size(memory.get()))};
}

}  // namespace tessarine::test
