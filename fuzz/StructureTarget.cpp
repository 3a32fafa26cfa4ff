// Packages whose structure is changed and not their bytes: a mutator of its own moves elements, attributes, entities,
// relationships and whole parts about, so that nearly every case is a package that opens.
//
// A find leaves the file as it is. A replace is refused, and the file is as it was; or it gives a file that the engine
// reads with the texts that were put, and that libzip and pugixml read as they have read the old one.
#include <algorithm>
#include <array>
#include <cstdint>
#include <fstream>
#include <iterator>
#include <map>
#include <memory>
#include <pugixml.hpp>
#include <random>
#include <span>
#include <stdexcept>
#include <string>
#include <vector>

#include "log/ErrorLog.h"
#include "office/builtin/presentation/PresentationFile.h"
#include "platform/Failure.h"
#include "Require.h"
#include "support/PackageReader.h"
#include "support/TemporaryFolder.h"
#include "WrittenPackage.h"

namespace tessarine::fuzz
{

namespace
{

using Entries = std::vector<std::pair<std::string, std::string>>;

/// A piece of a text, begin and end.
using Piece = std::pair<std::size_t, std::size_t>;

Entries EntriesOf(std::string_view text)
{
    Entries entries;
    const test::PackageReader package(WrittenPackage(text).ZipBytes());
    for (const auto& entry : package.Entries())
        entries.emplace_back(entry.name, entry.bytes);
    return entries;
}

class Mutation
{
public:
    explicit Mutation(unsigned seed) : random_(seed) {}

    std::string Of(std::string_view text)
    {
        Entries entries = EntriesOf(text);
        if (entries.empty())
            return std::string(text);
        for (std::size_t left = 1 + Below(3); left > 0; --left)
            Change(entries);
        std::string changed;
        for (const auto& [name, content] : entries)
            AppendEntry(changed, name, content);
        return changed;
    }

private:
    std::size_t Below(std::size_t end) { return end == 0 ? 0 : random_() % end; }

    void Change(Entries& entries)
    {
        std::string& part = entries[Below(entries.size())].second;
        std::string& other = entries[Below(entries.size())].second;
        switch (Below(9)) {
            case 0:
                std::swap(part, other);
                break;
            case 1:
                CopyPiece(part, Elements(part), other, Elements(other));
                break;
            case 2:
                CopyPiece(part, Elements(part), part, Elements(part));
                break;
            case 3:
                CopyPiece(part, Attributes(part), other, Attributes(other));
                break;
            case 4:
                CopyPiece(part, Values(part), other, Values(other));
                break;
            case 5:
                Cut(part, Elements(part));
                break;
            case 6:
                Cut(part, Attributes(part));
                break;
            case 7:
                Write(part, Texts(part));
                break;
            default:
                Write(part, Values(part));
        }
    }

    /// Elements without elements in them, and those around one.
    static std::vector<Piece> Elements(const std::string& xml)
    {
        std::vector<Piece> pieces;
        std::vector<std::size_t> open;
        for (std::size_t at = xml.find('<'); at != std::string::npos; at = xml.find('<', at + 1)) {
            const std::size_t end = xml.find('>', at);
            if (end == std::string::npos)
                break;
            if (xml[at + 1] == '/') {
                if (!open.empty()) {
                    pieces.emplace_back(open.back(), end + 1);
                    open.pop_back();
                }
            } else if (xml[end - 1] == '/') {
                pieces.emplace_back(at, end + 1);
            } else if (xml[at + 1] != '?' && xml[at + 1] != '!') {
                open.push_back(at);
            }
        }
        return pieces;
    }

    static std::vector<Piece> Attributes(const std::string& xml)
    {
        std::vector<Piece> pieces;
        for (std::size_t at = xml.find("=\""); at != std::string::npos; at = xml.find("=\"", at + 2)) {
            const std::size_t begin = xml.rfind(' ', at);
            const std::size_t end = xml.find('"', at + 2);
            if (begin != std::string::npos && end != std::string::npos)
                pieces.emplace_back(begin, end + 1);
        }
        return pieces;
    }

    static std::vector<Piece> Values(const std::string& xml)
    {
        std::vector<Piece> pieces;
        for (std::size_t at = xml.find("=\""); at != std::string::npos; at = xml.find("=\"", at + 2))
            if (const std::size_t end = xml.find('"', at + 2); end != std::string::npos)
                pieces.emplace_back(at + 2, end);
        return pieces;
    }

    static std::vector<Piece> Texts(const std::string& xml)
    {
        std::vector<Piece> pieces;
        for (std::size_t at = xml.find('>'); at != std::string::npos; at = xml.find('>', at + 1))
            if (const std::size_t end = xml.find('<', at); end != std::string::npos && end > at + 1)
                pieces.emplace_back(at + 1, end);
        return pieces;
    }

    void CopyPiece(const std::string& from, const std::vector<Piece>& pieces, std::string& to,
                   const std::vector<Piece>& places)
    {
        constexpr std::size_t longest = 1u << 18;
        if (pieces.empty() || places.empty() || to.size() > longest)
            return;
        const Piece piece = pieces[Below(pieces.size())];
        const Piece place = places[Below(places.size())];
        const std::string text = from.substr(piece.first, piece.second - piece.first);
        // In front of it, or in its place.
        to.replace(place.first, Below(2) == 0 ? 0 : place.second - place.first, text);
    }

    void Cut(std::string& text, const std::vector<Piece>& pieces)
    {
        if (pieces.empty())
            return;
        const Piece piece = pieces[Below(pieces.size())];
        text.erase(piece.first, piece.second - piece.first);
    }

    /// Puts something of a meaning of its own somewhere into one of the pieces.
    void Write(std::string& text, const std::vector<Piece>& pieces)
    {
        static constexpr std::array<std::string_view, 16> words{"&#97;",
                                                                "&amp;",
                                                                "_x000B_",
                                                                "_x005F_",
                                                                "_x00",
                                                                "0B_",
                                                                "<![CDATA[a]]>",
                                                                "<!-- a -->",
                                                                "]]&gt;",
                                                                "a",
                                                                "\xC3\xA4",
                                                                "\r\n",
                                                                "&#xD;",
                                                                "&#x1F600;",
                                                                "A",
                                                                "../slides/slide1.xml"};
        if (pieces.empty())
            return;
        const Piece piece = pieces[Below(pieces.size())];
        text.insert(piece.first + Below(piece.second - piece.first + 1), words[Below(words.size())]);
    }

    std::minstd_rand random_;
};

std::string BytesOf(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// What pugixml and libzip make of a package: the names of its parts and whether each is XML.
std::map<std::string, bool> PartsOf(const std::string& zip)
{
    std::map<std::string, bool> parts;
    const test::PackageReader package(zip);
    for (const auto& entry : package.Entries())
        parts[entry.name] = static_cast<bool>(pugi::xml_document().load_buffer(entry.bytes.data(), entry.bytes.size()));
    return parts;
}

/// Calls `visit(page)` with each slide, master, title master and notes page there is.
template <class Visit>
void ForEachPage(builtin::PresentationFile& file, Visit&& visit)
{
    for (std::size_t slide = 0; slide < file.SlideCount(); ++slide) {
        visit(file.Slide(slide));
        if (builtin::PageReader* const notes = file.NotesPage(slide))
            visit(*notes);
    }
    for (std::size_t design = 0; design < file.DesignCount(); ++design)
        visit(file.SlideMaster(design));
}

void FindAndReplace(std::string_view input)
{
    static const TemporaryFolder folder;
    static const String path = folder.PathOf(u"structure.pptx");
    ApplicationDataFolder = folder.PathOf(u"none");  // there is no such folder, so that the error log does not grow
    const std::string zip = WrittenPackage(input).ZipBytes();
    std::ofstream(ToUtf8(path), std::ios::binary) << zip;

    const builtin::SoughtText sought(u"a");
    const builtin::TextPattern pattern(sought, false, false);
    builtin::PresentationFile file(BytesInMemory(std::as_bytes(std::span(zip))), builtin::Limits::Small());
    ForEachPage(file, [&](builtin::PageReader& page) {
        for (std::size_t shape = 0; shape < page.ShapeCount(); ++shape)
            page.FindText(shape, pattern, 0);
        for (const std::size_t link : page.HyperlinkIndices())
            page.HyperlinkAddress(link);
    });
    file.Save(path);
    Require(BytesOf(ToUtf8(path)) == zip, "a find leaves the file as it is");

    bool isChanged = false;
    try {
        ForEachPage(file, [&](builtin::PageReader& page) {
            constexpr std::size_t mostHits = 50;
            std::size_t hits = 0;
            for (std::size_t shape = 0; shape < page.ShapeCount(); ++shape)
                for (auto hit = page.FindText(shape, pattern, 0); hit && hits++ < mostHits;
                     hit = page.FindText(shape, pattern, *hit + 1)) {
                    page.ReplaceText(shape, *hit, 1, hits % 3 == 0 ? u"" : u"x\ry");
                    isChanged = true;
                }
        });
        file.Save(path);
    } catch (const Failure&) {
        Require(BytesOf(ToUtf8(path)) == zip, "a replace that is refused leaves the file as it is");
        return;
    }
    if (!isChanged)
        return;
    const std::string saved = BytesOf(ToUtf8(path));
    const std::map<std::string, bool> before = PartsOf(zip);
    for (const auto& [name, isXml] : PartsOf(saved))
        Require(isXml || !before.contains(name) || !before.at(name), "a part that was XML still is");
    try {
        builtin::PresentationFile again(BytesInMemory(std::as_bytes(std::span(saved))), builtin::Limits::Small());
        std::vector<std::size_t> counts;
        ForEachPage(again, [&](builtin::PageReader& page) { counts.push_back(page.ShapeCount()); });
        std::size_t number = 0;
        ForEachPage(file, [&](builtin::PageReader& page) {
            Require(page.ShapeCount() == counts.at(number++), "the shapes stay");
        });
    } catch (const Failure& failure) {
        Require(false, failure.what());
    }
}

}  // namespace

}  // namespace tessarine::fuzz

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t maxSize, unsigned seed)
{
    try {
        const std::string changed = tessarine::fuzz::Mutation(seed).Of({reinterpret_cast<const char*>(data), size});
        if (changed.size() > maxSize)
            return size;
        std::ranges::copy(changed, data);
        return changed.size();
    } catch (const std::exception&) {
        return size;
    }
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    try {
        tessarine::fuzz::FindAndReplace({reinterpret_cast<const char*>(data), size});
    } catch (const tessarine::Failure&) {
    } catch (const std::runtime_error&) {
    }  // refusing is a good answer, and so is a package that libzip can't read; all else is a find
    return 0;
}
