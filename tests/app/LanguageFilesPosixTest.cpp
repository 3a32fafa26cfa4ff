// The language files that come with the program, as the build lays them beside the executables.
#include <gmock/gmock.h>
#include <iconv.h>

#include <algorithm>
#include <cctype>
#include <memory>
#include <set>

#include "app/ChosenLanguage.h"
#include "app/LanguageFile.h"
#include "app/LanguageText.h"
#include "files/Files.h"
#include "files/ProfileText.h"
#include "platform/CaseFolding.h"
#include "support/LanguageKeys.h"

namespace tessarine
{

using test::LanguageEntry;
using test::LanguageFile;
using test::LanguageKey;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

namespace
{

constexpr std::size_t longestText = 4095;

struct Language {
    const char* name;
    const char* codePage;  ///< The one of Windows in that language, as iconv names it.
};

constexpr Language languages[] = {{"Chinese(Big5)", "CP950"}, {"English", "CP1252"}, {"French", "CP1252"},
                                  {"German", "CP1252"},       {"Polish", "CP1250"},  {"Russian", "CP1251"},
                                  {"Spanish", "CP1252"}};

String PathIn(const char* folder, const std::string& language)
{
    return FromUtf8(std::string(folder) + "/" + language + ".lng");
}

LanguageFile FileOf(const std::string& language)
{
    return LanguageFile(ReadWholeFile(PathIn(TESSARINE_PROGRAM_FOLDER "/Languages", language)));
}

/// The text in another encoding; "<not in it>" when a character has no place there.
std::string Converted(std::string text, const char* from, const char* to)
{
    const std::unique_ptr<void, int (*)(void*)> converter(iconv_open(to, from), iconv_close);
    std::string result(text.size() * 4 + 16, '\0');
    char* in = text.data();
    char* out = result.data();
    std::size_t inLeft = text.size(), outLeft = result.size();
    if (iconv(converter.get(), &in, &inLeft, &out, &outLeft) != 0)
        return "<not in it>";
    result.resize(result.size() - outLeft);
    return result;
}

/// The access key of a caption, a capital letter or a digit as UTF-8, and what is wrong with the marks, if anything.
struct AccessKey {
    std::string key;
    bool isRight = true;
};

AccessKey AccessKeyOf(const std::string& caption)
{
    const String text = FromUtf8(caption);
    const std::size_t mark = text.find(u'&');
    if (mark == String::npos)
        return {};
    if (text.find(u'&', mark + 1) != String::npos || mark + 1 == text.size() || !IsWordCharacter(text[mark + 1]))
        return {"", false};
    return {ToUtf8(ToUpper(StringView(text).substr(mark + 1, 1)))};
}

/// Captions that are on the screen together, so that their access keys must differ.
struct Scope {
    const char* section;
    std::vector<std::string> keys;
};

const std::vector<Scope>& Scopes()
{
    static const std::vector<Scope> scopes = {
        {"frmMain",
         {"mnuFile.caption", "menuOption.caption", "mnuHelp.caption", "cmdAdd.caption", "cmdDelete.caption",
          "chkMatchCase.caption", "chkIncludesubfolders.caption"}},
        {"frmMain",
         {"mnuOpen.caption", "menuSave.caption", "menuSaveAs.caption", "mnuRecent.caption", "mnuExit.caption"}},
        {"frmMain",
         {"mnuChangeLanguage.caption", "mnuStartSearching.caption", "mnuStartReplacing.caption",
          "mnuImportList.caption", "mnuExportList.caption"}},
        {"frmMain", {"mnuHelp1.caption", "mnuHomePage.caption", "mnuAbout.caption"}},
        {"frmProcessingDocuments",
         {"SSTab1.TabCaption(0)", "SSTab1.TabCaption(1)", "SSTab1.TabCaption(2)", "SSTab1.TabCaption(3)"}},
        {"frmProcessingDocuments",
         {"SSTab1.TabCaption(0)", "SSTab1.TabCaption1(1)", "SSTab1.TabCaption1(2)", "SSTab1.TabCaption1(3)"}},
        {"frmChangeLanguage", {"lblLanguage.caption"}},
    };
    return scopes;
}

/// "section/key" of each caption that has an access key in English.
std::set<std::string> CaptionsWithAccessKey()
{
    std::set<std::string> names;
    for (const Scope& scope : Scopes())
        for (const std::string& key : scope.keys)
            names.insert(LanguageFile::NameOf(scope.section, key));
    return names;
}

}  // namespace

class LanguageFilesTest : public testing::TestWithParam<Language>
{
protected:
    const LanguageFile file_ = FileOf(GetParam().name);
};

TEST_P(LanguageFilesTest, HasExactlyTheKeysThatAreAskedFor)
{
    std::set<std::string> missing;
    for (const LanguageKey& key : test::LanguageKeys())
        missing.insert(LanguageFile::NameOf(key.section, key.key));
    std::vector<std::string> notAskedForOrDoubled;

    for (const LanguageFile::Line& line : file_.Lines())
        if (missing.erase(LanguageFile::NameOf(line.section, line.key)) == 0)
            notAskedForOrDoubled.push_back(line.section + "/" + line.key);

    EXPECT_THAT(missing, IsEmpty());
    EXPECT_THAT(notAskedForOrDoubled, IsEmpty());
    EXPECT_THAT(file_.OddLines(), IsEmpty());
}

TEST_P(LanguageFilesTest, HasWordsWhereWordsAreShown)
{
    const LanguageFile english = FileOf("English");

    for (const LanguageKey& key : test::LanguageKeys()) {
        const std::string value = file_.Value(key.section, key.key);
        const std::string inEnglish = english.Value(key.section, key.key);
        SCOPED_TRACE(key.section + "/" + key.key + "=" + value);
        switch (key.entry) {
            case LanguageEntry::Words:
                EXPECT_NE(value, "");
                break;
            case LanguageEntry::WordsOrNone:
                EXPECT_EQ(value.empty(), inEnglish.empty()) << "in English: " << inEnglish;
                break;
            case LanguageEntry::None:
                EXPECT_EQ(value, "");
                break;
            case LanguageEntry::Separator:
                EXPECT_EQ(value, "-");
                break;
        }
    }
}

TEST_P(LanguageFilesTest, KeepsThePlaceholders)
{
    for (const LanguageKey& key : test::LanguageKeys()) {
        const std::string value = file_.Value(key.section, key.key);
        std::string found;
        for (std::size_t at = value.find('%'); at != std::string::npos; at = value.find('%', at + 1))
            found += value.substr(at + 1, 1);

        std::ranges::sort(found);
        EXPECT_EQ(found, key.placeholders) << key.section << "/" << key.key << "=" << value;
    }
}

TEST_P(LanguageFilesTest, HasAccessKeysWhereEnglishHasThem)
{
    const std::set<std::string> expected = CaptionsWithAccessKey();

    for (const LanguageFile::Line& line : file_.Lines()) {
        const AccessKey found = AccessKeyOf(line.value);
        EXPECT_TRUE(found.isRight) << line.value;
        EXPECT_EQ(!found.key.empty(), expected.contains(LanguageFile::NameOf(line.section, line.key)))
            << line.section << "/" << line.key << "=" << line.value;
    }
}

TEST_P(LanguageFilesTest, GivesCaptionsSeenTogetherDifferentAccessKeys)
{
    for (const Scope& scope : Scopes()) {
        std::set<std::string> used;
        for (const std::string& key : scope.keys) {
            const std::string caption = file_.Value(scope.section, key);
            EXPECT_TRUE(used.insert(AccessKeyOf(caption).key).second) << key << "=" << caption;
        }
    }
}

TEST_P(LanguageFilesTest, FitsTheCodePageAndTheLengthOfWindows)
{
    for (const LanguageFile::Line& line : file_.Lines()) {
        const std::string encoded = Converted(line.value, "UTF-8", GetParam().codePage);
        EXPECT_NE(encoded, "<not in it>") << line.section << "/" << line.key << "=" << line.value;
        EXPECT_LE(encoded.size(), longestText) << line.section << "/" << line.key;
    }
}

TEST_P(LanguageFilesTest, HasNoLeadingSpaces)
{
    for (const LanguageFile::Line& line : file_.Lines())
        EXPECT_FALSE(line.value.starts_with(' ')) << line.section << "/" << line.key << " would lose its end";
}

TEST_P(LanguageFilesTest, IsReadByTheProgramAsItIsWritten)
{
    const ChosenLanguage language(FromUtf8(TESSARINE_PROGRAM_FOLDER), FromUtf8(GetParam().name) + u".lng");

    for (const LanguageKey& key : test::LanguageKeys())
        EXPECT_EQ(ToUtf8(GetLngString(FromUtf8(key.section), FromUtf8(key.key))), file_.Value(key.section, key.key));
}

TEST_P(LanguageFilesTest, HasAnEqualCopyForWindows)
{
    std::string expected;
    for (const char letter : ReadWholeFile(PathIn(TESSARINE_PROGRAM_FOLDER "/Languages", GetParam().name)))
        expected += letter == '\n' ? std::string("\r\n") : std::string(1, letter);

    const std::string copy = ReadWholeFile(PathIn(TESSARINE_WINDOWS_LANGUAGES, GetParam().name));

    EXPECT_EQ(Converted(copy, GetParam().codePage, "UTF-8"), expected);
}

TEST_P(LanguageFilesTest, IsReadInItsCopyForWindows)
{
    const String copy = PathIn(TESSARINE_WINDOWS_LANGUAGES, GetParam().name);

    for (const LanguageKey& key : test::LanguageKeys())
        EXPECT_EQ(ToUtf8(ReadProfileValue(copy, FromUtf8(key.section), FromUtf8(key.key), longestText)),
                  file_.Value(key.section, key.key));
}

INSTANTIATE_TEST_SUITE_P(All, LanguageFilesTest, testing::ValuesIn(languages), [](const auto& instance) {
    std::string name = instance.param.name;
    std::erase_if(name, [](char letter) { return !std::isalnum(static_cast<unsigned char>(letter)); });
    return name;
});

TEST(LanguageFolder, HoldsTheLanguagesAndNothingElse)
{
    const String folder = FromUtf8(TESSARINE_PROGRAM_FOLDER "/Languages");
    std::vector<std::string> names;
    for (const String& path : FilesOfFolder(folder))
        names.push_back(ToUtf8(StringView(path).substr(folder.size() + 1)));

    EXPECT_THAT(names, UnorderedElementsAre("Chinese(Big5).lng", "English.lng", "French.lng", "German.lng",
                                            "Polish.lng", "Russian.lng", "Spanish.lng"));
}

}  // namespace tessarine
