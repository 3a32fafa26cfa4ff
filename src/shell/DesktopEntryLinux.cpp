#include "shell/DesktopEntry.h"

#include <string_view>

namespace tessarine
{

namespace
{

/// A text as the value of a key: what the reader of values takes for an escape is escaped.
std::string Value(std::string_view text)
{
    std::string value;
    for (const char character : text) {
        switch (character) {
            case '\\':
                value += "\\\\";
                break;
            case '\n':
                value += "\\n";
                break;
            case '\r':
                value += "\\r";
                break;
            case '\t':
                value += "\\t";
                break;
            case ' ':
                value += value.empty() ? "\\s" : " ";  // blanks at the start would be skipped
                break;
            default:
                value += character;
        }
    }
    return value;
}

std::string Line(const std::string& key, const std::string& value)
{
    return key + "=" + value + "\n";
}

std::string XmlText(std::string_view text)
{
    std::string escaped;
    for (const char character : text) {
        switch (character) {
            case '&':
                escaped += "&amp;";
                break;
            case '<':
                escaped += "&lt;";
                break;
            case '>':
                escaped += "&gt;";
                break;
            case '"':
                escaped += "&quot;";
                break;
            default:
                escaped += character;
        }
    }
    return escaped;
}

}  // namespace

std::string ExecCommand(const std::string& path)
{
    std::string quoted = "\"";
    for (const char character : path) {
        if (std::string_view("\"`$\\").find(character) != std::string_view::npos)
            quoted += '\\';
        quoted += character;
        if (character == '%')  // one alone begins a field code, even between quotes
            quoted += '%';
    }
    // As an argument first, then as a value, so that a backslash in the path is escaped twice.
    return Value(quoted + '"');
}

std::string DesktopEntry(const DesktopProgram& program)
{
    // TryExec makes a desktop hide the entry once the program is gone from its place.
    return "[Desktop Entry]\n" + Line("Type", "Application") + Line("Version", "1.0") +
           Line("Name", Value(program.title)) + Line("Comment", Value(program.description)) +
           Line("Exec", ExecCommand(program.path) + " %f") + Line("TryExec", Value(program.path)) +
           Line("Icon", Value(program.name)) + Line("StartupWMClass", Value(program.name)) + Line("Terminal", "false") +
           Line("Categories", "Office;Presentation;") + Line("Keywords", Value(program.keywords)) +
           Line("MimeType", Value(program.mimeType) + ";");
}

std::string MimePackage(const MimeType& type)
{
    const std::string begin =
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
        "<mime-info xmlns=\"http://www.freedesktop.org/standards/shared-mime-info\">\n";
    return begin + "  <mime-type type=\"" + XmlText(type.name) + "\">\n" + "    <comment>" + XmlText(type.description) +
           "</comment>\n" + "    <glob pattern=\"*." + XmlText(type.extension) + "\"/>\n" +
           "  </mime-type>\n</mime-info>\n";
}

}  // namespace tessarine
