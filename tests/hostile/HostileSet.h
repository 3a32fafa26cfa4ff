#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace tessarine::test
{

/// One file that somebody might send who wants to take the time or the memory of the program that opens it.
struct HostileFile {
    std::string name;                   ///< Of the test: "Runs64000".
    std::function<std::string()> make;  ///< Gives its bytes.
    std::size_t largestPart = 0;        ///< In bytes, unpacked, where the file itself does not tell it.
    std::string find = "a";
    std::string with = "b";
    std::vector<std::string> alsoFind = {};  ///< Texts of further pairs, which become "c".
    std::size_t changedBytes = 0;            ///< Of all parts that a replacement changes, where they are many.
};

/// All of them: what is slow or large when an engine goes about it simply, each in several sizes; damaged and lying
/// packages; and all that fuzzing has ever found, from this folder ("fuzz/finds").
std::vector<HostileFile> HostileSet(const std::string& findsFolder);

/// Bytes of the largest entry that a zip file's directory tells of.
std::size_t LargestEntry(const std::string& zip);

}  // namespace tessarine::test
