#include "ui/main/InputTests.h"

#include "platform/CaseFolding.h"
#include "platform/Files.h"
#include "platform/Treatments.h"

namespace tessarine
{

namespace
{

constexpr StringView place = u"Form frmMain";

}  // namespace

std::int32_t ValidateFile(const String& path, const String& extensions)
{
    return LogAndReturn({u"ValidateFile", place}, [&] {
        if (path.empty())
            return InputTest::Empty;
        const std::size_t dot = path.rfind(u'.');
        if (!FileExists(path) || dot == String::npos)
            return InputTest::FileNotFound;
        const String allowed = u';' + ToUpper(extensions) + u';';
        const String extension = ToUpper(path.substr(dot));
        const bool isAllowed =
            extension.find(u';') == String::npos && allowed.find(u';' + extension + u';') != String::npos;
        return isAllowed ? InputTest::Valid : InputTest::OtherExtension;
    });
}

std::int32_t ValidateFolder(const String& path)
{
    return LogAndReturn({u"ValidateFolder", place}, [&] {
        if (path.empty())
            return InputTest::Empty;
        return FolderExists(path) ? InputTest::Valid : InputTest::FolderNotFound;
    });
}

}  // namespace tessarine
