#include "iri/ComponentCoders.hpp"

#include "text/HexDigits.hpp"
#include "text/LaxUtf8.hpp"
#include "text/Utf.hpp"

#include <algorithm>
#include <array>
#include <cstddef>
#include <type_traits>

namespace foundation::network::iri {

namespace {

    template <class Rules>
    constexpr bool isQuery = std::is_same_v<Rules, QueryRules>;

    // The low bytes of the elements: what the decoder read as bytes, and of anything else a rest.
    std::string narrow(std::u32string_view elements)
    {
        std::string bytes(elements.size(), '\0');
        std::transform(elements.begin(), elements.end(), bytes.begin(),
                       [](char32_t element) { return static_cast<char>(element & 0xFF); });
        return bytes;
    }

    // The bytes that the text denotes once its escapes are undone, characters outside ASCII being
    // their UTF-8. This is encodeNonAscii, decodeEscapes and narrow in one pass without their
    // intermediate texts: the escapes that encodeNonAscii writes are undone at once, and no "%" of
    // the text can join them, since it needs two digits that stand in the text itself.
    std::string decodedBytes(std::u32string_view text)
    {
        std::string bytes;
        bytes.reserve(text.size());
        for (std::size_t i = 0; i < text.size(); ++i) {
            const char32_t c = text[i];
            if (c == U'%' && text::isEscapeAt(text, i)) {
                bytes.push_back(static_cast<char>(text::hexDigitValue(text[i + 1]) * 16
                                                  + text::hexDigitValue(text[i + 2])));
                i += 2;
            } else if (c < 0x80) {
                bytes.push_back(static_cast<char>(c));
            } else {
                bytes.append(text::encodeUtf8(c).view());
            }
        }
        return bytes;
    }

    // Escapes the colons before the first slash, which must not look like the end of a scheme.
    std::u32string escapeFirstSegmentColons(std::u32string_view path)
    {
        const std::size_t end = std::min(path.find(U'/'), path.size());
        std::u32string result = escapeMembers(path.substr(0, end), AsciiSet(":"));
        return result.append(path.substr(end));
    }

    std::u32string formEncode(std::u32string_view text)
    {
        std::u32string result = escapeMembers(text, QueryRules::escapedInForm);
        std::replace(result.begin(), result.end(), U' ', U'+');
        return result;
    }

    // The characters that are the same in a decoded component and in an IRI. A "%" is not, since
    // digits may follow it; nor are the blocks counted of which some characters are escaped.
    template <class Rules>
    class SameInIri {
    public:
        constexpr SameInIri()
        {
            constexpr AsciiSet UNSHOWABLE(R"("<>\^`{|}%)");
            for (char32_t c = 0x21; c < 0x7F; ++c)
                ascii_[c] = !Rules::escaped.contains(c) && !UNSHOWABLE.contains(c);
        }

        constexpr bool operator()(char32_t c) const noexcept
        {
            return c < 0x80 ? ascii_[c] : (c >= 0xA0 && c < 0x2000) || (c >= 0x2070 && c < 0xD800);
        }

    private:
        bool ascii_[0x80] = {};
    };

    // By bytes of lax UTF-8: those behind which nothing can stand that is not the same. These are
    // such ASCII characters, the leads of blocks that are the same as a whole, and what goes on
    // behind a lead.
    template <class Rules>
    constexpr std::array<bool, 0x100> bytesOfSameInIri = [] {
        constexpr SameInIri<Rules> same;
        const auto areAllSame = [same](char32_t first, char32_t size) {
            bool all = true;
            for (char32_t c = first; c < first + size; ++c)
                all &= same(c);
            return all;
        };
        std::array<bool, 0x100> bytes{};
        for (std::size_t byte = 0; byte < bytes.size(); ++byte) {
            const auto lead = static_cast<char32_t>(byte);
            if (byte < 0x80)
                bytes[byte] = same(lead);
            else if (byte < 0xC0)
                bytes[byte] = true;
            else if (byte < 0xE0)
                bytes[byte] = areAllSame((lead & 0x1FU) << 6, 1U << 6);
            else if (byte < 0xF0)
                bytes[byte] = areAllSame((lead & 0x0FU) << 12, 1U << 12);
        }
        return bytes;
    }();

    // Whether the elements of a text are all the same.
    template <class Rules>
    bool areSameInIri(std::u32string_view text) noexcept
    {
        static constexpr SameInIri<Rules> same;
        return std::all_of(text.begin(), text.end(), same);
    }

    template <class Rules>
    bool areSameInIri(std::string_view lax) noexcept
    {
        static constexpr SameInIri<Rules> same;
        for (const char& byte : lax)
            if (!bytesOfSameInIri<Rules>[text::byteAt(&byte)]
                && !same(text::LaxReading::elementAt(&byte)))
                return false;
        return true;
    }

    template <class Rules>
    std::u32string escapeUnshowable(std::u32string_view text)
    {
        if constexpr (isQuery<Rules>) // RFC 3987, 2.2: a query may hold private use characters
            return escapeForbidden(text);
        else
            return escapeForbidden(escapePrivateUse(text));
    }

    // Whether all is ASCII that can be seen.
    template <class Unit>
    bool isShownAscii(std::basic_string_view<Unit> text) noexcept
    {
        unsigned hidden = 0;
        for (const Unit unit : text) {
            const auto c = static_cast<std::make_unsigned_t<Unit>>(unit);
            hidden |= unsigned{c <= 0x20} | unsigned{c >= 0x7F};
        }
        return hidden == 0;
    }

    bool isFormEncoded(const QueryContext& context)
    {
        return context.formEncoded;
    }

    template <class Context>
    bool isFormEncoded(const Context&)
    {
        return false;
    }

    template <class Unit>
    bool colonComesFirst(std::basic_string_view<Unit> path) noexcept
    {
        const auto found = std::find_if(path.begin(), path.end(),
                                        [](Unit c) { return c == Unit(':') || c == Unit('/'); });
        return found != path.end() && *found == Unit(':');
    }

    template <class Text, class Context>
    bool looksLikeScheme(Text, const Context&) noexcept
    {
        return false;
    }

    bool couldLookLikeScheme(const PathContext& context)
    {
        return context.standsAlone();
    }

    template <class Context>
    bool couldLookLikeScheme(const Context&)
    {
        return false;
    }

} // namespace

bool looksLikeScheme(std::u32string_view path, const PathContext& context) noexcept
{
    return context.standsAlone() && colonComesFirst(path);
}

bool looksLikeScheme(std::string_view path, const PathContext& context) noexcept
{
    return context.standsAlone() && colonComesFirst(path);
}

namespace {

    // Whether a decoded text stands in an IRI as it is.
    template <class Rules, class Text>
    bool isShownAsItIs(Text decoded, const typename Rules::Context& context) noexcept
    {
        return !isFormEncoded(context) && !looksLikeScheme(decoded, context)
               && areSameInIri<Rules>(decoded);
    }

} // namespace

template <class Rules>
bool ComponentCoder<Rules>::isSameInIri(std::u32string_view decoded,
                                        const Context& context) noexcept
{
    return isShownAsItIs<Rules>(decoded, context);
}

template <class Rules>
bool ComponentCoder<Rules>::isSameInIri(std::string_view decoded, const Context& context) noexcept
{
    return isShownAsItIs<Rules>(decoded, context);
}

template <class Rules>
bool ComponentCoder<Rules>::isSameInAscii(std::u32string_view iri, const Context&) noexcept
{
    return isShownAscii(iri);
}

template <class Rules>
bool ComponentCoder<Rules>::isSameInAscii(std::string_view iri, const Context&) noexcept
{
    return isShownAscii(iri);
}

// Without a "%" there is nothing to undo, and what is a character comes back from UTF-8.
template <class Rules>
bool ComponentCoder<Rules>::isSameDecoded(std::u32string_view iri, const Context& context) noexcept
{
    return !isFormEncoded(context) && std::none_of(iri.begin(), iri.end(), [](char32_t c) {
        const bool isSurrogate = (c & 0xFFFFF800U) == 0xD800;
        return c == U'%' || isSurrogate || c > text::MAX_CODE_POINT;
    });
}

template <class Rules>
bool ComponentCoder<Rules>::isSameDecoded(std::string_view iri, const Context& context) noexcept
{
    return !isFormEncoded(context) && iri.find('%') == iri.npos;
}

template <class Rules>
Conversion ComponentCoder<Rules>::decodedToIri(std::u32string_view text, const Context& context)
{
    // Form-encoded text carries its escapes already, so nothing protects them there. The "%" of a
    // host is escaped a second time by its own table; that is meant.
    std::u32string result = isFormEncoded(context)
                                ? formEncode(text)
                                : escapeMembers(protectEscapes(text), Rules::escaped);
    result = escapeUnshowable<Rules>(result);
    if (couldLookLikeScheme(context))
        result = escapeFirstSegmentColons(result);
    return result;
}

template <class Rules>
Conversion ComponentCoder<Rules>::iriToAscii(std::u32string_view text, const Context&)
{
    return encodeNonAscii(text);
}

template <class Rules>
Conversion ComponentCoder<Rules>::decodedToAscii(std::u32string_view text, const Context& context)
{
    const Conversion iri = decodedToIri(text, context);
    return iri ? iriToAscii(*iri, context) : std::nullopt;
}

template <class Rules>
Conversion ComponentCoder<Rules>::iriToDecoded(std::u32string_view text, const Context& context)
{
    // In a form "+" and "%26" must not be confused with what they stand for.
    if (isFormEncoded(context))
        return encodeNonAscii(text);
    if (text.empty())
        return std::nullopt;
    const RepairedUtf8 repaired = repairUtf8(decodedBytes(text));
    std::u32string result = text::toUtf32(repaired.bytes);
    // The bytes that were no UTF-8 stand as escapes now; each becomes the code point of its value.
    // An escape that the first pass left, as in "%2541", is decoded a second time; that is meant.
    return repaired.repaired ? decodeEscapes(result, {}) : result;
}

template <class Rules>
Conversion ComponentCoder<Rules>::asciiToIri(std::u32string_view text, const Context& context)
{
    const Conversion decoded = decodeEscapes(text, Rules::keptEscapes);
    if (!decoded)
        return std::nullopt;
    if (isFormEncoded(context))
        return std::u32string(text);
    std::u32string result = text::toUtf32(repairUtf8(narrow(*decoded)).bytes);
    if (couldLookLikeScheme(context))
        result = escapeFirstSegmentColons(result);
    return escapeUnshowable<Rules>(result);
}

template <class Rules>
Conversion ComponentCoder<Rules>::asciiToDecoded(std::u32string_view text, const Context& context)
{
    const Conversion iri = asciiToIri(text, context);
    return iri ? iriToDecoded(*iri, context) : std::nullopt;
}

template struct ComponentCoder<UserInfoRules>;
template struct ComponentCoder<HostRules>;
template struct ComponentCoder<PathRules>;
template struct ComponentCoder<QueryRules>;
template struct ComponentCoder<FragmentRules>;

} // namespace foundation::network::iri
