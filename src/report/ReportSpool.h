#pragma once

#include <cstdint>
#include <string>

#include "files/HeldFolder.h"
#include "platform/NativePath.h"
#include "saving/NewFile.h"

namespace tessarine
{

class ReplacementFile;

/// Text that waits in a temporary file beside the file that it is meant for. The temporary file goes with this object;
/// that of a killed process goes as every other NewFile does.
///
/// Failures are of the system's family (SystemFileFailure) and name `path`.
class ReportSpool
{
public:
    /// `path` is that of the file that the text is meant for.
    explicit ReportSpool(StringView path);

    void Write(const std::string& text);

    /// Hands all text on, in pieces. Nothing may be written after it.
    void CopyTo(ReplacementFile& file);

private:
    void Flush();

    const NativeString path_;
    const HeldFolder folder_;
    NewFile file_;
    std::string pending_;  // small writes gathered into one
    std::uint64_t length_ = 0;
};

}  // namespace tessarine
