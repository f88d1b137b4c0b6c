#include "build/NaiveBag.hpp"

#include "iri/NaiveCoding.hpp"
#include "iri/NaiveIri.hpp"

#include <foundation/core/except/Exception.hpp>

#include <stdexcept>
#include <utility>

namespace foundation::network::tests {

namespace {

    [[noreturn]] void refuse(const std::string& text)
    {
        throw core::except::AnonymousInternalException<std::logic_error>(std::logic_error(text));
    }

    // Runs a conversion, all of whose failures are reduced to one type.
    template <class Convert>
    Text reduced(Convert convert)
    {
        try {
            return convert();
        } catch (const std::out_of_range& failure) {
            throwPlainly(failure.what());
        }
    }

    template <class String>
    void replaceAll(String& text, char unit, const char* replacement)
    {
        String result;
        for (const auto c : text) {
            if (c == static_cast<typename String::value_type>(unit)) {
                for (const char* at = replacement; *at != '\0'; ++at)
                    result.push_back(static_cast<typename String::value_type>(*at));
            } else {
                result.push_back(c);
            }
        }
        text = result;
    }

    // The plus signs go before the spaces, which become plus signs themselves.
    template <class String>
    bool escapeReserved(String& text, bool semicolonSeparator)
    {
        const String before = text;
        replaceAll(text, '+', "%2B");
        replaceAll(text, '=', "%3D");
        if (semicolonSeparator)
            replaceAll(text, ';', "%3B");
        else
            replaceAll(text, '&', "%26");
        const bool isEscaped = text != before;
        replaceAll(text, ' ', "+");
        return isEscaped;
    }

    template <class String, class Convert>
    void appendTo(NaiveBag& bag, String key, String value, bool formEncoded,
                  bool semicolonSeparator, Convert convert)
    {
        if (key.empty())
            refuse("Key must not be empty");
        const bool keyIsEscaped = escapeReserved(key, semicolonSeparator);
        const bool valueIsEscaped = escapeReserved(value, semicolonSeparator);
        if (keyIsEscaped || valueIsEscaped)
            bag.queryHasEscapes = true;
        std::optional<Text>& query = bag.texts[QUERY];
        if (query && !query->empty())
            query->push_back(semicolonSeparator ? U';' : U'&');
        key.push_back('=');
        const Text pair = convert(key + value);
        query = query.value_or(Text()) + pair;
        bag.queryFormEncoded = formEncoded;
    }

    std::optional<Text> decoded(iri::naive::Component component,
                                const std::optional<std::string>& text)
    {
        if (!text)
            return std::nullopt;
        return iri::naive::iriToDecoded(component, codePoints(*text), {}).value_or(Text());
    }

} // namespace

void NaiveBag::set(Field field, const Text& text)
{
    texts[field] = text;
    if (field == SCHEME)
        schemeFromIri = false;
}

void NaiveBag::set(Field field, const std::string& utf8)
{
    set(field, fromUtf8(utf8));
}

void NaiveBag::set(Field field, const std::u16string& utf16)
{
    set(field, reduced([&] { return fromUtf16(utf16); }));
}

void NaiveBag::clear(Field field, Level level)
{
    texts[field].reset();
    if (field == SCHEME)
        schemeFromIri = false;
    if (field == HOST && level == Level::IRIArgs)
        clearPort();
}

// The number at the front is taken, if it is a port and there was one before, even if more follows.
void NaiveBag::setPort(const Text& digits)
{
    std::size_t length = 0;
    unsigned long number = 0;
    bool isTooLarge = false;
    for (; length < digits.size() && digits[length] >= U'0' && digits[length] <= U'9'; ++length) {
        number = number * 10 + (digits[length] - U'0');
        if (number > 65535) {
            isTooLarge = true;
            number = 65536;
        }
    }
    const bool isNumber = length > 0 && !isTooLarge;
    const bool isWhole = isNumber && length == digits.size();
    if (isWhole || (isNumber && port))
        port = static_cast<unsigned>(number);
    if (!isWhole)
        refuse("Port must be numeric");
}

void NaiveBag::append(const std::string& key, const std::string& value, bool formEncoded,
                      bool semicolonSeparator)
{
    appendTo(*this, key, value, formEncoded, semicolonSeparator, fromUtf8);
}

void NaiveBag::append(const std::u16string& key, const std::u16string& value, bool formEncoded,
                      bool semicolonSeparator)
{
    appendTo(*this, key, value, formEncoded, semicolonSeparator, fromUtf16);
}

void NaiveComponents::toBag(NaiveBag& bag) const
{
    if (texts[SCHEME]) {
        bag.texts[SCHEME] = texts[SCHEME];
        bag.schemeFromIri = true;
    }
    for (const Field field : {USER_INFO, HOST})
        if (texts[field])
            bag.texts[field] = texts[field];
    if (port)
        bag.port = port;
    for (const Field field : {PATH, QUERY, FRAGMENT})
        bag.texts[field] = texts[field];
    bag.queryFormEncoded = formEncoded;
    bag.queryHasEscapes = false;
}

NaiveComponents takeApart(const std::string& utf8)
{
    using iri::naive::Component;
    const NaiveIri iri(utf8);
    NaiveComponents result;
    if (iri.scheme)
        result.texts[SCHEME] = codePoints(*iri.scheme);
    result.texts[USER_INFO] = decoded(Component::UserInfo, iri.userInfo);
    result.texts[HOST] = decoded(Component::Host, iri.host);
    if (iri.port)
        result.port = static_cast<unsigned>(std::stoul(*iri.port));
    result.texts[PATH] = decoded(Component::Path, iri.path);
    result.texts[QUERY] = decoded(Component::Query, iri.query);
    result.texts[FRAGMENT] = decoded(Component::Fragment, iri.fragment);
    return result;
}

} // namespace foundation::network::tests
