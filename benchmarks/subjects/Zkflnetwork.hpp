#pragma once

#include <foundation/network/IRI.hpp>

#include <stdexcept>
#include <string>

namespace benchmarks {

/// This library: foundation::network::IRI.
struct Zkflnetwork {
    static constexpr const char* name = "zkflnetwork";
    using Value = foundation::network::IRI;

    static bool accepts(const std::string& text)
    {
        try {
            const Value value(text);
            return true;
        } catch (const std::logic_error&) {
            return false;
        }
    }

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
};

} // namespace benchmarks
