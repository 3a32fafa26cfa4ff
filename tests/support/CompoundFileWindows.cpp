#include <objbase.h>
#include <objidl.h>

#include <map>
#include <memory>
#include <stdexcept>

#include "platform/String.h"
#include "platform/WindowsHeaders.h"
#include "support/CompoundFile.h"

namespace tessarine::test
{
namespace
{

struct Release {
    void operator()(IUnknown* object) const { object->Release(); }
};
template <class Interface>
using ComPointer = std::unique_ptr<Interface, Release>;

constexpr DWORD toWrite = STGM_CREATE | STGM_READWRITE | STGM_SHARE_EXCLUSIVE;

void Check(HRESULT result, const std::string& what)
{
    if (FAILED(result))
        throw std::runtime_error("can't " + what);
}

std::wstring WideOf(const std::string& text)
{
    const String units = FromUtf8(text);
    return {units.begin(), units.end()};
}

}  // namespace

std::string CompoundFile(const std::vector<std::pair<std::string, std::string>>& streams)
{
    ILockBytes* bytes = nullptr;
    Check(CreateILockBytesOnHGlobal(nullptr, TRUE, &bytes), "take memory");
    const ComPointer<ILockBytes> memory(bytes);
    std::map<std::string, ComPointer<IStorage>> storages;  // by path; the root's is empty
    IStorage* root = nullptr;
    Check(StgCreateDocfileOnILockBytes(bytes, toWrite, 0, &root), "make a compound file");
    storages[""].reset(root);

    for (const auto& [name, content] : streams) {
        IStorage* parent = root;
        std::size_t begin = 0;
        for (std::size_t slash; (slash = name.find('/', begin)) != std::string::npos; begin = slash + 1) {
            auto& storage = storages[name.substr(0, slash)];
            if (!storage) {
                IStorage* made = nullptr;
                const std::wstring inner = WideOf(name.substr(begin, slash - begin));
                Check(parent->CreateStorage(inner.c_str(), toWrite, 0, 0, &made), "make a storage for " + name);
                storage.reset(made);
            }
            parent = storage.get();
        }
        IStream* made = nullptr;
        Check(parent->CreateStream(WideOf(name.substr(begin)).c_str(), toWrite, 0, 0, &made), "make stream " + name);
        const ComPointer<IStream> stream(made);
        Check(stream->Write(content.data(), static_cast<ULONG>(content.size()), nullptr), "write stream " + name);
        Check(stream->Commit(STGC_DEFAULT), "keep stream " + name);
    }
    // Deeper storages sort after their parents and are kept first.
    for (auto storage = storages.rbegin(); storage != storages.rend(); ++storage) {
        Check(storage->second->Commit(STGC_DEFAULT), "keep storage " + storage->first);
        storage->second.reset();
    }

    STATSTG status = {};
    Check(memory->Stat(&status, STATFLAG_NONAME), "ask for the size");
    std::string file(static_cast<std::size_t>(status.cbSize.QuadPart), '\0');
    ULONG read = 0;
    Check(memory->ReadAt({}, file.data(), static_cast<ULONG>(file.size()), &read), "read the file");
    return file;
}

}  // namespace tessarine::test
