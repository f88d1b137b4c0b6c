#pragma once

#include <foundation/network/IRI.hpp>

#include <cstdint>
#include <string>

namespace benchmarks {

/// This library: foundation::network::IRI.
struct Zkflnetwork {
    static constexpr const char* name = "zkflnetwork";
    using Value = foundation::network::IRI;

    static bool accepts(const std::string& text) { return Value::tryParse(text).has_value(); }

    static Value parse(const std::string& text) { return Value(text); }

    template <class Use>
    static void readStrings(const Value& value, Use use)
    {
        if (value.hasScheme())
            use(value.getSchemeUtf8());
        if (value.hasUserInfo())
            use(value.getUserInfoUtf8());
        if (value.hasHost())
            use(value.getHostUtf8());
        if (value.hasPort())
            use(value.getPortUtf8());
        use(value.getPathUtf8());
        if (value.hasQuery())
            use(value.getQueryUtf8());
        if (value.hasFragment())
            use(value.getFragmentUtf8());
    }

    static std::string print(const Value& value) { return value.toStringUtf8(); }
    static std::string asciiForm(const Value& value) { return value.toAsciiStringUtf8(); }

    static std::string resolve(const std::string& reference, const Value& base)
    {
        return Value(reference).resolveAgainst(base).toStringUtf8();
    }

    static std::string relativise(const Value& target, const Value& base)
    {
        return target.makeRelativeTo(base).toStringUtf8();
    }

    static Value copy(const Value& value) { return value; }
    static bool equal(const Value& a, const Value& b) { return a == b; }
    static bool less(const Value& a, const Value& b) { return a < b; }
    static std::uint64_t hash(const Value& value) { return value.hashValue(); }
};

} // namespace benchmarks
