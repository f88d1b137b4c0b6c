#include "Tsv.hpp"

#include <cstddef>

namespace tool {
namespace {

    constexpr std::string_view SPECIALS = "\t\n\\";

} // namespace

void appendTsv(std::string& result, std::string_view text)
{
    for (;;) {
        const std::size_t special = text.find_first_of(SPECIALS);
        result.append(text.substr(0, special));
        if (special == std::string_view::npos)
            return;
        const char c = text[special];
        result.push_back('\\');
        result.push_back(c == '\t' ? 't' : c == '\n' ? 'n' : '\\');
        text.remove_prefix(special + 1);
    }
}

std::string undoTsv(std::string_view escaped)
{
    std::string result;
    for (;;) {
        const std::size_t escape = escaped.find('\\');
        result.append(escaped.substr(0, escape));
        if (escape == std::string_view::npos || escape + 1 == escaped.size()) {
            if (escape != std::string_view::npos)
                result.push_back('\\'); // one at the end stands for itself
            return result;
        }
        const char c = escaped[escape + 1];
        if (c == 't')
            result.push_back('\t');
        else if (c == 'n')
            result.push_back('\n');
        else if (c == '\\')
            result.push_back('\\');
        else
            result.append(escaped.substr(escape, 2)); // not one of ours
        escaped.remove_prefix(escape + 2);
    }
}

} // namespace tool
