#include <algorithm>
#include <cstring>
#include <limits>

#include "files/CompoundFile.h"
#include "platform/String.h"
#include "platform/WindowsHeaders.h"

// They need the header of Windows in front of them.
#include <objbase.h>
#include <objidl.h>

namespace tessarine
{

namespace
{

struct Release {
    void operator()(IUnknown* object) const { object->Release(); }
};
template <class Interface>
using ComPointer = std::unique_ptr<Interface, Release>;

/// Bytes that are lent to the structured storage, for reading alone.
class LentBytes final : public ILockBytes
{
public:
    explicit LentBytes(std::string_view bytes) : bytes_(bytes) {}
    virtual ~LentBytes() = default;

    // Its owner is who made it, so that references need not be counted.
    ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override
    {
        const bool isKnown = id == IID_IUnknown || id == IID_ILockBytes;
        *object = isKnown ? this : nullptr;
        return isKnown ? S_OK : E_NOINTERFACE;
    }

    /// Gives fewer bytes than asked for at the end of the file, and fails after it: Wine's storage would go on with
    /// what happened to be in its memory.
    HRESULT STDMETHODCALLTYPE ReadAt(ULARGE_INTEGER offset, void* target, ULONG count, ULONG* read) override
    {
        const std::string_view found = bytes_.substr(std::min<std::size_t>(offset.QuadPart, bytes_.size()), count);
        std::memcpy(target, found.data(), found.size());
        if (read)
            *read = static_cast<ULONG>(found.size());
        return found.empty() && count > 0 ? STG_E_READFAULT : S_OK;
    }

    HRESULT STDMETHODCALLTYPE Stat(STATSTG* status, DWORD) override
    {
        *status = {};
        status->type = STGTY_LOCKBYTES;
        status->cbSize.QuadPart = bytes_.size();
        return S_OK;
    }

    HRESULT STDMETHODCALLTYPE WriteAt(ULARGE_INTEGER, const void*, ULONG, ULONG*) override
    {
        return STG_E_ACCESSDENIED;
    }
    HRESULT STDMETHODCALLTYPE Flush() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE SetSize(ULARGE_INTEGER) override { return STG_E_ACCESSDENIED; }
    HRESULT STDMETHODCALLTYPE LockRegion(ULARGE_INTEGER, ULARGE_INTEGER, DWORD) override
    {
        return STG_E_INVALIDFUNCTION;
    }
    HRESULT STDMETHODCALLTYPE UnlockRegion(ULARGE_INTEGER, ULARGE_INTEGER, DWORD) override
    {
        return STG_E_INVALIDFUNCTION;
    }

private:
    std::string_view bytes_;
};

/// What the second argument of most calls here hands out.
template <class Interface>
Interface** Into(Interface*& pointer)
{
    pointer = nullptr;
    return &pointer;
}

constexpr DWORD toRead = STGM_READ | STGM_SHARE_EXCLUSIVE;
constexpr DWORD toWrite = STGM_CREATE | STGM_READWRITE | STGM_SHARE_EXCLUSIVE;

std::wstring WideOf(std::string_view text)
{
    const String units = FromUtf8(text);
    return {units.begin(), units.end()};
}

/// The names in a storage, no more than `most`: a damaged directory may lead in a circle.
std::vector<std::string> NamesIn(IStorage& storage, std::size_t most)
{
    std::vector<std::string> names;
    IEnumSTATSTG* pointer;
    if (FAILED(storage.EnumElements(0, nullptr, 0, Into(pointer))))
        return names;
    const ComPointer<IEnumSTATSTG> entries(pointer);
    for (STATSTG entry = {}; names.size() < most && entries->Next(1, &entry, nullptr) == S_OK;) {
        // Wine's storage gives no name when the directory is cut in the middle of an entry.
        if (!entry.pwcsName)
            break;
        const std::wstring_view name(entry.pwcsName);
        names.push_back(ToUtf8(String(name.begin(), name.end())));
        CoTaskMemFree(entry.pwcsName);
    }
    return names;
}

}  // namespace

struct CompoundFile::Directory {
    explicit Directory(std::string_view file) : bytes(file) {}

    LentBytes bytes;
    ComPointer<IStorage> root;
};

CompoundFile::CompoundFile(std::string_view file) : size_(file.size()), directory_(std::make_unique<Directory>(file))
{
    constexpr std::size_t entrySize = 128;
    IStorage* root;
    if (FAILED(StgOpenStorageOnILockBytes(&directory_->bytes, nullptr, toRead, nullptr, 0, Into(root))))
        return;
    directory_->root.reset(root);
    names_ = NamesIn(*root, file.size() / entrySize);
}

CompoundFile::~CompoundFile() = default;

std::optional<std::string> CompoundFile::Stream(std::string_view name) const
{
    const std::size_t entry = EntryOf(name);
    IStream* pointer;
    if (entry == names_.size() ||
        FAILED(directory_->root->OpenStream(WideOf(names_[entry]).c_str(), nullptr, toRead, 0, Into(pointer))))
        return std::nullopt;
    const ComPointer<IStream> stream(pointer);
    STATSTG status = {};
    // A stream is no larger than the file that it lies in, whatever its entry says.
    if (FAILED(stream->Stat(&status, STATFLAG_NONAME)) || status.cbSize.QuadPart > size_ ||
        status.cbSize.QuadPart > std::numeric_limits<ULONG>::max())
        return std::nullopt;
    std::string bytes(static_cast<std::size_t>(status.cbSize.QuadPart), '\0');
    ULONG read = 0;
    // A damaged one ends early.
    if (FAILED(stream->Read(bytes.data(), static_cast<ULONG>(bytes.size()), &read)) || read != bytes.size())
        return std::nullopt;
    return bytes;
}

std::optional<std::string> CompoundFileOf(std::string_view name, std::string_view stream)
{
    ILockBytes* memoryPointer;
    if (FAILED(CreateILockBytesOnHGlobal(nullptr, TRUE, Into(memoryPointer))))
        return std::nullopt;
    const ComPointer<ILockBytes> memory(memoryPointer);
    IStorage* rootPointer;
    if (FAILED(StgCreateDocfileOnILockBytes(memory.get(), toWrite, 0, Into(rootPointer))))
        return std::nullopt;
    ComPointer<IStorage> root(rootPointer);
    IStream* entryPointer;
    if (FAILED(root->CreateStream(WideOf(name).c_str(), toWrite, 0, 0, Into(entryPointer))))
        return std::nullopt;
    ComPointer<IStream> entry(entryPointer);
    ULONG written = 0;
    if (stream.size() > std::numeric_limits<ULONG>::max() ||
        FAILED(entry->Write(stream.data(), static_cast<ULONG>(stream.size()), &written)) || written != stream.size() ||
        FAILED(entry->Commit(STGC_DEFAULT)) || FAILED(root->Commit(STGC_DEFAULT)))
        return std::nullopt;
    entry.reset();
    root.reset();

    STATSTG status = {};
    if (FAILED(memory->Stat(&status, STATFLAG_NONAME)) || status.cbSize.QuadPart > std::numeric_limits<ULONG>::max())
        return std::nullopt;
    std::string bytes(static_cast<std::size_t>(status.cbSize.QuadPart), '\0');
    ULONG read = 0;
    if (FAILED(memory->ReadAt({}, bytes.data(), static_cast<ULONG>(bytes.size()), &read)) || read != bytes.size())
        return std::nullopt;
    return bytes;
}

}  // namespace tessarine
