#pragma once

#include <nlohmann/json.hpp>

#include "engine/Hit.h"
#include "report/FileReport.h"

namespace tessarine::batch
{

struct ReportStyle;

/// Keys keep the order in which they are documented.
using Json = nlohmann::ordered_json;

/// What a report says of a file, as objects with the keys of a report's lines (docs/batch.md), and back.
///
/// An object holds texts as FromUtf8 and ToUtf8 give them, so that the name of a file keeps its bytes, whatever they
/// are, until the object becomes a text.

/// What stands before the hits of a file's line, and what stands after them.
Json HeadOf(const FileReport& file, const ReportStyle& style);
Json TailOf(const FileReport& file, const ReportStyle& style);

/// One hit. `replaces`: it tells what the text becomes.
Json JsonOf(const Hit& hit, bool replaces);

/// Gives an object a key, but not for what doesn't apply or could not be told.
template <class Value>
void PutUnless(Json& object, const char* key, const Value& value, const Value& absent)
{
    if (value != absent)
        object[key] = value;
}

/// The texts, as an array.
Json ArrayOf(const std::vector<String>& texts);

/// A file's line, head and tail together, of a run that replaces or only finds; its hits are read where it has them. A
/// count that isn't there is that of a place that was not searched. Raises `InvalidProcedureCall` for what no report
/// says.
FileReport FileReportFrom(const Json& line, bool replaces);
Hit HitFrom(const Json& json);

}  // namespace tessarine::batch
