#include "platform/NativePath.h"

#include <algorithm>

#include "platform/WindowsHeaders.h"

namespace tessarine
{

namespace
{

constexpr NativeStringView plainPrefix = L"\\\\?\\";
constexpr NativeStringView sharePrefix = L"\\\\?\\UNC\\";

/// Folders must leave room for a name of 12 characters below the classic limit of 260, and so do paths here: names of
/// temporary files and of copies are made from them.
constexpr std::size_t longestPlainPath = 200;

bool IsSeparator(wchar_t unit)
{
    return unit == L'\\' || unit == L'/';
}

/// The form without a limit, in which the system changes nothing: the path has to be whole and has backslashes only.
NativeString WithoutLimit(const NativeString& path)
{
    NativeString full(path.size() + MAX_PATH + 1, L'\0');
    const DWORD length = GetFullPathNameW(path.c_str(), static_cast<DWORD>(full.size()), full.data(), nullptr);
    if (length == 0 || length >= full.size())
        return path;
    full.resize(length);
    if (full.starts_with(L"\\\\.\\") || full.starts_with(plainPrefix))
        return full;
    if (full.starts_with(L"\\\\"))
        return NativeString(sharePrefix) + full.substr(2);
    return NativeString(plainPrefix) + full;
}

}  // namespace

std::optional<NativeString> NativePathIfValid(StringView path)
{
    if (path.find(u'\0') != StringView::npos)
        return std::nullopt;
    NativeString native(path.begin(), path.end());
    if (native.starts_with(plainPrefix))
        return native;
    std::ranges::replace_if(native, IsSeparator, L'\\');
    return native.size() > longestPlainPath ? WithoutLimit(native) : native;
}

String PathText(NativeStringView path)
{
    if (path.starts_with(sharePrefix))
        return u"\\\\" + String(path.begin() + sharePrefix.size(), path.end());
    if (path.starts_with(plainPrefix))
        path.remove_prefix(plainPrefix.size());
    return {path.begin(), path.end()};
}

bool IsFullPath(std::string_view path)
{
    return path.starts_with("\\\\") || (path.size() > 2 && path[1] == ':' && path[2] == '\\');
}

NativeString NativeName(std::string_view ascii)
{
    return {ascii.begin(), ascii.end()};
}

}  // namespace tessarine
