#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "files/FileDescriptor.h"
#include "platform/NativePath.h"

namespace tessarine
{

/// A journal in ApplicationDataFolder, under a name that no other has, which this user alone may read, and which is
/// locked while it is open. A member that gives false leaves the reason in errno.
class JournalFile
{
public:
    /// Makes a new, empty journal. Null when that can't be done, with the reason in errno.
    static std::unique_ptr<JournalFile> Make();

    /// The journals that no living process holds, locked for the caller. What isn't a journal of this user is left out.
    static std::vector<std::unique_ptr<JournalFile>> Abandoned();

    /// Only closes: a journal that isn't needed any longer has been removed before.
    ~JournalFile() = default;
    JournalFile(const JournalFile&) = delete;
    JournalFile& operator=(const JournalFile&) = delete;

    bool Put(std::string_view text);  ///< In place of what it holds.
    bool Append(std::string_view text);
    bool FlushToDisk();  ///< The content, and that the file is there.
    void Remove() noexcept;

    /// The whole content. Nothing when it is longer than any journal, or can't be read.
    std::optional<std::string> Content() const;

private:
    JournalFile(NativeString path, FileDescriptor file);

    NativeString path_;
    FileDescriptor file_;
};

}  // namespace tessarine
