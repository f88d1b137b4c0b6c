#pragma once

#include "build/NaiveText.hpp"

#include <array>
#include <cstddef>
#include <optional>
#include <string>

/// A second bag of components, in which everything is optional and nothing is clever. The tests
/// hold the library's bags against it.
namespace foundation::network::tests {

/// The components that are texts.
enum Field : std::size_t { SCHEME, USER_INFO, HOST, PATH, QUERY, FRAGMENT };

inline constexpr std::size_t fieldCount = 6;

/// Which of the two classes a call goes to.
enum class Level { IRIArgs, ArgsBase };

struct NaiveBag {
    std::array<std::optional<Text>, fieldCount> texts;
    std::optional<unsigned> port;
    bool schemeFromIri = false;
    bool queryFormEncoded = false;
    bool queryHasEscapes = false;

    void set(Field field, const Text& text);
    void set(Field field, const std::string& utf8);
    void set(Field field, const std::u16string& utf16);
    void clear(Field field, Level level);

    void setPort(unsigned number) { port = number; }
    void setPort(const Text& digits);
    void setPort(const std::string& utf8) { setPort(fromUtf8(utf8)); }
    void setPort(const std::u16string& utf16) { setPort(fromUtf16(utf16)); }
    void clearPort() { port.reset(); }

    void append(const std::string& key, const std::string& value, bool formEncoded,
                bool semicolonSeparator);
    void append(const std::u16string& key, const std::u16string& value, bool formEncoded,
                bool semicolonSeparator);
};

/// The components of an IRI as plain text, and whether its query is form-encoded.
struct NaiveComponents {
    std::array<std::optional<Text>, fieldCount> texts; // there is always a path
    std::optional<unsigned> port;
    bool formEncoded = false;

    void toBag(NaiveBag& bag) const;
};

/// The components of a text that is an IRI reference. @throws as the library, if one does not
/// decode
NaiveComponents takeApart(const std::string& utf8);

} // namespace foundation::network::tests
