// make-help-project <folder of pages> <output folder>: makes of the help's pages what chmcmd compiles to Help.chm.
//
// Contents and index come from the pages themselves: the contents are the lists of index.html with their headings, and
// the index is the title and the headings of each page. The pages are those that the lists name; one that they leave
// out is refused, because nobody would find it.
//
// The viewer shows pages as Internet Explorer does. So each page asks for the newest one that there is, the picture is
// a bitmap (tessarine.png, which the build puts beside), and the style sheet has its colours in place of names for
// them.
#include <pugixml.hpp>

#include <algorithm>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <map>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

namespace
{

namespace fs = std::filesystem;

struct Entry {
    std::string name;
    std::string target;  ///< A page, with "#" and an anchor where it is a heading inside.
};

struct Chapter {
    std::string name;
    std::vector<Entry> pages;
};

std::string ContentOf(const fs::path& path)
{
    std::ifstream file(path, std::ios::binary);
    if (!file)
        throw std::runtime_error(path.string() + " can't be read");
    return {std::istreambuf_iterator<char>(file), {}};
}

void Write(const fs::path& path, const std::string& content)
{
    std::ofstream file(path, std::ios::binary);
    if (!(file << content).flush())
        throw std::runtime_error(path.string() + " can't be written");
}

void ReplaceAll(std::string& text, const std::string& what, const std::string& with)
{
    for (std::size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + with.size()))
        text.replace(at, what.size(), with);
}

/// A name in contents and index, in one line. They are read in a code page, so that only ASCII is the same for
/// everybody.
std::string NameOf(const pugi::xml_node& node)
{
    std::string name;
    for (const auto& text : node.select_nodes(".//text()"))
        name += text.node().value();
    std::replace(name.begin(), name.end(), '\n', ' ');
    if (name.empty() || std::any_of(name.begin(), name.end(), [](char c) { return c < ' ' || c > '~' || c == '"'; }))
        throw std::runtime_error("\"" + name + "\" can't stand in the contents or in the index");
    ReplaceAll(name, "&", "&amp;");
    ReplaceAll(name, "<", "&lt;");
    return name;
}

class Help
{
public:
    explicit Help(fs::path pages) : folder_(std::move(pages))
    {
        ReadContents();
        for (const Chapter& chapter : chapters_)
            for (const Entry& page : chapter.pages)
                ReadPage(page.target);
        for (const auto& file : fs::directory_iterator(folder_))
            if (file.path().extension() == ".html" && !pages_.contains(file.path().filename().string()))
                throw std::runtime_error(file.path().string() + " is not in the contents");
    }

    void WriteTo(const fs::path& folder) const
    {
        for (const auto& [name, content] : pages_)
            Write(folder / name, content);
        Write(folder / "style.css", StyleSheet());
        Write(folder / "contents.hhc", Contents());
        Write(folder / "index.hhk", Index());
        Write(folder / "help.hhp", Project());
    }

private:
    pugi::xml_document Read(const std::string& page) const
    {
        pugi::xml_document document;
        const auto result = document.load_file((folder_ / page).c_str(), pugi::parse_full | pugi::parse_ws_pcdata);
        if (!result)
            throw std::runtime_error(page + ": " + result.description());
        return document;
    }

    void ReadContents()
    {
        const pugi::xml_document document = Read("index.html");
        title_ = NameOf(document.select_node("//title").node());
        for (const auto& heading : document.select_nodes("//main/h2")) {
            Chapter chapter{NameOf(heading.node()), {}};
            for (const auto& link : heading.node().select_nodes("following-sibling::ul[1]/li/a[1]"))
                chapter.pages.push_back({NameOf(link.node()), link.node().attribute("href").value()});
            chapters_.push_back(chapter);
        }
        KeepPage("index.html", document);
    }

    /// Gives each heading an anchor, so that the index leads to it.
    void ReadPage(const std::string& page)
    {
        pugi::xml_document document = Read(page);
        index_.insert({NameOf(document.select_node("//h1").node()), page});
        int number = 0;
        for (const auto& heading : document.select_nodes("//h2")) {
            const std::string anchor = "heading" + std::to_string(++number);
            heading.node().append_attribute("id") = anchor.c_str();
            std::string target = page;
            target += "#" + anchor;
            index_.insert({NameOf(heading.node()), target});
        }
        KeepPage(page, document);
    }

    void KeepPage(const std::string& page, const pugi::xml_document& document)
    {
        auto head = document.select_node("//head").node();
        auto meta = head.prepend_child("meta");
        meta.append_attribute("http-equiv") = "X-UA-Compatible";
        meta.append_attribute("content") = "IE=edge";

        struct Text : pugi::xml_writer {
            std::string content;
            void write(const void* data, std::size_t size) override
            {
                content.append(static_cast<const char*>(data), size);
            }
        } text;
        document.save(text, "", pugi::format_raw | pugi::format_no_declaration);
        ReplaceAll(text.content, "tessarine.svg", "tessarine.png");
        if (!pages_.emplace(page, text.content).second)
            throw std::runtime_error(page + " is in the contents twice");
    }

    /// The style sheet with the values of its names, the first that is given to each: those of a light desktop.
    std::string StyleSheet() const
    {
        std::string sheet = ContentOf(folder_ / "style.css");
        std::map<std::string, std::string> values;
        for (std::size_t at = sheet.find("    --"); at != std::string::npos; at = sheet.find("    --", at + 1)) {
            const std::size_t colon = sheet.find(": ", at);
            values.emplace(sheet.substr(at + 4, colon - at - 4),
                           sheet.substr(colon + 2, sheet.find(';', colon) - colon - 2));
        }
        for (const auto& [name, value] : values)
            ReplaceAll(sheet, "var(" + name + ")", value);
        if (sheet.find("var(") != std::string::npos)
            throw std::runtime_error("style.css uses a name without a value");
        return sheet;
    }

    static std::string Item(const Entry& entry)
    {
        std::string item = "<li><object type=\"text/sitemap\"><param name=\"Name\" value=\"" + entry.name + "\">";
        if (!entry.target.empty())
            item += "<param name=\"Local\" value=\"" + entry.target + "\">";
        return item + "</object>\n";
    }

    static std::string SiteMap(const std::string& items)
    {
        return "<!DOCTYPE HTML PUBLIC \"-//IETF//DTD HTML//EN\">\n<html><head></head><body>\n<ul>\n" + items +
               "</ul>\n</body></html>\n";
    }

    std::string Contents() const
    {
        std::string items = Item({title_, "index.html"});
        for (const Chapter& chapter : chapters_) {
            items += Item({chapter.name, {}}) + "<ul>\n";
            for (const Entry& page : chapter.pages)
                items += Item(page);
            items += "</ul>\n";
        }
        return SiteMap(items);
    }

    std::string Index() const
    {
        std::string items;
        for (const auto& [name, target] : index_)
            items += Item({name, target});
        return SiteMap(items);
    }

    // No binary index: chmcmd leaves bytes of its memory there, and the viewer reads index.hhk as well.
    // The window: contents, index and search at the left, with buttons to hide them, to go back and forth, and to
    // print.
    std::string Project() const
    {
        std::string project =
            "[OPTIONS]\n"
            "Compatibility=1.1 or later\n"
            "Compiled file=Help.chm\n"
            "Contents file=contents.hhc\n"
            "Index file=index.hhk\n"
            "Default topic=index.html\n"
            "Default Window=main\n"
            "Title=" +
            title_ +
            "\n"
            "Language=0x409 English (United States)\n"
            "Full-text search=Yes\n"
            "Binary TOC=No\n"
            "Binary Index=No\n"
            "\n[WINDOWS]\n"
            "main=\"" +
            title_ +
            "\",\"contents.hhc\",\"index.hhk\",\"index.html\",\"index.html\""
            ",,,,,0x63520,280,0x304e,[80,60,1180,860],,,,,,,0\n"
            "\n[FILES]\n";
        for (const auto& page : pages_)
            project += page.first + "\n";
        return project + "style.css\ntessarine.png\n";
    }

    struct ByName {
        bool operator()(const Entry& a, const Entry& b) const
        {
            return std::tie(a.name, a.target) < std::tie(b.name, b.target);
        }
    };

    fs::path folder_;
    std::string title_;
    std::vector<Chapter> chapters_;
    std::set<Entry, ByName> index_;
    std::map<std::string, std::string> pages_;  // as they are compiled, by name
};

}  // namespace

int main(int count, char* arguments[])
{
    if (count != 3) {
        std::cerr << "usage: make-help-project <folder of pages> <output folder>\n";
        return 2;
    }
    try {
        Help(arguments[1]).WriteTo(arguments[2]);
    } catch (const std::exception& failure) {
        std::cerr << "make-help-project: " << failure.what() << '\n';
        return 1;
    }
    return 0;
}
