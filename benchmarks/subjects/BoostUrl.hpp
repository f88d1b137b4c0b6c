#pragma once

#include <boost/url/parse.hpp>
#include <boost/url/url.hpp>

#include <stdexcept>
#include <string>
#include <string_view>

namespace benchmarks {

/// Boost.URL: boost::urls::url, which owns its text as an IRI does.
struct BoostUrl {
    static constexpr const char* name = "boost_url";
    using Value = boost::urls::url;

    static bool accepts(const std::string& text)
    {
        return boost::urls::parse_uri_reference(text).has_value();
    }

    static Value parse(const std::string& text)
    {
        return Value(boost::urls::parse_uri_reference(text).value());
    }

    /// What the class itself hands out: views, without a copy.
    template <class Use>
    static void readViews(const Value& value, Use use)
    {
        const auto part = [&use](auto view) { use(std::string_view(view.data(), view.size())); };
        if (value.has_scheme())
            part(value.scheme());
        if (value.has_userinfo())
            part(value.encoded_userinfo());
        if (value.has_authority())
            part(value.encoded_host());
        if (value.has_port())
            part(value.port());
        part(value.encoded_path());
        if (value.has_query())
            part(value.encoded_query());
        if (value.has_fragment())
            part(value.encoded_fragment());
    }

    /// The same, each as a string of the caller's.
    template <class Use>
    static void readStrings(const Value& value, Use use)
    {
        readViews(value, [&use](std::string_view view) { use(std::string(view)); });
    }

    static std::string print(const Value& value)
    {
        const auto text = value.buffer();
        return std::string(text.data(), text.size());
    }

    static std::string resolve(const std::string& reference, const Value& base)
    {
        Value resolved;
        const auto relative = boost::urls::parse_uri_reference(reference).value();
        if (boost::urls::resolve(base, relative, resolved).has_error())
            throw std::invalid_argument("Boost.URL does not resolve the reference");
        return print(resolved);
    }

    static Value copy(const Value& value) { return value; }
    /// Both compare what RFC 3986, 6.2.2 makes of the texts.
    static bool equal(const Value& a, const Value& b) { return a == b; }
    static bool less(const Value& a, const Value& b) { return a < b; }
};

} // namespace benchmarks
