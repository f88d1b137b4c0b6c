#include "Names.hpp"

#include "Text.hpp"

#include <algorithm>
#include <string_view>

namespace tool {
namespace {

    // How ICU says that a label has more characters than Punycode counts.
    constexpr std::string_view TOO_LONG = "U_INPUT_TOO_LONG_ERROR";

    bool isAscii(std::string_view text)
    {
        return std::all_of(text.begin(), text.end(),
                           [](char c) { return static_cast<unsigned char>(c) < 0x80; });
    }

} // namespace

DomainName Names::convert(const std::string& name) const
{
    DomainName result;
    try {
        result.ascii = converter_.toAscii(text::toUtf16(name));
    } catch (const foundation::network::IdnConverterException& failure) {
        if (failure.what() != TOO_LONG)
            throw;
        result.problem = "cannot be converted: a label is too long";
        return result;
    }
    result.hasForms = true;
    // What ASCII names stand for can be read from them even where they are not allowed.
    result.unicode = text::toUtf8(converter_.toUnicode(isAscii(name) ? name : result.ascii));
    if (result.ascii.find('?') != std::string::npos)
        result.problem =
            R"(cannot be converted; "?" and U+FFFD stand for what UTS #46 does not allow)";
    return result;
}

} // namespace tool
