#include "saving/NewFile.h"

#include <string_view>

#include "files/WriteAll.h"
#include "saving/Leftovers.h"

namespace tessarine
{

namespace
{

constexpr std::string_view prefix = ".tessarine-";
constexpr std::string_view letters = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
constexpr std::size_t lettersInName = 6;
constexpr std::size_t lengthOfName = prefix.size() + lettersInName;

}  // namespace

NativeString NewFileName(std::span<const unsigned char, lettersInName> random)
{
    NativeString name = NativeName(prefix);
    for (const unsigned char byte : random)
        name += static_cast<NativeString::value_type>(letters[byte % letters.size()]);
    return name;
}

bool IsNewFileName(NativeStringView name)
{
    static const NativeString nativePrefix = NativeName(prefix);
    static const NativeString nativeLetters = NativeName(letters);
    return name.size() == lengthOfName && name.starts_with(nativePrefix) &&
           name.find_first_not_of(nativeLetters, prefix.size()) == NativeStringView::npos;
}

NativeStringView NameBeforeSave(NativeStringView temporaryName)
{
    if (temporaryName.size() <= lengthOfName)
        return {};
    const NativeStringView own = temporaryName.substr(0, temporaryName.size() - lengthOfName);
    return IsNewFileName(temporaryName.substr(own.size())) ? own : NativeStringView();
}

bool NewFile::Write(std::string_view bytes)
{
    return WriteAll(file_.get(), bytes);
}

}  // namespace tessarine
