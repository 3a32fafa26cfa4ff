#pragma once

namespace tessarine
{

/// What is wrong with the content of a file that is to be a project.
enum class ProjectFault {
    OtherKind,     ///< It is no project, whatever its name.
    OtherVersion,  ///< It is a project in a form that this program does not know.
    Cut,           ///< Its end is missing.
    Damaged,
};

}  // namespace tessarine
