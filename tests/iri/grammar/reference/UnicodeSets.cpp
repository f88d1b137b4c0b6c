#include "UnicodeSets.hpp"

#include <unicode/uniset.h>
#include <unicode/unistr.h>

#include <stdexcept>

namespace reference {

namespace {

    /// The code points that a pattern of ICU's set notation describes.
    class CodePointSet {
    public:
        explicit CodePointSet(const char* pattern)
        {
            UErrorCode status = U_ZERO_ERROR;
            set_.applyPattern(icu::UnicodeString::fromUTF8(pattern), status);
            if (U_FAILURE(status))
                throw std::runtime_error(u_errorName(status));
            set_.freeze();
        }

        bool contains(char32_t c) const
        {
            // A larger value would turn negative on its way into ICU.
            return c <= 0x10FFFF && set_.contains(static_cast<UChar32>(c));
        }

    private:
        icu::UnicodeSet set_;
    };

} // namespace

bool isAlphabetic(char32_t c)
{
    static const CodePointSet alphabetic("[:Alphabetic:]");
    return alphabetic.contains(c);
}

bool isDecimalDigit(char32_t c)
{
    static const CodePointSet decimalDigits("[:Nd:]");
    return decimalDigits.contains(c);
}

bool isHexDigit(char32_t c)
{
    static const CodePointSet hexDigits("[:Hex_Digit:]");
    return hexDigits.contains(c);
}

} // namespace reference
