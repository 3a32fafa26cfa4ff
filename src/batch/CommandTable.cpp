#include "batch/CommandTable.h"

#include <array>

namespace tessarine::batch
{

namespace
{

/// In the order of Command.
constexpr std::array<CommandRow, 9> commandRows{{
    {"find", "--find TEXT ... PATH ...", "Look for texts; no file is changed.",
     "Looks for texts in presentations and reports where they occur. No file is changed.\n",
     "  tessarine-batch find --find Fabrikam decks\n"
     "      every presentation of the folder \"decks\"\n"
     "  tessarine-batch find --find \"Fabrikam\" --find \"Contoso\" -s -r decks\n"
     "      two texts at once, subfolders too\n"
     "  tessarine-batch find --find Fabrikam --show decks\n"
     "      each hit with its place and the text around it\n"
     "  tessarine-batch find --find intranet.example --in hyperlinks,links --format json decks\n"
     "      link addresses only, as JSON for another program\n"},
    {"replace", "--find TEXT --with TEXT ... PATH ...", "Replace texts and save the files.",
     "Replaces texts in presentations. Each file is saved all or nothing: an interrupted run\n"
     "leaves the old file or the new one.\n",
     "  tessarine-batch replace --find Fabrikam --with Contoso --backup decks\n"
     "      with a copy of each file beside it\n"
     "  tessarine-batch replace --find Fabrikam --with Contoso -n --show decks\n"
     "      what would become of each text; no file is changed\n"
     "  tessarine-batch replace --find 2023 --with 2024 --find Q1 --with Q2 --whole-word q1.pptx\n"
     "      two pairs, one after the other, in one file\n"
     "  tessarine-batch replace --find old.example --with new.example --in hyperlinks decks\n"
     "      the addresses of links\n"
     "  tessarine-batch replace --find draft --with final --keep-date --files-from list.txt\n"
     "      the files that a list names; they keep their dates\n"
     "  tessarine-batch replace --list pairs.xls decks\n"
     "      the pairs of a workbook, each with its own places and switches\n"
     "  some-program | tessarine-batch replace --pairs - decks\n"
     "      pairs from another program: find and new text, with a tab or a comma between them\n"},
    {"restore", "PATH ...", "Copy backups back over their files.",
     "Copies the backups that \"replace --backup\" made back over their files. The backups stay.\n",
     "  tessarine-batch restore decks\n"
     "  tessarine-batch restore --recurse --format json decks\n"},
    {"clean", "PATH ...", "Delete the backups of files.",
     "Deletes the backups that \"replace --backup\" made of the files. The files stay.\n",
     "  tessarine-batch clean --recurse decks\n"},
    {"run", "JOB.tsq [PATH ...]", "Run a saved job.",
     "Runs a job that was saved on the desktop or by \"job make\": its pairs, over its files, with its\n"
     "options. Without --replace it only finds. PATHs take the place of the job's folder or list.\n",
     "  tessarine-batch run rename.tsq\n"
     "      look what the job would find\n"
     "  tessarine-batch run rename.tsq --replace --dry-run --show\n"
     "      look what it would replace\n"
     "  tessarine-batch run rename.tsq --replace\n"
     "      do it\n"
     "  tessarine-batch run rename.tsq --replace /srv/decks\n"
     "      the job of a desktop over a folder of this machine\n"},
    {"job show", "JOB.tsq", "Show what a saved job would do.",
     "Shows the pairs, the files and the options of a saved job. No presentation is opened.\n",
     "  tessarine-batch job show rename.tsq\n"
     "  tessarine-batch job show rename.tsq --format json\n"},
    {"job make", "--find TEXT --with TEXT ... -o JOB.tsq PATH", "Save a job for later, or for the desktop.",
     "Saves a job as a project file, which \"run\" and the desktop take. The options are those of\n"
     "\"replace\". A job has one folder, or one list of files (--files-from, a .txt file), and takes\n"
     "the presentations (*.ppt*) in it; paths are saved in full.\n",
     "  tessarine-batch job make --find Fabrikam --with Contoso --backup -o rename.tsq decks\n"
     "  tessarine-batch job make --find 2023 --with 2024 -o year.tsq --files-from list.txt\n"},
    {"list convert", "IN OUT", "Write a list file in another format.",
     "Reads a list of pairs and writes it in the format that the name of OUT asks for: .xlsx, .xls,\n"
     ".csv or .tab, or plain pairs as --pairs takes them: .tsv or .json. IN may be any of these, and a\n"
     ".csv, .xlsx or .xls of two columns. An older OUT is replaced. A .tab file can't hold tabs and\n"
     "line ends in its texts; when OUT does not read back as the list that was written, the exit\n"
     "status is 1.\n"
     "A list is a table with a first row of these 18 headers; all but two columns hold TRUE or FALSE:\n"
     "  Find What, Replace With, InBuiltinProperty, InCustomProperties, InFooter, InHandoutMaster,\n"
     "  InHeader, InHyperlinkAddresses, InLinks, InNotes, InNotesMaster, InShapesAndTextboxes,\n"
     "  InSlideMasterPerPresentation, InSlideMasterPerSlide, InSlides, InTitleMaster, MatchCase,\n"
     "  MatchWholeWord\n",
     "  tessarine-batch list convert pairs.xls pairs.csv\n"
     "  tessarine-batch list convert pairs.csv \"For the desktop.xls\"\n"},
    {"report merge", "REPORT.json ...", "Make one report of several.",
     "Makes one report of those that shards (--shard) or other runs have printed in JSON: the files\n"
     "of shards in the order of the whole job, as one run would tell them. What is missing, and what is\n"
     "there twice, is told, and the exit status is 1 then; of a shard that was killed and ran again\n"
     "the whole report counts.\n",
     "  tessarine-batch report merge shard-1.json shard-2.json shard-3.json\n"
     "  tessarine-batch report merge --show --report all.html shard-*.json\n"},
}};

}  // namespace

std::span<const CommandRow> CommandTable()
{
    return commandRows;
}

const CommandRow& RowOf(Command command)
{
    return commandRows[static_cast<std::size_t>(command)];
}

std::string_view NameOf(Command command)
{
    return RowOf(command).name;
}

}  // namespace tessarine::batch
