#pragma once

#include <foundation/network/iri/detail/StringParts.hpp>

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <typeinfo>
#include <utility>

namespace foundation::network::iri::test {

using Parts = detail::StringParts<std::u32string>;

/// One of the five components, with its operations; a query is not form-encoded.
struct Component {
    const char* name; ///< as failures write it
    const std::u32string& (Parts::*getter)(const Encoding&) const;
    void (*setter)(Parts&, std::u32string, const Encoding&);

    const std::u32string& get(const Parts& parts, Encoding encoding) const
    {
        return (parts.*getter)(encoding);
    }
    void set(Parts& parts, std::u32string text, Encoding encoding) const
    {
        setter(parts, std::move(text), encoding);
    }
    bool isPath() const { return getter == &Parts::getPath; }
};

inline const Component components[] = {
    {"UserInfo", &Parts::getUserInfo,
     [](Parts& parts, std::u32string text, const Encoding& encoding) {
         parts.setUserInfo(std::move(text), encoding);
     }},
    {"Host", &Parts::getHost,
     [](Parts& parts, std::u32string text, const Encoding& encoding) {
         parts.setHost(std::move(text), encoding);
     }},
    {"Path", &Parts::getPath,
     [](Parts& parts, std::u32string text, const Encoding& encoding) {
         parts.setPath(std::move(text), encoding);
     }},
    {"Query", &Parts::getQuery,
     [](Parts& parts, std::u32string text, const Encoding& encoding) {
         parts.setQuery(std::move(text), encoding, false);
     }},
    {"Fragment", &Parts::getFragment,
     [](Parts& parts, std::u32string text, const Encoding& encoding) {
         parts.setFragment(std::move(text), encoding);
     }},
};

inline constexpr Encoding settableEncodings[] = {
    Encoding::Decoded, Encoding::Iri, Encoding::IriStrict, Encoding::Ascii, Encoding::AsciiStrict};
/// With two that are none.
inline constexpr Encoding encodings[] = {
    Encoding::Decoded,     Encoding::Iri, Encoding::IriStrict, Encoding::Ascii,
    Encoding::AsciiStrict, Encoding{5},   Encoding{0xFFFFFFFF}};

/// Calls what must throw a `Failure`, or a type derived from it, with a text.
template <class Failure, class Operation>
void expectFailure(Operation operation, const std::string& text)
{
    try {
        operation();
        ADD_FAILURE() << "nothing was thrown";
    } catch (const std::runtime_error& failure) {
        ADD_FAILURE() << "a runtime error: " << failure.what();
    } catch (const Failure& failure) {
        EXPECT_EQ(failure.what(), text);
    }
}

/// Calls what must throw `std::runtime_error`, that very type, with a text.
template <class Operation>
void expectRuntimeError(Operation operation, const std::string& text)
{
    try {
        operation();
        ADD_FAILURE() << "nothing was thrown";
    } catch (const std::runtime_error& failure) {
        EXPECT_EQ(failure.what(), text);
        EXPECT_EQ(typeid(failure), typeid(std::runtime_error));
    }
}

inline void expectNotSet(const Parts& parts, const Component& component, Encoding encoding)
{
    expectRuntimeError([&] { component.get(parts, encoding); },
                       std::string("Item not set: ") + component.name);
}

} // namespace foundation::network::iri::test
