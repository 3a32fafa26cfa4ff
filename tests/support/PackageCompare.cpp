#include "support/PackageCompare.h"

#include <algorithm>
#include <ostream>

#include "support/MarkupTokens.h"
#include "support/TextAlignment.h"

namespace tessarine::test
{
namespace
{

std::string WithSlashes(std::string_view name)
{
    std::string slashes(name);
    std::ranges::replace(slashes, '\\', '/');
    return slashes;
}

bool IsDrawing(const std::string& name)
{
    static const std::vector<std::string> folders = {"/slides/",       "/notesSlides/",  "/slideLayouts/",
                                                     "/slideMasters/", "/notesMasters/", "/handoutMasters/"};
    return std::ranges::any_of(folders,
                               [&](const std::string& folder) { return name.find(folder) != std::string::npos; });
}

bool IsProperties(const std::string& name)
{
    return name.starts_with("docProps/") && name.ends_with(".xml");
}

/// UTF-16 parts are compared as UTF-8, so that offsets mean characters of one byte.
std::string AsUtf8(std::string_view bytes)
{
    const bool little = bytes.starts_with("\xFF\xFE");
    if (!little && !bytes.starts_with("\xFE\xFF"))
        return std::string(bytes);
    String units;
    for (std::size_t i = 2; i + 1 < bytes.size(); i += 2) {
        const auto first = static_cast<unsigned char>(bytes[i]);
        const auto second = static_cast<unsigned char>(bytes[i + 1]);
        units += static_cast<char16_t>(little ? first | second << 8 : first << 8 | second);
    }
    return ToUtf8(units);
}

std::vector<Difference> ByteDifferences(std::string_view before, std::string_view after)
{
    if (before == after)
        return {};
    const auto same = static_cast<std::size_t>(std::ranges::mismatch(before, after).in1 - before.begin());
    return {DifferenceAt(before, same, after, same, "no replacement reaches this entry")};
}

std::size_t OffsetIn(std::string_view part, std::string_view view)
{
    return static_cast<std::size_t>(view.data() - part.data());
}

std::vector<Difference> RelationshipDifferences(std::string_view before, std::string_view after,
                                                const std::vector<Replacement>& replacements)
{
    const std::vector<Token> left = TokensOf(before);
    const std::vector<Token> right = TokensOf(after);
    const auto comesFrom = [&](const Token& one, const Token& other) {
        return one.name == "Relationship" && other.name == "Relationship" &&
               AttributeOf(one.bytes, "Type") == AttributeOf(other.bytes, "Type") &&
               AttributeOf(one.bytes, "TargetMode") == AttributeOf(other.bytes, "TargetMode") &&
               TargetComesFrom(AttributeOf(one.bytes, "Target"), AttributeOf(other.bytes, "Target"), replacements);
    };
    std::size_t j = 0;
    for (const Token& token : left) {
        const bool isEnd = token.kind == Token::Kind::End && token.name == "Relationships";
        while (isEnd && j < right.size() && right[j].name == "Relationship" &&
               std::ranges::any_of(left, [&](const Token& each) { return comesFrom(each, right[j]); }))
            ++j;
        const std::string_view other = j < right.size() ? right[j].bytes : after.substr(after.size());
        const bool targetChanged = j < right.size() && comesFrom(token, right[j]) &&
                                   WithoutAttributes(token.bytes, {"Target"}) == WithoutAttributes(other, {"Target"});
        if (token.bytes != other && !targetChanged) {
            return {DifferenceAt(before, OffsetIn(before, token.bytes), after, OffsetIn(after, other),
                                 "the relationship differs in more than a replaced target")};
        }
        ++j;
    }
    if (j < right.size())
        return {DifferenceAt(before, before.size(), after, OffsetIn(after, right[j].bytes), "something follows")};
    return {};
}

/// An element without child elements, or any other piece of markup.
struct Leaf {
    std::string_view tag;
    std::string_view name;
    String text;
    bool isLeaf = false;
};

std::vector<Leaf> LeavesOf(std::string_view part)
{
    const std::vector<Token> tokens = TokensOf(part);
    std::vector<Leaf> leaves;
    for (std::size_t i = 0; i < tokens.size();) {
        const Token& token = tokens[i];
        std::size_t end = i + 1;
        std::string content;
        if (token.kind == Token::Kind::Start) {
            while (tokens.at(end).name.empty())
                content += tokens[end++].bytes;
        }
        const bool isLeaf = token.kind == Token::Kind::Empty ||
                            (token.kind == Token::Kind::Start && tokens.at(end).kind == Token::Kind::End);
        leaves.push_back({token.bytes, token.name, {}, isLeaf});
        if (isLeaf && token.kind == Token::Kind::Start) {
            leaves.back().text = TextOfCharacters(CharactersOf(content));
            i = end + 1;
        } else {
            ++i;
        }
    }
    return leaves;
}

std::vector<Difference> PropertyDifferences(std::string_view before, std::string_view after, bool kindsMayChange,
                                            const std::vector<Replacement>& replacements)
{
    const std::vector<Leaf> left = LeavesOf(before);
    const std::vector<Leaf> right = LeavesOf(after);
    std::vector<Difference> differences;
    for (std::size_t i = 0; i < std::max(left.size(), right.size()); ++i) {
        if (i >= left.size() || i >= right.size()) {
            differences.push_back(
                DifferenceAt(before, before.size(), after, after.size(), "the number of elements differs"));
            break;
        }
        const Leaf& one = left[i];
        const Leaf& other = right[i];
        const auto report = [&](std::string reason) {
            differences.push_back(
                DifferenceAt(before, OffsetIn(before, one.tag), after, OffsetIn(after, other.tag), std::move(reason)));
        };
        const auto hits = HitsBetween(one.text, other.text, replacements);
        const bool replaced = hits && !hits->empty();
        const bool sameLeaf = one.isLeaf && other.isLeaf && (one.name == other.name || kindsMayChange);
        if (one.tag != other.tag && !(sameLeaf && replaced))
            report("the element differs");
        else if (!hits)
            report("no replacement makes \"" + ToUtf8(other.text) + "\" of \"" + ToUtf8(one.text) + "\"");
    }
    return differences;
}

void CompareHeaders(const PackageEntry& before, const PackageEntry& after, std::vector<Difference>& differences)
{
    const auto report = [&](std::string reason, std::string one, std::string other) {
        differences.push_back({before.name, 0, std::move(one), std::move(other), std::move(reason)});
    };
    const auto number = [](std::uint64_t value) { return std::to_string(value); };
    if (before.modified != after.modified)
        report("date and time differ", number(before.modified.date) + " " + number(before.modified.time),
               number(after.modified.date) + " " + number(after.modified.time));
    if (before.externalAttributes != after.externalAttributes)
        report("attributes differ", number(before.externalAttributes), number(after.externalAttributes));
    if (before.extraField != after.extraField)
        report("extra fields differ", before.extraField, after.extraField);
    if (before.comment != after.comment)
        report("comments differ", before.comment, after.comment);
    if (before.method != after.method)
        report("compression methods differ", number(before.method), number(after.method));
    if (before.bytes == after.bytes && before.packed != after.packed)
        differences.push_back(ByteDifferences(before.packed, after.packed).front());
}

/// Printable bytes as they are, others as \xHH.
std::string Shown(const std::string& bytes)
{
    static constexpr std::string_view digits = "0123456789ABCDEF";
    std::string shown;
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte >= 0x20 && byte < 0x7F)
            shown += c;
        else
            shown.append("\\x").append(1, digits[byte >> 4]).append(1, digits[byte & 0xF]);
    }
    return shown;
}

}  // namespace

void PrintTo(const Difference& difference, std::ostream* out)
{
    *out << difference.entry << " at byte " << difference.offset << ": " << difference.reason
         << "\n    before: " << Shown(difference.before) << "\n    after:  " << Shown(difference.after);
}

std::vector<std::string> EntriesThatDiffer(const PackageReader& before, const PackageReader& after)
{
    std::vector<std::string> names;
    for (const PackageEntry& entry : before.Entries()) {
        if (!after.Has(entry.name) || after.Entry(entry.name).bytes != before.Entry(entry.name).bytes)
            names.push_back(entry.name);
    }
    for (const PackageEntry& entry : after.Entries()) {
        if (!before.Has(entry.name))
            names.push_back(entry.name);
    }
    return names;
}

std::vector<Difference> PackagingDifferences(const PackageReader& before, const PackageReader& after)
{
    std::vector<Difference> differences;
    const std::size_t count = std::min(before.Entries().size(), after.Entries().size());
    for (std::size_t i = 0; i < count; ++i) {
        const PackageEntry& one = before.Entries()[i];
        const PackageEntry& other = after.Entries()[i];
        if (one.name != other.name) {
            differences.push_back({one.name, 0, one.name, other.name, "the order or a name differs"});
            return differences;
        }
        CompareHeaders(one, other, differences);
    }
    for (const PackageReader* longer : {&before, &after}) {
        for (std::size_t i = count; i < longer->Entries().size(); ++i) {
            const std::string& name = longer->Entries()[i].name;
            const bool lost = longer == &before;
            differences.push_back(
                {name, 0, lost ? name : "", lost ? "" : name, lost ? "the entry is lost" : "a new entry"});
        }
    }
    return differences;
}

std::vector<Difference> UnexpectedDifferencesIn(const std::string& entry, std::string_view before,
                                                std::string_view after, const std::vector<Replacement>& replacements)
{
    if (before == after)
        return {};
    const std::string name = WithSlashes(entry);
    const std::string left = AsUtf8(before);
    const std::string right = AsUtf8(after);
    std::vector<Difference> differences;
    if (name.ends_with(".rels"))
        differences = RelationshipDifferences(left, right, replacements);
    else if (IsProperties(name))
        differences = PropertyDifferences(left, right, name.find("custom") != std::string::npos, replacements);
    else if (IsDrawing(name) && name.ends_with(".xml"))
        differences = DrawingDifferences(left, right, replacements);
    else
        differences = ByteDifferences(before, after);
    for (Difference& difference : differences)
        difference.entry = entry;
    return differences;
}

std::vector<Difference> UnexpectedDifferences(const PackageReader& before, const PackageReader& after,
                                              const std::vector<Replacement>& replacements)
{
    std::vector<Difference> differences;
    for (const std::string& name : EntriesThatDiffer(before, after)) {
        if (!before.Has(name) || !after.Has(name)) {
            differences.push_back({name, 0, {}, {}, before.Has(name) ? "the entry is lost" : "a new entry"});
            continue;
        }
        const auto found =
            UnexpectedDifferencesIn(name, before.Entry(name).bytes, after.Entry(name).bytes, replacements);
        differences.insert(differences.end(), found.begin(), found.end());
    }
    return differences;
}

testing::AssertionResult OnlyTheTextDiffers(const PackageReader& before, const PackageReader& after,
                                            const std::vector<Replacement>& replacements)
{
    std::vector<Difference> differences = PackagingDifferences(before, after);
    const std::vector<Difference> content = UnexpectedDifferences(before, after, replacements);
    differences.insert(differences.end(), content.begin(), content.end());
    if (differences.empty())
        return testing::AssertionSuccess();
    testing::AssertionResult failure = testing::AssertionFailure();
    for (const Difference& difference : differences)
        failure << testing::PrintToString(difference) << "\n";
    return failure;
}

testing::AssertionResult SameBytes(const PackageReader& before, const PackageReader& after)
{
    if (before.Bytes() == after.Bytes())
        return testing::AssertionSuccess();
    testing::AssertionResult failure = OnlyTheTextDiffers(before, after, {});
    if (failure)
        return testing::AssertionFailure() << "the entries are equal, the files around them are not";
    return failure;
}

}  // namespace tessarine::test
