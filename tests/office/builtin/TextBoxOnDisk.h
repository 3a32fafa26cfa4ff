#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "DeckOnDisk.h"

/// Text bodies given as XML and read back as XML, so that a test shows the bytes that it is about.
namespace tessarine::test
{

/// Paragraphs, runs and breaks as XML. `properties` are the attributes of a:rPr, which is left out without any.
std::string P(std::string_view content);
std::string R(std::string_view textXml, std::string_view properties = {});
inline const std::string Br = "<a:br/>";

/// Attributes of a:rPr that tell runs apart.
inline const std::string bold = R"(b="1")";
inline const std::string small = R"(sz="900")";

/// How a text is looked for.
struct How {
    std::int32_t after = 0;
    bool matchCase = true;
    bool wholeWords = false;
};

/// A presentation on disk with one slide and one text box on it, whose paragraphs are given.
class TextBoxOnDisk
{
public:
    explicit TextBoxOnDisk(const std::string& paragraphs);

    /// Position of the first hit; 0 when there is none.
    std::int32_t Find(const String& what, How how = {}) const;

    /// Replaces the first hit, saves and closes. Start of the range that comes back; 0 when there was no hit.
    std::int32_t Replace(const String& what, const String& with, How how = {}) const;

    /// The same for a find/replace pair of a run: every hit that the run's walk meets. Gives the run's count.
    std::int32_t ReplaceAll(const String& what, const String& with) const;
    std::int32_t CountAll(const String& what) const;

    /// The paragraphs as they lie on the disk now. Raises std::runtime_error when any other byte of any entry is not
    /// what it was, or the part is not well-formed.
    std::string Paragraphs() const;

    String Text() const;  ///< As the independent reader reads it.

    const DeckOnDisk& File() const { return file_; }

private:
    std::int32_t Run(const String& what, const String& with, bool findOnly) const;

    std::string before_;  // of the slide's bytes, what stands in front of the paragraphs
    std::string behind_;
    PackageReader original_;
    DeckOnDisk file_;
};

/// Paragraphs after the first hit in them is replaced; "<no hit>" when there was none.
std::string Replaced(const std::string& paragraphs, const String& what, const String& with, How how = {});

/// The text that the engine reads from paragraphs, through a footer's text.
String TextReadFrom(const std::string& paragraphs);

}  // namespace tessarine::test
