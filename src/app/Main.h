#pragma once

#include <functional>
#include <memory>

#include "model/Engines.h"
#include "platform/String.h"

namespace tessarine
{

/// What the program's entry needs of the desktop.
struct Desktop {
    std::function<bool()> IsPreviousInstanceRunning;

    /// Has the shell open a file type with this program: the type's class, its extension without the dot, its
    /// description and its icon ("<program>, <resource number>").
    std::function<void(const String& fileClass, const String& extension, const String& description, const String& icon)>
        RegisterFileType;

    std::function<void()> ShowMainWindow;  ///< Not modally; the window keeps the process alive.

    /// Whether the user has agreed before to work without PowerPoint, and remembers that he does. Called only where
    /// there are both engines.
    std::function<bool()> IsBuiltInEngineAgreed = {};
    std::function<void()> RememberBuiltInEngine = {};
};

/// The program's entry: the data folder, the default project, the language, the file type, PowerPoint, then the main
/// window. What a killed run left behind is put right once the language is known: a message tells how many files,
/// the error log what was done with each. Ends the process by returning without a window: silently when another
/// instance runs or the data folder can't be made, after a message when its path can't be built or PowerPoint can't be
/// started. A failure is logged.
///
/// Where an installed PowerPoint can't be started and there is the built-in engine, the user is asked whether to work
/// with that; once he has agreed he isn't asked or told again. A PowerPoint that can be started is used all the same.
///
/// The process's arguments are not read.
void Main(const Engines& engines, const Desktop& desktop);

/// Starts PowerPoint and shuts it. When that fails, says so (key "1028" for `CannotCreateObject`, "1029" for any other
/// failure) and gives false.
bool IsPowerPointAvailable(const std::shared_ptr<powerpoint::Provider>& provider);

/// Full path of the default project: the state of the main window at its last close.
String DefaultProjectPath();

}  // namespace tessarine
