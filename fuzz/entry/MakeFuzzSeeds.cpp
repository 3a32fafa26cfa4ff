// make-fuzz-seeds FOLDER: writes the first inputs of every fuzz target, FOLDER/<target>/<seed>, from the decks that the
// tests share.
#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <string>
#include <string_view>

#include "model/Project.h"
#include "run/BackupRecord.h"
#include "saving/JournalEntries.h"
#include "support/BiffBook.h"
#include "support/BinaryProperties.h"
#include "support/BinarySamples.h"
#include "support/CompoundBuilder.h"
#include "support/CompoundFile.h"
#include "support/Fixtures.h"
#include "support/LittleEndian.h"
#include "support/PackageReader.h"
#include "support/StoredBag.h"
#include "support/TemporaryFolder.h"
#include "support/XlsxBook.h"
#include "WrittenPackage.h"

namespace tessarine::fuzz
{

namespace
{

using test::PackageReader;

/// Larger ones slow the fuzzer down and show it nothing new.
constexpr std::size_t longestSeed = 64u << 10;

class SeedFolder
{
public:
    explicit SeedFolder(std::filesystem::path root) : root_(std::move(root)) {}

    void Write(const std::string& target, const std::string& name, std::string_view bytes) const
    {
        if (bytes.size() > longestSeed)
            return;
        std::filesystem::create_directories(root_ / target);
        std::ofstream file(root_ / target / name, std::ios::binary);
        file.exceptions(std::ios::failbit | std::ios::badbit);
        file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    }

private:
    std::filesystem::path root_;
};

/// The seeds that one deck gives: its parts for the targets that read one kind of part.
void WriteParts(const SeedFolder& seeds, const std::string& deck, const PackageReader& package)
{
    std::string whole, properties;
    for (const test::PackageEntry& entry : package.Entries()) {
        const std::string& name = entry.name;
        const bool isXml = name.ends_with(".xml") || name.ends_with(".rels");
        if (isXml)
            AppendEntry(whole, name, entry.bytes);
        if (name.ends_with(".rels") || name == "[Content_Types].xml" || name.starts_with("docProps/"))
            AppendEntry(properties, name, entry.bytes);
        if (name.ends_with(".rels") || name == "[Content_Types].xml")
            seeds.Write("relationships", deck + '-' + std::filesystem::path(name).filename().string(), entry.bytes);
        if (!name.starts_with("ppt/slides/slide") || !isXml)
            continue;
        const std::string seed = deck + '-' + std::filesystem::path(name).filename().string();
        seeds.Write("xml", seed, entry.bytes);
        std::string slide;
        AppendEntry(slide, "find", "fabrikam");
        AppendEntry(slide, "with", "Contoso\rLtd");
        AppendEntry(slide, "ppt/slides/slide1.xml", entry.bytes);
        const std::string links = "ppt/slides/_rels/" + std::filesystem::path(name).filename().string() + ".rels";
        if (package.Has(links))
            AppendEntry(slide, "ppt/slides/_rels/slide1.xml.rels", package.Entry(links).bytes);
        seeds.Write("slide", seed, slide);
    }
    seeds.Write("presentation", deck, whole);
    seeds.Write("structure", deck, whole);
    seeds.Write("properties", deck, properties);
}

void WriteDecks(const SeedFolder& seeds)
{
    for (const auto& [name, deck] : test::fixtures::ReadableDecks()) {
        const std::string bytes = deck.Bytes();
        seeds.Write("zip", name, bytes);
        WriteParts(seeds, name, bytes);
    }
    for (const auto& [name, bytes] : test::fixtures::UnreadableFiles()) {
        seeds.Write("zip", name, bytes);
        seeds.Write("file_kind", name, bytes);
    }
    seeds.Write("zip", "Empty", {});
}

void WriteBinaryDecks(const SeedFolder& seeds)
{
    using namespace test::ppt;
    const BinaryDeck everything = DeckWithEverything();
    const BinaryDeck small = BinaryDeck().Slide(Title(u"Fabrikam"), TextBox(TextRun(u"Fab").Bold(), u"rikam"));
    const auto write = [&](const std::string& name, const BinaryDeck& deck) {
        seeds.Write("binary_document", name, deck.DocumentStream());
    };
    write("everything", everything);
    write("small", small);
    write("two-edits", BinaryDeck().Slide(Title(u"Fabrikam"), TextBox(u"new")).After(small));
    write("gaps", BinaryDeck(small).PersistStep(2).Junk("junk"));
    write("empty", BinaryDeck());
    seeds.Write("compound", "deck", everything.Bytes());
}

void WriteTexts(const SeedFolder& seeds)
{
    seeds.Write("text_content", "plain", "Contoso\nFabrikam GmbH");
    seeds.Write("text_content", "references", "a < b\na &amp; b &#x41;&#8217; &lt;");
    seeds.Write("text_content", "escapes", "_x000D_\nline_x000B_end_x005F_x000D_");
    seeds.Write("text_content", "cdata", "]]>\n<![CDATA[a & b]]><!-- note -->c\r\nd");
    seeds.Write("text_content", "beyond-ascii", "\xC3\xA9\n\xF0\x9F\x98\x80\xE2\x82\xAC\xFF");
    seeds.Write("hyperlink_address", "web", "https://contoso.example/\nhttps://fabrikam.example/a%20b?c#d");
    seeds.Write("hyperlink_address", "drive", "C:\\Contoso\\a.docx\nfile:///C:\\Fabrikam\\a%20b.docx#Place");
    seeds.Write("hyperlink_address", "server", "\\\\server\\share\\a\nfile:///\\\\old\\share\\a.xlsx!Sheet1!R1C1");
    seeds.Write("hyperlink_address", "relative", "..\\b.pptx\n../a%C3%A9.pptx");
    seeds.Write("hyperlink_address", "mail", "mailto:b@contoso.example\nmailto:a@fabrikam.example?subject=x%23y");
    seeds.Write("pattern", "name", "*.ppt?\nsales.pptx");
    seeds.Write("pattern", "sets", "[A-Z]#[!a-c-]*[]][[]\nQ1zx");
    seeds.Write("values", "number", "-1,234.5E+20");
    seeds.Write("values", "date", "2024-05-06T07:08:09.10+01:00");
    seeds.Write("values", "date-alone", "2024-05-06");
    seeds.Write("profile_text", "caption",
                "frmMain\ncmdAdd.caption\n; a language\n[Global Msg]\n1001=Go on?\n[frmMain]\ncmdAdd.caption=&Add\n");
    seeds.Write("profile_text", "quotes", "frmMain\n106\n[frmMain]\n106 = \"  Open \" \n107='\"'\n106=again\n");
    seeds.Write("profile_text", "mark", "global msg\n1053\n\xEF\xBB\xBF[Global Msg] ; box\r\n1053=\xE8\xAA\x9E %s\r\n");
    seeds.Write("arguments", "replace", "replace\n--find\nFabrikam\n--with\nContoso\n--recurse\n--backup\n.");
    seeds.Write("arguments", "help", "--help");
    seeds.Write("arguments", "list", "find\n--find=x\n--files-from\n-\n--json\n--\na.pptx\r\nb.pptx");
}

void WriteProjects(const SeedFolder& seeds)
{
    const auto saved = [](const ProjectOwner& project) {
        const TemporaryFolder folder;
        String path = folder.PathOf(u"job.tsq");
        project->SaveAsProject(path, true);
        return ContentOf(path);
    };
    const ProjectOwner project;
    seeds.Write("project_file", "empty", saved(project));
    for (const char16_t* text : {u"Fabrikam", u"\xD83D lone", u""})
        project->FindAndReplaceList->Add(text, u"Contoso", std::make_shared<OptionSetting>(), project.get());
    project->CustomProperies->Add(u"FindAndReplaceListSource", u"INTERNAL");
    project->options->FileToProcessFolderPath = u"/décks";
    seeds.Write("project_file", "pairs", saved(project));
    seeds.Write("project_file", "tail", saved(project) + "what an older file has left");
    seeds.Write("project_file", "few-values",
                test::StoredBag({{"FindReplaceItemsCount", 2},
                                 {"Item1InSlides", 1},
                                 {"CustomPropertyCount", 1},
                                 {"Propery1", std::string("a|b|c")}}));
    seeds.Write("project_file", "not-a-bag", "a text file");
}

void WriteRecords(const SeedFolder& seeds)
{
    const FileMark mark{.file = 7, .size = 5000, .lastWrite = {1'700'000'000, 5}};
    const FileEntry file{.path =
                             "/d\xC3\xA9"
                             "cks/a b.pptx",
                         .mark = mark,
                         .mode = 0444,
                         .dates = {{{1, 2}, {3, 4}}}};
    const WriteEntry write{.path = "/a\tb.pptx",
                           .mark = mark,
                           .copy = "/.tessarine-abcdef",
                           .copyMark = mark,
                           .oldBlocks = {1, 2},
                           .newBlocks = {3, 0xFFFFFFFF}};
    const auto asText = [](const JournalFields& fields) {
        std::string text;
        for (const std::string& field : fields)
            text += (text.empty() ? "" : "\t") + field;
        return text + "\n";
    };
    seeds.Write("journal", "file", JournalLine(file.Fields()) + JournalLine(ContentEntry{mark}.Fields()));
    seeds.Write("journal", "write", JournalLine(write.Fields()));
    seeds.Write("journal", "without-checksums", asText(file.Fields()) + asText(ContentEntry{mark}.Fields()));
    seeds.Write("journal", "write-without-checksum", asText(write.Fields()));

    const CopiedContent content{.size = 12345, .checksum = 0xCBF43926};
    seeds.Write("backup_record", "lines",
                LineOf({u"a..bak", u"a.pptx", content}) +
                    LineOf({u"\u00E9 \u05D0.1.bak", u"/x/\u00E9\n.pptx", content}) + "cut");
}

/// A bare stream with some of every record that is read.
std::string WorkbookStream(std::uint32_t version)
{
    using namespace test::biff;
    const bool hasSharedTexts = version == 0x0600;
    const std::string code = hasSharedTexts ? Text("yyyy") : Byte(4) + "yyyy";
    const std::string inCell = hasSharedTexts ? Text("b") : Short(1) + "b";
    BiffBook book(version);
    book.Global(Record(0x0042, Short(1251)))
        .Global(Record(0x0022, Short(1)))
        .Global(Record(0x041E, Short(164) + code))
        .Global(Record(0x00E0, Short(0) + Short(164) + std::string(16, '\0')));
    if (hasSharedTexts)
        book.Global(Sst(2, Text("one") + Short(4) + Byte(13) + Short(1) + Long(2) + Wide(u"ab")) +
                    Record(0x003C, Byte(0) + "cd" + Long(0) + Short(0)));
    book.Cells(Record(0x0200, Long(0) + Long(3) + Short(0) + Short(3) + Short(0)))
        .Cells(Record(0x0203, At(0, 1) + Double(45292)) + Record(0x027E, At(0, 2, 1) + Long(7)))
        .Cells(Record(0x00BD, Short(1) + Short(0) + Short(0) + Long(6) + Short(0) + Long(6) + Short(1)))
        .Cells(Record(0x0205, At(2, 0) + Byte(1) + Byte(0)) + Record(0x0205, At(2, 1) + Byte(7) + Byte(1)))
        .Cells(Record(0x0204, At(3, 0) + inCell) + Record(0x00D6, At(3, 1) + inCell))
        .Cells(Record(0x0006, At(4, 0) + std::string(6, '\0') + Short(0xFFFF) + std::string(8, '\0')))
        .Cells(Record(0x0207, inCell) + Bof(version, 0x0020) + Eof);
    if (hasSharedTexts)
        book.Cells(Record(0x00FD, At(0, 0) + Long(1)));
    return book.Stream();
}

void WriteXlsxBook(const SeedFolder& seeds, const std::string& name, const test::XlsxBook& book)
{
    std::string text;
    for (const auto& [part, bytes] : book.Parts())
        AppendEntry(text, part, bytes);
    seeds.Write("xlsx", name, text);
}

void WriteXlsxBooks(const SeedFolder& seeds)
{
    using test::XlsxBook;
    const std::string texts =
        "<si><t xml:space=\"preserve\"> a_x000D_</t></si><si><r><t>b</t></r><rPh><t>c</t></rPh></si>";
    const std::string styles =
        "<numFmts><numFmt numFmtId=\"164\" formatCode=\"yyyy\"/></numFmts><cellXfs><xf numFmtId=\"0\"/>"
        "<xf numFmtId=\"164\"/></cellXfs>";
    WriteXlsxBook(seeds, "values",
                  XlsxBook().Texts(texts).Styles(styles).Cells(
                      "<c r=\"A1\" t=\"s\"><v>1</v></c><c t=\"s\"><v>0</v></c><c r=\"D1\" s=\"1\"><v>45292</v></c>"
                      "<c t=\"b\"><v>1</v></c><c t=\"e\"><v>#N/A</v></c><c t=\"str\"><f>A1</f><v>b</v></c>"
                      "<c t=\"inlineStr\"><is><t>d</t></is></c><c><f>\"e\"</f><v/></c>"));
    WriteXlsxBook(
        seeds, "strict",
        XlsxBook(test::Strict())
            .Workbook("<workbookPr date1904=\"1\"/><sheets><sheet r:id=\"rId1\"/></sheets>")
            .Rows("<row r=\"2\"><c t=\"d\"><v>2024-01-01T12:00:00</v></c></row><row><c><v>1e3</v></c></row>"));
    WriteXlsxBook(seeds, "no-sheet", XlsxBook().Workbook("<sheets/>"));
}

void WritePairs(const SeedFolder& seeds)
{
    using namespace std::string_view_literals;
    seeds.Write("pairs", "commas", "cFabrikam,Contoso\r\n\"a,\"\"b\",\n");
    seeds.Write("pairs", "options", "tfind\twith\tcase\tword\tin\na\tb\tTRUE\tno\tslides,links\n");
    seeds.Write("pairs", "separator", "csep=;\nwith;find\n\"a\nb\";c\n");
    seeds.Write("pairs", "utf-16",
                "c\xFF\xFE"
                "a\0,\0\x3D\xD8\x00\xDE\n\0"sv);
    seeds.Write("pairs", "arrays", "j[[\"a\",\"b\\u00e9\"],[\"c\"]]");
    seeds.Write(
        "pairs", "objects",
        "j[{\"find\":\"a\",\"with\":\"b\",\"case\":true,\"word\":false,\"in\":[\"all\"]},{\"find\":\"c\",\"in\":"
        "\"notes\"}]");
}

void WriteCompoundFiles(const SeedFolder& seeds)
{
    const auto builder = [] {
        return test::CompoundBuilder()
            .Stream("PowerPoint Document", std::string(4200, 'd'))
            .Stream("Current User", std::string(60, 'u'))
            .Stream("_signatures", "s");
    };
    seeds.Write("compound", "streams", builder().Bytes());
    seeds.Write("compound", "large-sectors", test::CompoundBuilder().LargeSectors().Stream("Small", "x").Bytes());
    seeds.Write("compound", "scattered", builder().Stream("Pictures", std::string(5000, 'p')).Scattered().Bytes());
    seeds.Write("compound", "storages", builder().Stream("Macros/VBA/dir", "code").Storage("Empty").Bytes());
    seeds.Write("compound", "free-sectors", builder().Stream("Empty", "").FreeSectors(3, 'f').Bytes());
    seeds.Write("compound", "of-the-system", test::CompoundFile({{"Storage/Stream", "x"}, {"Workbook", "w"}}));
    seeds.Write("compound", "nothing", test::CompoundBuilder().Bytes());
}

void WriteLists(const SeedFolder& seeds)
{
    using namespace std::string_view_literals;
    WritePairs(seeds);
    WriteXlsxBooks(seeds);
    seeds.Write("workbook", "excel-97-stream", WorkbookStream(0x0600));
    seeds.Write("workbook", "excel-95-stream", WorkbookStream(0x0500));
    seeds.Write("workbook", "excel-97", test::CompoundFile({{"Workbook", WorkbookStream(0x0600)}}));
    seeds.Write("workbook", "excel-95", test::CompoundFile({{"Book", WorkbookStream(0x0500)}}));
    seeds.Write("workbook", "other-document", test::CompoundFile({{"WordDocument", "x"}}));
    seeds.Write("workbook", "web-page", "<html><table><tr><td>Find What</td></tr></table></html>");
    seeds.Write("delimited_text", "plain", "Find What,Replace With,InSlides\r\nFabrikam,Contoso,TRUE\r\n");
    seeds.Write("delimited_text", "quotes", "\"a\"\"b\",\"c,\nd\"\r\"e\"f,\"=\"\"007\"\"\"\n\"open");
    seeds.Write("delimited_text", "values", "sep=;\n007;-1.5;.5;1e3;true;FALSE;50%;1/2;123456789012345678;=1+2;#N/A");
    seeds.Write("delimited_text", "tabs", "a\tb\n\"c\td\"\t\t1\n\n");
    seeds.Write("delimited_text", "utf-8",
                "\xEF\xBB\xBF"
                "caf\xC3\xA9,\xF0\x9F\x98\x80\n");
    seeds.Write("delimited_text", "utf-16",
                "\xFF\xFE"
                "a\0,\0\x3D\xD8\x00\xDE\n\0"sv);
    seeds.Write("delimited_text", "code-page", "caf\xE9,\x80\n");
}

/// The streams of a binary presentation's document properties, and a section with a value of every type.
void WritePropertySets(const SeedFolder& seeds)
{
    using namespace test::little;
    using namespace test::ppt;
    const auto summary = PropertySection()
                             .Put(2, TextValue("Fabrikam"))
                             .Put(4, WideValue(u"Fabrikam"))
                             .Put(10, TimeValue(600'000'000))
                             .Put(12, TimeValue(133594528890000000))
                             .Put(15, NumberValue(7));
    const auto document = PropertySection()
                              .Put(3, TextValue("On-screen Show"))
                              .Put(12, Long(0x100C) + Long(2) + TextValue("Theme") + NumberValue(1))
                              .Put(13, TextsValue({"Arial", "Fabrikam"}))
                              .Put(15, TextValue("Fabrikam"));
    const auto user = [](int codePage) {
        return PropertySection()
            .CodePage(codePage)
            .Named("Client", TextValue("Fabrikam"))
            .Named("Revision", NumberValue(3))
            .Named("_PID_LINKBASE", BlobValue(Wide(u"https://fabrikam.example/")))
            .Named("_PID_HLINKS", BlobValue(Long(0)));
    };
    PropertySection everyType;
    for (std::uint32_t type = 0; type <= 23; ++type)
        everyType.Named("type " + std::to_string(type), Long(type) + LongLong(0x3FF8000000000001) + LongLong(25));
    everyType.Named("type 31", WideValue(u"Fabrikam"))
        .Named("type 64", TimeValue(1))
        .Named("type 71", Long(71) + Long(0));

    seeds.Write("property_set", "summary", PropertySetStream({{SectionKind::Summary, summary}}));
    for (const int codePage : {1252, 932, 1255, 10000, 65001})
        seeds.Write(
            "property_set", "code-page-" + std::to_string(codePage),
            PropertySetStream({{SectionKind::DocumentSummary, document}, {SectionKind::UserDefined, user(codePage)}}));
    seeds.Write("property_set", "utf-16",
                PropertySetStream({{SectionKind::UserDefined,
                                    PropertySection().CodePage(1200).Named(Wide(u"Client"), WideValue(u"Fabrikam"))}}));
    seeds.Write("property_set", "every-type",
                PropertySetStream({{SectionKind::Summary, summary}, {SectionKind::UserDefined, everyType}}));
}

}  // namespace

}  // namespace tessarine::fuzz

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::cerr << "usage: make-fuzz-seeds FOLDER\n";
        return 2;
    }
    try {
        const tessarine::fuzz::SeedFolder seeds(argv[1]);
        tessarine::fuzz::WriteDecks(seeds);
        tessarine::fuzz::WriteBinaryDecks(seeds);
        tessarine::fuzz::WriteTexts(seeds);
        tessarine::fuzz::WriteProjects(seeds);
        tessarine::fuzz::WriteRecords(seeds);
        tessarine::fuzz::WriteLists(seeds);
        tessarine::fuzz::WriteCompoundFiles(seeds);
        tessarine::fuzz::WritePropertySets(seeds);
    } catch (const std::exception& error) {
        std::cerr << "make-fuzz-seeds: " << error.what() << '\n';
        return 1;
    }
    return 0;
}
