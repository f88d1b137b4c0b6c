#include "Printing.hpp"

#include <cstdint>
#include <sstream>

namespace reference {

std::string printed(const std::u32string& text)
{
    std::ostringstream out;
    out << std::hex << std::uppercase;
    for (const char32_t c : text) {
        if (c >= 0x20 && c < 0x7F)
            out << static_cast<char>(c);
        else
            out << "<U+" << static_cast<std::uint32_t>(c) << '>';
    }
    return out.str();
}

void PrintTo(const Range& range, std::ostream* out)
{
    *out << '[' << range.begin << ", " << range.end << ')';
}

void PrintTo(const Match& match, std::ostream* out)
{
    *out << (match.matched ? "matched " : "failed at ") << match.consumed;
}

void PrintTo(const ReferenceParts& parts, std::ostream* out)
{
    const auto print = [out](const char* name, const std::optional<Range>& range) {
        if (range) {
            *out << ' ' << name << ' ';
            PrintTo(*range, out);
        }
    };
    print("scheme", parts.scheme);
    print("userInfo", parts.userInfo);
    print("host", parts.host);
    print("port", parts.port);
    print("path", parts.path);
    print("query", parts.query);
    print("fragment", parts.fragment);
}

} // namespace reference
