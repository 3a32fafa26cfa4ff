#include "saving/JournalFile.h"

#include <cerrno>
#include <random>
#include <utility>

#include "files/WindowsErrors.h"
#include "files/WindowsFiles.h"
#include "files/WriteAll.h"
#include "log/ErrorLog.h"
#include "platform/PathSeparator.h"
#include "platform/WindowsHeaders.h"
#include "saving/MarkedFile.h"

namespace tessarine
{

namespace
{

/// Others may read a journal, and no more: whoever can open it for removal knows that its process has died.
constexpr unsigned long access = GENERIC_READ | GENERIC_WRITE | DELETE;
constexpr unsigned long shared = FILE_SHARE_READ;

/// Empty while the data folder isn't settled.
NativeString JournalFolder()
{
    if (ApplicationDataFolder.empty())
        return {};
    return NativePathIfValid(ApplicationDataFolder + PathSeparator).value_or(NativeString());
}

NativeString RandomName()
{
    static constexpr std::wstring_view letters = L"0123456789abcdefghijklmnopqrstuvwxyz";
    std::random_device random;
    NativeString name = L"Run-";
    for (int i = 0; i < 6; ++i)
        name += letters[random() % letters.size()];
    return name + L".journal";
}

}  // namespace

std::unique_ptr<JournalFile> JournalFile::Make()
{
    const NativeString folder = JournalFolder();
    if (folder.empty()) {
        errno = ENOENT;
        return nullptr;
    }
    for (int attempts = 8; attempts > 0; --attempts) {
        NativeString path = folder + RandomName();
        FileDescriptor file(
            CreateFileW(path.c_str(), access, shared, nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr));
        if (file.IsOpen())
            return std::unique_ptr<JournalFile>(new JournalFile(std::move(path), std::move(file)));
        LeaveErrorInErrno();
        if (errno != EEXIST)
            break;
    }
    return nullptr;
}

std::vector<std::unique_ptr<JournalFile>> JournalFile::Abandoned()
{
    std::vector<std::unique_ptr<JournalFile>> journals;
    const NativeString folder = JournalFolder();
    WIN32_FIND_DATAW entry{};
    const HANDLE search = folder.empty() ? INVALID_HANDLE_VALUE
                                         : FindFirstFileExW((folder + L"Run-*.journal").c_str(), FindExInfoBasic,
                                                            &entry, FindExSearchNameMatch, nullptr, 0);
    if (search == INVALID_HANDLE_VALUE)
        return journals;
    const std::unique_ptr<void, BOOL (*)(HANDLE)> owned(search, &FindClose);
    do {
        NativeString path = folder + entry.cFileName;
        FileDescriptor file = OpenNoLink(path, access, shared);
        if (file.IsOpen() && IsOwnFile(file.get()))
            journals.push_back(std::unique_ptr<JournalFile>(new JournalFile(std::move(path), std::move(file))));
    } while (FindNextFileW(search, &entry));
    return journals;
}

bool JournalFile::Put(std::string_view text)
{
    if (!SetFilePointerEx(file_.get(), {}, nullptr, FILE_BEGIN) || !SetEndOfFile(file_.get()))
        return LeaveErrorInErrno();
    return WriteAll(file_.get(), text);
}

bool JournalFile::FlushToDisk()
{
    if (!FlushFileBuffers(file_.get()))
        return LeaveErrorInErrno();
    FlushFolderOf(path_);
    return true;
}

void JournalFile::Remove() noexcept
{
    // It goes when it is closed; nobody else can open it for removal until then.
    FILE_DISPOSITION_INFO disposition{TRUE};
    SetFileInformationByHandle(file_.get(), FileDispositionInfo, &disposition, sizeof disposition);
}

}  // namespace tessarine
