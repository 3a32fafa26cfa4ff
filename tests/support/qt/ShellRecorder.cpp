#include "support/qt/ShellRecorder.h"

#include <gtest/gtest.h>

#include <utility>

#include "i18n/QtText.h"
#include "platform/Failure.h"

namespace tessarine
{

namespace
{

template <class Answer>
Answer Next(std::deque<Answer>& answers, const String& title)
{
    if (answers.empty()) {
        ADD_FAILURE() << "a dialog without an answer: " << ToUtf8(title);
        return {};
    }
    Answer answer = std::move(answers.front());
    answers.pop_front();
    return answer;
}

}  // namespace

ShellRecorder::ShellRecorder()
{
    previousFileDialog_ = SetFileDialog([this](const CommonDialog& dialog, bool isSave) -> std::optional<QString> {
        fileDialogs_.push_back({dialog, isSave});
        if (failure_ != 0)
            throw Failure(failure_, u"The dialog could not be shown.");
        const std::optional<String> path = Next(files_, dialog.DialogTitle);
        return path ? std::optional(ToQt(*path)) : std::nullopt;
    });
    previousFolderDialog_ =
        SetFolderDialog([this](QWidget*, const String& startFolder, const String& title, bool includeFiles) {
            folderDialogs_.push_back({startFolder, title, includeFiles});
            return Next(folders_, title);
        });
    previousOpener_ = SetDocumentOpener([this](const String& target) {
        opened_.push_back(target);
        return code_;
    });
    // As where there is none, so that addresses come to the opener.
    previousBrowser_ = SetBrowser([](const String&) { return false; });
    previousHelpViewer_ = SetHelpViewer([this](const String& path) { opened_.push_back(path); });
}

ShellRecorder::~ShellRecorder()
{
    SetFileDialog(previousFileDialog_);
    SetFolderDialog(previousFolderDialog_);
    SetDocumentOpener(previousOpener_);
    SetBrowser(previousBrowser_);
    SetHelpViewer(previousHelpViewer_);
}

}  // namespace tessarine
