#include "iri/grammar/PercentDecodeGrammar.hpp"

#include "iri/grammar/Cursor.hpp"
#include "text/HexDigits.hpp"
#include "text/Utf.hpp"

namespace foundation::network::iri::grammar {

namespace {

    using It = std::u32string_view::const_iterator;

    // decoded-escape = "%" 2HEXDIG, of a value that is not excluded
    bool decodedEscape(Cursor<It>& at, std::u32string_view excluded, char32_t& value)
    {
        const It start = at.position();
        value = 0;
        const auto addDigit = [&value](char32_t c) {
            if (!text::isHexDigit(c))
                return false;
            value = value * 16 + text::hexDigitValue(c);
            return true;
        };
        if (at.take(U'%') && at.takeIf(addDigit) && at.takeIf(addDigit)
            && excluded.find(value) == std::u32string_view::npos)
            return true;
        at.reset(start);
        return false;
    }

} // namespace

// decoded-text = 1*( decoded-escape / any code point )
bool percentDecode(It& first, It last, std::u32string_view excluded, std::u32string& result)
{
    Cursor at(first, last);
    for (char32_t value = 0;;) {
        if (decodedEscape(at, excluded, value))
            result.push_back(value);
        else if (at.is([](char32_t c) { return c <= text::MAX_CODE_POINT; }))
            result.push_back(at.next());
        else
            break;
    }
    const bool matched = at.position() != first;
    first = at.position();
    return matched;
}

} // namespace foundation::network::iri::grammar
