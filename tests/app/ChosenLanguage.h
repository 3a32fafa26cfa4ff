#pragma once

#include <utility>

#include "app/GlobalState.h"
#include "platform/ProgramFolder.h"

namespace tessarine
{

/// While it lives the program's folder is `programFolder`, so that language files come from "Languages" in it, and the
/// language is the one of `languageFile` ("English.lng").
class ChosenLanguage
{
public:
    ChosenLanguage(const String& programFolder, const String& languageFile)
        : previousFolder_(SetProgramFolder(programFolder)),
          previousFile_(std::exchange(CurrentLanguageFile, languageFile))
    {
    }
    ~ChosenLanguage()
    {
        SetProgramFolder(previousFolder_);
        CurrentLanguageFile = previousFile_;
    }
    ChosenLanguage(const ChosenLanguage&) = delete;
    ChosenLanguage& operator=(const ChosenLanguage&) = delete;

private:
    String previousFolder_;
    String previousFile_;
};

}  // namespace tessarine
