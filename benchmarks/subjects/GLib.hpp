#pragma once

#include <glib.h>

#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>

namespace benchmarks {

struct FreeGLib {
    void operator()(void* block) const noexcept { g_free(block); }
    void operator()(GUri* uri) const noexcept { g_uri_unref(uri); }
};

/// A text that GLib allocated.
using GLibText = std::unique_ptr<char, FreeGLib>;

/// GLib: a GUri, whose components stay encoded, so that it prints what it read, if that was ASCII.
struct GLib {
    static constexpr const char* name = "glib";
    using Value = std::unique_ptr<GUri, FreeGLib>;

    static bool accepts(const std::string& text) { return Value(read(text)) != nullptr; }

    static Value parse(const std::string& text) { return made(read(text)); }

    /// What the structure itself holds.
    template <class Use>
    static void readViews(const Value& value, Use use)
    {
        for (const char* part : {g_uri_get_scheme(value.get()), g_uri_get_userinfo(value.get()),
                                 g_uri_get_host(value.get()), g_uri_get_path(value.get()),
                                 g_uri_get_query(value.get()), g_uri_get_fragment(value.get())})
            if (part)
                use(std::string_view(part));
        if (const int port = g_uri_get_port(value.get()); port != -1)
            use(port);
    }

    template <class Use>
    static void readStrings(const Value& value, Use use)
    {
        struct Copying {
            Use& use;
            void operator()(std::string_view part) const { use(std::string(part)); }
            void operator()(int port) const { use(std::to_string(port)); }
        };
        readViews(value, Copying{use});
    }

    static std::string print(const Value& value)
    {
        return GLibText(g_uri_to_string(value.get())).get();
    }

    /// It converts hosts to Punycode and escapes what is outside ASCII as it parses.
    static std::string asciiForm(const Value& value) { return print(value); }

    static std::string resolve(const std::string& reference, const Value& base)
    {
        return print(made(
            g_uri_parse_relative(base.get(), reference.c_str(), G_URI_FLAGS_ENCODED, nullptr)));
    }

private:
    static GUri* read(const std::string& text)
    {
        return g_uri_parse(text.c_str(), G_URI_FLAGS_ENCODED, nullptr);
    }

    static Value made(GUri* uri)
    {
        if (!uri)
            throw std::invalid_argument("GLib refuses the text");
        return Value(uri);
    }
};

} // namespace benchmarks
