// The query of a bag, put together from pairs.

#include <foundation/network/iri/detail/ArgsBase.hpp>

#include "except/Throw.hpp"
#include "text/Utf.hpp"

namespace foundation::network::iri::detail {

namespace {

    template <class Text>
    void appendAscii(Text& text, const char* ascii)
    {
        for (; *ascii != '\0'; ++ascii)
            text.push_back(static_cast<typename Text::value_type>(*ascii));
    }

    // What stands for a code unit of a key or a value, or null if it stands for itself.
    template <class Unit>
    const char* escapeOf(Unit unit, bool semicolonSeparator)
    {
        switch (unit) {
        case ';':
            return semicolonSeparator ? "%3B" : nullptr;
        case '&':
            return semicolonSeparator ? nullptr : "%26";
        case '=':
            return "%3D";
        case '+':
            return "%2B";
        default:
            return nullptr;
        }
    }

    // Works on code units: whatever is not ASCII goes through untouched, "%" does too.
    template <class Text>
    std::tuple<Text, bool> escapePairText(const Text& text, bool semicolonSeparator)
    {
        Text result;
        result.reserve(text.size());
        bool escaped = false;
        for (const auto unit : text) {
            if (const char* escape = escapeOf(unit, semicolonSeparator)) {
                appendAscii(result, escape);
                escaped = true;
            } else {
                result.push_back(unit == ' ' ? '+' : unit);
            }
        }
        return {std::move(result), escaped};
    }

} // namespace

template <class String>
std::tuple<std::string, bool> ArgsBase<String>::percentEncodeFormEncodedReservedChars(
    const std::string& text, bool semicolonSeparator) const
{
    return escapePairText(text, semicolonSeparator);
}

template <class String>
std::tuple<std::u16string, bool> ArgsBase<String>::percentEncodeFormEncodedReservedChars(
    const std::u16string& text, bool semicolonSeparator) const
{
    return escapePairText(text, semicolonSeparator);
}

template <class String>
template <class Text>
void ArgsBase<String>::appendPair(const Text& key, const Text& value, bool formEncoded,
                                  bool semicolonSeparator)
{
    if (key.empty())
        core::except::throwLogicError("Key must not be empty");
    auto [pair, keyEscaped] = percentEncodeFormEncodedReservedChars(key, semicolonSeparator);
    const auto [valueText, valueEscaped] =
        percentEncodeFormEncodedReservedChars(value, semicolonSeparator);
    pair.push_back('=');
    pair.append(valueText);
    queryHasEscapes_ = queryHasEscapes_ || keyEscaped || valueEscaped;

    // The separator stays even if the pair cannot be converted; that is meant.
    if (!query_.empty())
        query_.push_back(semicolonSeparator ? U';' : U'&');
    query_.append(text::toUtf32(pair));
    hasQuery_ = true;
    queryFormEncoded_ = formEncoded;
}

template <class String>
void ArgsBase<String>::appendQueryKeyValuePair(const std::string& key, const std::string& value,
                                               bool formEncoded, bool semicolonSeparator)
{
    appendPair(key, value, formEncoded, semicolonSeparator);
}

template <class String>
void ArgsBase<String>::appendQueryKeyValuePair(const std::u16string& key,
                                               const std::u16string& value, bool formEncoded,
                                               bool semicolonSeparator)
{
    appendPair(key, value, formEncoded, semicolonSeparator);
}

template ZKFLNETWORK_API void ArgsBase<std::u32string>::appendQueryKeyValuePair(const std::string&,
                                                                                const std::string&,
                                                                                bool, bool);
template ZKFLNETWORK_API void ArgsBase<std::u32string>::appendQueryKeyValuePair(
    const std::u16string&, const std::u16string&, bool, bool);
template ZKFLNETWORK_API std::tuple<std::string, bool>
ArgsBase<std::u32string>::percentEncodeFormEncodedReservedChars(const std::string&, bool) const;
template ZKFLNETWORK_API std::tuple<std::u16string, bool>
ArgsBase<std::u32string>::percentEncodeFormEncodedReservedChars(const std::u16string&, bool) const;

} // namespace foundation::network::iri::detail
