#include "shell/FileAssociation.h"

#include <gmock/gmock.h>

#include "platform/ProgramFolder.h"
#include "shell/FileAssociationKeys.h"
#include "support/ErrorLogRecorder.h"
#include "support/qt/TestKey.h"

namespace tessarine
{
namespace
{

using testing::IsEmpty;

using namespace std::string_literals;

/// The value without a name of a key below the classes root.
std::optional<StoredValue> Default(const std::wstring& path)
{
    return StoredIn(HKEY_CLASSES_ROOT, path, L"");
}

/// How a text of ASCII stands in the registry, which keeps all texts in Unicode.
StoredValue Stored(const std::string& text)
{
    std::string bytes;
    for (const char letter : text + '\0') {
        bytes += letter;
        bytes += '\0';
    }
    return {REG_SZ, bytes};
}

/// A program in a folder of its own, and a classes root that is the test's.
class FileTypeKeysTest : public testing::Test
{
protected:
    FileTypeKeysTest() { previousFolder_ = SetProgramFolder(u"C:\\My Tools"); }
    ~FileTypeKeysTest() override { SetProgramFolder(previousFolder_); }

    static void Register()
    {
        RegisterFileType(u"tsqfile", u"tsq", u"Tessarine-PowerPoint Setting File",
                         u"C:\\My Tools\\tessarine.exe, 30001");
    }

    static DWORD CountOfSubKeys(const std::wstring& path)
    {
        HKEY key = nullptr;
        DWORD count = 0;
        RegOpenKeyExW(HKEY_CLASSES_ROOT, path.c_str(), 0, KEY_READ, &key);
        RegQueryInfoKeyW(key, nullptr, nullptr, nullptr, &count, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                         nullptr);
        RegCloseKey(key);
        return count;
    }

    ErrorLogRecorder log_;
    String previousFolder_;
};

TEST_F(FileTypeKeysTest, AreFourWithTheirDefaultValues)
{
    const TestKey classes(HKEY_CLASSES_ROOT);

    Register();

    EXPECT_EQ(Default(L".tsq"), Stored("tsqfile"));
    EXPECT_EQ(Default(L"tsqfile"), Stored("Tessarine-PowerPoint Setting File"));
    EXPECT_EQ(Default(L"tsqfile\\shell\\open\\command"), Stored("C:\\My Tools\\tessarine.exe %1"));
    EXPECT_EQ(Default(L"tsqfile\\DefaultIcon"), Stored("C:\\My Tools\\tessarine.exe, 30001"));
    EXPECT_EQ(CountOfSubKeys(L""), 2u);
    EXPECT_EQ(CountOfSubKeys(L"tsqfile"), 2u);
    EXPECT_THAT(log_.Lines(), IsEmpty());
}

TEST_F(FileTypeKeysTest, FollowAProgramThatHasMoved)
{
    const TestKey classes(HKEY_CLASSES_ROOT);
    Register();
    SetProgramFolder(u"D:\\Tools");

    Register();

    EXPECT_EQ(Default(L"tsqfile\\shell\\open\\command"), Stored("D:\\Tools\\tessarine.exe %1"));
}

TEST_F(FileTypeKeysTest, LeaveWhatElseStandsInThem)
{
    const TestKey classes(HKEY_CLASSES_ROOT);
    CreateNewKey(u".tsq\\ShellNew", HKEY_CLASSES_ROOT);
    SetKeyValue(u".tsq", u"Content Type", u"text/plain", REG_SZ);

    Register();

    EXPECT_EQ(StoredIn(HKEY_CLASSES_ROOT, L".tsq", L"Content Type"), Stored("text/plain"));
    EXPECT_EQ(CountOfSubKeys(L".tsq"), 1u);
    EXPECT_EQ(Default(L".tsq"), Stored("tsqfile"));
}

TEST_F(FileTypeKeysTest, AreLeftOutWithoutAWordWhereNoneCanBeMade)
{
    const TestKey classes(HKEY_CLASSES_ROOT, TestKey::Kind::Blocked);

    Register();

    EXPECT_EQ(CountOfSubKeys(L""), 0u);
    EXPECT_EQ(Default(L".tsq"), std::nullopt);
    EXPECT_THAT(log_.Lines(), IsEmpty());
}

TEST_F(FileTypeKeysTest, NameAFolderThatTheCodePageHasNoLettersFor)
{
    const TestKey classes(HKEY_CLASSES_ROOT);
    SetProgramFolder(u"C:\\報告");

    Register();

    EXPECT_EQ(Default(L"tsqfile\\shell\\open\\command"),
              (StoredValue{REG_SZ, Stored("C:\\").bytes.substr(0, 6) + "\x31\x58\x4A\x54"s +
                                       Stored("\\tessarine.exe %1").bytes}));
}

class KeyValueTest : public testing::Test
{
protected:
    KeyValueTest() { CreateNewKey(u"Type", HKEY_CLASSES_ROOT); }

    static std::optional<StoredValue> Named(const std::wstring& name)
    {
        return StoredIn(HKEY_CLASSES_ROOT, L"Type", name);
    }

    const TestKey classes_{HKEY_CLASSES_ROOT};
};

TEST_F(KeyValueTest, IsATextWithItsNul)
{
    SetKeyValue(u"Type", u"Text", u"ab", REG_SZ);
    SetKeyValue(u"Type", u"Empty", u"", REG_SZ);

    EXPECT_EQ(Named(L"Text"), (StoredValue{REG_SZ, "a\0b\0\0\0"s}));
    EXPECT_EQ(Named(L"Empty"), (StoredValue{REG_SZ, "\0\0"s}));
}

TEST_F(KeyValueTest, GoesThroughTheCodePage)
{
    SetKeyValue(u"Type", u"Text", u"Ü", REG_SZ);

    EXPECT_EQ(Named(L"Text"), (StoredValue{REG_SZ, "\xDC\0\0\0"s}));
}

TEST_F(KeyValueTest, IsANumberOfFourBytes)
{
    SetKeyValue(u"Type", u"Number", 0x01020304, REG_DWORD);
    SetKeyValue(u"Type", u"Negative", -2, REG_DWORD);

    EXPECT_EQ(Named(L"Number"), (StoredValue{REG_DWORD, "\4\3\2\1"s}));
    EXPECT_EQ(Named(L"Negative"), (StoredValue{REG_DWORD, "\xFE\xFF\xFF\xFF"s}));
}

TEST_F(KeyValueTest, IsNotWrittenForAnotherType)
{
    SetKeyValue(u"Type", u"Binary", u"ab", REG_BINARY);
    SetKeyValue(u"Type", u"Mixed", u"ab", REG_DWORD);
    SetKeyValue(u"Type", u"Mixed", 5, REG_SZ);

    EXPECT_EQ(Named(L"Binary"), std::nullopt);
    EXPECT_EQ(Named(L"Mixed"), std::nullopt);
}

TEST_F(KeyValueTest, IsNotWrittenWithoutItsKey)
{
    SetKeyValue(u"Missing", u"Text", u"ab", REG_SZ);

    EXPECT_EQ(StoredIn(HKEY_CLASSES_ROOT, L"Missing", L"Text"), std::nullopt);
}

TEST_F(KeyValueTest, TellsTheSystemsCode)
{
    EXPECT_EQ(SetValueEx(nullptr, u"Text", REG_SZ, u"ab"), ERROR_INVALID_HANDLE);
    EXPECT_EQ(SetValueEx(HKEY_CLASSES_ROOT, u"Text", REG_SZ, u"ab"), ERROR_SUCCESS);
    EXPECT_EQ(SetValueEx(nullptr, u"Text", REG_BINARY, u"ab"), 0);
}

}  // namespace
}  // namespace tessarine
