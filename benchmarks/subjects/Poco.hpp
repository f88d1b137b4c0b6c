#pragma once

#include <Poco/Exception.h>
#include <Poco/URI.h>

#include <string>

namespace benchmarks {

/// Poco::URI, which undoes escapes as it parses and writes them anew as it prints.
struct PocoUri {
    static constexpr const char* name = "poco";
    using Value = Poco::URI;

    static bool accepts(const std::string& text)
    {
        try {
            const Value value(text);
            return true;
        } catch (const Poco::Exception&) {
            return false;
        }
    }

    static Value parse(const std::string& text) { return Value(text); }

    /// What the class hands out: the path decoded, query and fragment as they were written.
    template <class Use>
    static void readStrings(const Value& value, Use use)
    {
        if (!value.getScheme().empty())
            use(std::string(value.getScheme()));
        if (!value.getUserInfo().empty())
            use(std::string(value.getUserInfo()));
        if (!value.getHost().empty())
            use(std::string(value.getHost()));
        if (value.getSpecifiedPort() != 0)
            use(std::to_string(value.getSpecifiedPort()));
        use(std::string(value.getPath()));
        if (!value.getRawQuery().empty())
            use(std::string(value.getRawQuery()));
        if (!value.getFragment().empty())
            use(value.getFragment());
    }

    static std::string print(const Value& value) { return value.toString(); }
    /// It escapes what is outside ASCII whenever it prints.
    static std::string asciiForm(const Value& value) { return value.toString(); }

    static std::string resolve(const std::string& reference, const Value& base)
    {
        return Value(base, reference).toString();
    }

    static Value copy(const Value& value) { return value; }
    static bool equal(const Value& a, const Value& b) { return a == b; }
};

} // namespace benchmarks
