#pragma once

#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>

/// What a run and its workers say to each other: messages of bytes, each after its length.
///
/// To a worker go the content of standard input, which may be empty, then the path of one file at a time. A worker says
/// objects, packed as CBOR (RFC 8949), whose one key tells what they are:
///
///   ready    the job as the worker understands it; it waits for the first file
///   refused  why it can't work; it ends
///   note     a line for the user
///   begun    it is at the file now, which may have been touched from here on
///   hit      one hit of that file
///   file     what became of it, which is the answer to its path
namespace tessarine::batch
{

/// Fills the bytes whole; false when no more come.
using ReadBytes = std::function<bool(std::span<char> bytes)>;

/// A message as it goes through a pipe.
std::string Framed(std::string_view message);

/// The next message. Nothing at the end, which may come in the middle of one, and for what can't be a message.
std::optional<std::string> ReadMessage(const ReadBytes& read);

}  // namespace tessarine::batch
