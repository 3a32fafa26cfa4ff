#include "run/JobInputs.h"

#include "files/Files.h"
#include "platform/CaseFolding.h"
#include "run/SplitText.h"

namespace tessarine
{

std::vector<String> PatternsIn(StringView patterns)
{
    const auto pieces = SplitText<StringView>(patterns, u";");
    return {pieces.begin(), pieces.end()};
}

bool HasExtension(StringView path, StringView extensions)
{
    const std::size_t dot = path.rfind(u'.');
    if (dot == StringView::npos)
        return false;
    const String extension = ToUpper(path.substr(dot));
    const String allowed = u';' + ToUpper(extensions) + u';';
    // ".CSV;.TAB" as an extension would look like two of the list.
    return extension.find(u';') == String::npos && allowed.find(u';' + extension + u';') != String::npos;
}

std::int32_t ValidateFile(const String& path, StringView extensions)
{
    if (path.empty())
        return InputTest::Empty;
    if (!FileExists(path) || path.find(u'.') == String::npos)
        return InputTest::FileNotFound;
    return HasExtension(path, extensions) ? InputTest::Valid : InputTest::OtherExtension;
}

std::int32_t ValidateFolder(const String& path)
{
    if (path.empty())
        return InputTest::Empty;
    return FolderExists(path) ? InputTest::Valid : InputTest::FolderNotFound;
}

}  // namespace tessarine
