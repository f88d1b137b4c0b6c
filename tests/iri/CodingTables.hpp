#pragma once

#include <cstddef>
#include <iterator>
#include <string_view>

/// The tables of the percent coding, written out a second time: the tests hold the library against
/// them.
namespace foundation::network::iri::naive {

/// A character and what stands for it in an IRI.
struct Replacement {
    char32_t character;
    std::u32string_view replacement;
};

/// A view of one of the tables below.
struct Table {
    const Replacement* first;
    std::size_t size;

    template <std::size_t SIZE>
    constexpr Table(const Replacement (&rows)[SIZE])
        : first(rows)
        , size(SIZE)
    {
    }

    const Replacement* begin() const { return first; }
    const Replacement* end() const { return first + size; }
};

inline constexpr Replacement userInfoTable[] = {
    {U' ', U"%20"}, {U'"', U"%22"}, {U'#', U"%23"}, {U'/', U"%2F"}, {U';', U"%3B"}, {U'<', U"%3C"},
    {U'=', U"%3D"}, {U'>', U"%3E"}, {U'?', U"%3F"}, {U'@', U"%40"}, {U'[', U"%5B"}, {U'\\', U"%5C"},
    {U']', U"%5D"}, {U'^', U"%5E"}, {U'`', U"%60"}, {U'{', U"%7B"}, {U'|', U"%7C"}, {U'}', U"%7D"},
};

inline constexpr Replacement hostTable[] = {
    {U' ', U"%20"}, {U'#', U"%23"}, {U'%', U"%25"}, {U'/', U"%2F"},  {U':', U"%3A"},
    {U'?', U"%3F"}, {U'@', U"%40"}, {U'[', U"%5B"}, {U'\\', U"%5C"}, {U']', U"%5D"},
};

inline constexpr Replacement pathTable[] = {
    {U' ', U"%20"}, {U'"', U"%22"}, {U'#', U"%23"}, {U'<', U"%3C"}, {U'>', U"%3E"}, {U'?', U"%3F"},
    {U'[', U"%5B"}, {U']', U"%5D"}, {U'`', U"%60"}, {U'{', U"%7B"}, {U'}', U"%7D"},
};

inline constexpr Replacement queryTable[] = {
    {U' ', U"%20"}, {U'"', U"%22"}, {U'#', U"%23"}, {U'<', U"%3C"}, {U'>', U"%3E"}, {U'`', U"%60"},
};

inline constexpr Replacement formTable[] = {
    {U' ', U"+"},
    {U'#', U"%23"},
    {U'[', U"%5B"},
    {U']', U"%5D"},
};

inline constexpr Replacement fragmentTable[] = {
    {U' ', U"%20"}, {U'"', U"%22"}, {U'<', U"%3C"}, {U'>', U"%3E"}, {U'`', U"%60"},
};

static_assert(std::size(userInfoTable) == 18);
static_assert(std::size(hostTable) == 10);
static_assert(std::size(pathTable) == 11);
static_assert(std::size(queryTable) == 6);
static_assert(std::size(formTable) == 4);
static_assert(std::size(fragmentTable) == 5);

/// The values whose escapes are not undone on the way from the ASCII form.
inline constexpr std::u32string_view userInfoKeep = U" \"#/<;=>?@[\\]^`{|}%";
inline constexpr std::u32string_view hostKeep = U" #%/:?@[\\]";
inline constexpr std::u32string_view pathKeep = U" \"#%<>?[]`{}";
inline constexpr std::u32string_view queryKeep = U" \"#<>`%";
inline constexpr std::u32string_view fragmentKeep = U" \"<>`%";

static_assert(userInfoKeep.size() == 19);
static_assert(hostKeep.size() == 10);
static_assert(pathKeep.size() == 12);
static_assert(queryKeep.size() == 7);
static_assert(fragmentKeep.size() == 6);

} // namespace foundation::network::iri::naive
