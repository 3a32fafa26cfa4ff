#pragma once

#include <cstdint>
#include <functional>

#include "engine/Hit.h"
#include "model/SearchLocations.h"
#include "platform/String.h"
#include "report/HitText.h"

namespace tessarine
{

/// All words of a report that don't come from the run. English; a program with windows hands in those of its language.
/// `%d` and `%i` stand for numbers (WithNumbers).
struct ReportWords {
    String language = u"en";  ///< As web pages name it (BCP 47).

    // The kinds of run, as titles.
    String findTitle = u"Search report";
    String replaceTitle = u"Replacement report";
    String dryRunTitle = u"Dry run report";

    // What a reader must know first.
    String dryRun = u"Nothing was saved: this is what a replacement would do.";
    String cancelled = u"The run was cancelled. Files that were not processed: %d";
    String brokenOff = u"A failure ended the run early. Files that were not processed: %d";
    String pageIsFull = u"This page lists the first %d hits. A report in the form of a table (.csv) lists them all.";

    // Facts of the run.
    String started = u"Started";
    String duration = u"Duration";
    String project = u"Project";
    String engine = u"Engine";
    String builtIn = u"built-in";
    String occurrences = u"Occurrences";

    // What became of a file, and the number of such files.
    String found = u"Found";
    String nothingFound = u"Nothing found";
    String changed = u"Changed";
    String wouldChange = u"Would change";
    String countedOnly = u"Counted, nothing could be changed";
    String unchanged = u"Unchanged";
    String failed = u"Failed";
    String notProcessed = u"Not processed";  ///< Because the run ended before.

    // Headings and columns.
    String failures = u"Failed files";
    String pairs = u"Pairs";
    String files = u"Files";
    String file = u"File";
    String state = u"State";
    String reason = u"Reason";
    String number = u"No.";
    String find = u"Find";
    String replaceWith = u"Replace with";
    String places = u"Places";
    String place = u"Place";
    String slide = u"Slide";
    String slideTitle = u"Slide title";
    String design = u"Design";
    String property = u"Property";
    String hyperlink = u"Hyperlink";
    String shape = u"Shape";
    String shapeName = u"Shape name";
    String paragraph = u"Paragraph";
    String position = u"Position";
    String length = u"Length";
    String before = u"Before";
    String hit = u"Hit";
    String after = u"After";
    String becomes = u"Becomes";
    String note = u"Note";

    // About hits and pairs.
    String nowhere = u"nowhere";            ///< In place of the places of a pair that occurs in no file.
    String notCounted = u"not counted";     ///< Of a hit that the counts leave out.
    String notChanged = u"stays as it is";  ///< Of a hit that a replace run could not change.
    String header = u"header";              ///< Which of the two a hit stands in.
    String footer = u"footer";
    String furtherHits = u"Further hits, not listed: %d";
    String otherPairs = u"Pairs without a hit: %d";
    String warning = u"Warning";

    // What the page's reader can do.
    String filter = u"Filter";
    String filterTip = u"Words of names, pairs and texts";
    String onlyWithHits = u"Only files with hits";
    String expand = u"Expand all";
    String collapse = u"Collapse all";
    String shown = u"Files shown: %d of %i";

    /// Where a hit stands, on one line: slide, shape and so on.
    std::function<String(const Hit& hit)> placeOf = PlaceText;

    /// What a location is called. At first as on the command line.
    std::function<String(Location location)> nameOf = NameOnCommandLine;

    static String NameOnCommandLine(Location location);
};

/// A text with a number in place of its "%d", and another one in place of its "%i".
String WithNumbers(String text, std::int64_t d, std::int64_t i = 0);

}  // namespace tessarine
