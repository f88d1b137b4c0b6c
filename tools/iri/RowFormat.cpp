#include "RowFormat.hpp"

namespace tool {

FormatOptions::FormatOptions(CommandLine& commandLine, Raw raw)
{
    commandLine.addFlag("--json", json_, "write a JSON object a line");
    commandLine.addFlag("--tsv", tsv_,
                        "write a line a record, with tabs between its columns;\n"
                        "tab, line feed and backslash as \\t, \\n and \\\\, what is\n"
                        "absent as \\N");
    commandLine.addFlag("--header", header_, "with --tsv: write the names of the columns first");
    if (raw == Raw::Offered)
        commandLine.addFlag("-0,--print0", print0_,
                            "write results as they are, and NUL behind each");
    commandLine.addCheck([this] { return conflict(); });
}

std::string_view FormatOptions::conflict() const noexcept
{
    if (int{json_} + int{tsv_} + int{print0_} > 1)
        return "of --json, --tsv and --print0, only one can be chosen";
    if (header_ && !tsv_)
        return "--header goes with --tsv only";
    return {};
}

RowFormat FormatOptions::format() const noexcept
{
    return json_     ? RowFormat::Json
           : tsv_    ? RowFormat::Tsv
           : print0_ ? RowFormat::Raw
                     : RowFormat::Text;
}

} // namespace tool
