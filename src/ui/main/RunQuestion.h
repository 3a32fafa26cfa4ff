#pragma once

#include <cstdint>

#include "platform/Messages.h"

namespace tessarine
{

class Project;

/// The question before a run over the project's FilesToProcess, of which there are `totalFiles`: below the question
/// stands what the run will do, where, with or without backups, and to how many read-only files. The question itself
/// names what a person may want to save first, work in PowerPoint and backups that the run would replace.
Message QuestionBeforeRun(const Project& project, bool replaces, std::int32_t totalFiles);

}  // namespace tessarine
