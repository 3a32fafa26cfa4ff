#pragma once

// The one way to the headers of Windows, for files that end in "Windows.cpp" and for private headers of theirs: what
// those headers define as macros would rename functions of our own.
#ifdef _WIN32

#include <windows.h>

#undef CopyFile
#undef CreateDirectory
#undef CreateFile
#undef DeleteFile
#undef FindText
#undef GetCurrentTime
#undef GetFileAttributes
#undef GetMessage
#undef GetObject
#undef MessageBox
#undef MoveFile
#undef RemoveDirectory
#undef ReplaceFile
#undef ReplaceText
#undef Yield

#endif
