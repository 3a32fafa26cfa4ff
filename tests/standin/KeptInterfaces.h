#pragma once

namespace tessarine::standin
{

/// Keeps the interfaces of automation known to the system's calls for as long as this process has them initialised,
/// with objects that nobody calls. Call it after CoInitializeEx.
///
/// Without it Wine forgets an interface with the last object that has it, and waits then for calls of it that are not
/// quite over. Where the last of them ends in that moment it waits for ever, and the caller with it.
void KeepInterfaces();

}  // namespace tessarine::standin
