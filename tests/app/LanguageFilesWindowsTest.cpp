// The language files in their code pages, as the build lays them beside the executables.
#include <gtest/gtest.h>

#include "app/ChosenLanguage.h"
#include "app/LanguageFile.h"
#include "app/LanguageText.h"
#include "files/Files.h"
#include "support/LanguageKeys.h"

namespace tessarine
{

namespace
{

class LanguageFilesOfWindows : public testing::TestWithParam<const char*>
{
};

}  // namespace

TEST_P(LanguageFilesOfWindows, AreReadInTheirCodePagesWhateverTheSystemsIs)
{
    const String name = FromUtf8(GetParam()) + u".lng";
    const test::LanguageFile source(ReadWholeFile(FromUtf8(TESSARINE_LANGUAGE_SOURCES "/") + name));
    const ChosenLanguage language(FromUtf8(TESSARINE_PROGRAM_FOLDER), name);

    for (const test::LanguageKey& key : test::LanguageKeys())
        EXPECT_EQ(ToUtf8(GetLngString(FromUtf8(key.section), FromUtf8(key.key))), source.Value(key.section, key.key));
}

INSTANTIATE_TEST_SUITE_P(All, LanguageFilesOfWindows,
                         testing::Values("Chinese(Big5)", "English", "French", "German", "Polish", "Russian",
                                         "Spanish"));

}  // namespace tessarine
