#pragma once

#include <map>
#include <string>
#include <vector>

#include "support/ZipBuilder.h"

namespace tessarine::test
{

/// The namespaces of a workbook, in both kinds of files.
struct XlsxKind {
    std::string spreadsheet = "http://schemas.openxmlformats.org/spreadsheetml/2006/main";
    std::string relationships = "http://schemas.openxmlformats.org/officeDocument/2006/relationships";
};

/// Those of a Strict file.
inline XlsxKind Strict()
{
    return {"http://purl.oclc.org/ooxml/spreadsheetml/main", "http://purl.oclc.org/ooxml/officeDocument/relationships"};
}

/// Builds the smallest workbook with one worksheet around some markup.
class XlsxBook
{
public:
    explicit XlsxBook(const XlsxKind& kind = {}) : kind_(kind)
    {
        Part("_rels/.rels", Links({{"rId1", "officeDocument", "xl/workbook.xml"}}));
        Workbook("<sheets><sheet name=\"a\" sheetId=\"1\" r:id=\"rId1\"/></sheets>");
        WorkbookLinks({{"rId1", "worksheet", "worksheets/sheet1.xml"},
                       {"rId2", "styles", "styles.xml"},
                       {"rId3", "sharedStrings", "sharedStrings.xml"}});
        Rows("");
        Styles("");
        Texts("");
    }

    struct Link {
        std::string id, kind, target;
    };

    /// Markup inside of the root elements of the parts.
    XlsxBook& Workbook(const std::string& markup) { return Root("xl/workbook.xml", "workbook", markup); }
    XlsxBook& Styles(const std::string& markup) { return Root("xl/styles.xml", "styleSheet", markup); }
    XlsxBook& Texts(const std::string& items) { return Root("xl/sharedStrings.xml", "sst", items); }
    XlsxBook& Rows(const std::string& rows, const std::string& sheet = "sheet1")
    {
        return Root("xl/worksheets/" + sheet + ".xml", "worksheet", "<sheetData>" + rows + "</sheetData>");
    }
    /// The cells of the first row.
    XlsxBook& Cells(const std::string& cells) { return Rows("<row r=\"1\">" + cells + "</row>"); }
    XlsxBook& WorkbookLinks(const std::vector<Link>& links) { return Part("xl/_rels/workbook.xml.rels", Links(links)); }

    /// A whole part, or an entry that is none.
    XlsxBook& Part(const std::string& name, const std::string& bytes)
    {
        parts_[name] = bytes;
        return *this;
    }
    XlsxBook& Without(const std::string& name)
    {
        parts_.erase(name);
        return *this;
    }

    /// The parts by their names.
    const std::map<std::string, std::string>& Parts() const { return parts_; }

    std::string File() const
    {
        ZipBuilder zip;
        for (const auto& [name, bytes] : parts_)
            zip.entries.push_back({.name = name, .bytes = bytes});
        return zip.Bytes();
    }

private:
    XlsxBook& Root(const std::string& part, const std::string& name, const std::string& markup)
    {
        return Part(part, "<x:" + name + " xmlns:x=\"" + kind_.spreadsheet + "\" xmlns=\"" + kind_.spreadsheet +
                              "\" xmlns:r=\"" + kind_.relationships + "\">" + markup + "</x:" + name + ">");
    }

    std::string Links(const std::vector<Link>& links) const
    {
        std::string part = "<Relationships xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\">";
        for (const Link& link : links)
            part += "<Relationship Id=\"" + link.id + "\" Type=\"" + kind_.relationships + "/" + link.kind +
                    "\" Target=\"" + link.target + "\"/>";
        return part + "</Relationships>";
    }

    XlsxKind kind_;
    std::map<std::string, std::string> parts_;
};

}  // namespace tessarine::test
