#pragma once

namespace tessarine
{

/// Qt's own words, such as "Yes", "Cancel" and those of its file dialogs, in the language in force
/// (CurrentLanguageFile). Before one is in force, and for one that doesn't come with the program, in that of the user's
/// desktop. Each window that takes its language calls it, and so do questions, which may come before any window; where
/// nothing has changed it does nothing.
void UseLanguageOfQt();

}  // namespace tessarine
