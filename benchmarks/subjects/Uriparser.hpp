#pragma once

#include <uriparser/Uri.h>

#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>

namespace benchmarks {

/// A UriUriA with a text of its own, freed at the end.
class OwnedUri {
public:
    explicit OwnedUri(const std::string& text)
    {
        const char* errorAt = nullptr;
        if (uriParseSingleUriA(&uri_, text.c_str(), &errorAt) != URI_SUCCESS)
            throw std::invalid_argument("uriparser refuses the text");
        if (uriMakeOwnerA(&uri_) != URI_SUCCESS) {
            uriFreeUriMembersA(&uri_);
            throw std::runtime_error("uriparser cannot own the text");
        }
    }
    OwnedUri(const OwnedUri&) = delete;
    OwnedUri& operator=(const OwnedUri&) = delete;
    ~OwnedUri() { uriFreeUriMembersA(&uri_); }

    const UriUriA& get() const noexcept { return uri_; }

    struct Filled {};

    /// The URI that `fill` fills in, which is given a UriUriA* and answers uriparser's code.
    template <class Fill>
    OwnedUri(Filled, Fill fill)
    {
        if (fill(&uri_) != URI_SUCCESS) {
            uriFreeUriMembersA(&uri_);
            throw std::invalid_argument("uriparser cannot make the URI");
        }
    }

private:
    // uriMakeOwnerA and uriFreeUriMembersA want it writable, and filled by the parser alone.
    UriUriA uri_ = {};
};

/// uriparser: UriUriA after uriMakeOwnerA, which owns its text as an IRI does.
struct Uriparser {
    static constexpr const char* name = "uriparser";
    using Value = OwnedUri;

    static bool accepts(const std::string& text)
    {
        UriUriA uri;
        const char* errorAt = nullptr;
        if (uriParseSingleUriA(&uri, text.c_str(), &errorAt) != URI_SUCCESS)
            return false;
        uriFreeUriMembersA(&uri);
        return true;
    }

    static Value parse(const std::string& text) { return Value(text); }

    /// What the structure itself holds: ranges, and the path as one range for each segment.
    template <class Use>
    static void readViews(const Value& value, Use use)
    {
        readButPath(value.get(), use);
        for (const auto* segment = value.get().pathHead; segment; segment = segment->next)
            use(view(segment->text));
    }

    /// Each component as a string of the caller's; the path is put together from its segments.
    template <class Use>
    static void readStrings(const Value& value, Use use)
    {
        readButPath(value.get(), [&use](std::string_view part) { use(std::string(part)); });
        use(path(value.get()));
    }

    static std::string print(const Value& value)
    {
        int length = 0;
        if (uriToStringCharsRequiredA(&value.get(), &length) != URI_SUCCESS)
            throw std::runtime_error("uriparser cannot print");
        std::string text(static_cast<std::size_t>(length), '\0');
        // The buffer's size counts the terminator, for which std::string has room of its own.
        if (uriToStringA(text.data(), &value.get(), length + 1, nullptr) != URI_SUCCESS)
            throw std::runtime_error("uriparser cannot print");
        return text;
    }

    /// The reference and the result own no text: what they are made of outlives them here.
    static std::string resolve(const std::string& reference, const Value& base)
    {
        const OwnedUri relative(OwnedUri::Filled(), [&reference](UriUriA* uri) {
            const char* errorAt = nullptr;
            return uriParseSingleUriA(uri, reference.c_str(), &errorAt);
        });
        return print(OwnedUri(OwnedUri::Filled(), [&](UriUriA* uri) {
            return uriAddBaseUriA(uri, &relative.get(), &base.get());
        }));
    }

    static std::string relativise(const Value& target, const Value& base)
    {
        return print(OwnedUri(OwnedUri::Filled(), [&](UriUriA* uri) {
            return uriRemoveBaseUriA(uri, &target.get(), &base.get(), URI_FALSE);
        }));
    }

    static bool equal(const Value& a, const Value& b) { return uriEqualsUriA(&a.get(), &b.get()); }

private:
    static std::string_view view(const UriTextRangeA& range)
    {
        return {range.first, static_cast<std::size_t>(range.afterLast - range.first)};
    }

    template <class Use>
    static void readButPath(const UriUriA& uri, Use use)
    {
        for (const auto* range :
             {&uri.scheme, &uri.userInfo, &uri.hostText, &uri.portText, &uri.query, &uri.fragment})
            if (range->first)
                use(view(*range));
    }

    static std::string path(const UriUriA& uri)
    {
        // The slash in front of the first segment, or alone, is a flag where there is no host.
        const bool slash = uri.absolutePath || (uri.hostText.first && uri.pathHead);
        std::string text(slash ? 1 : 0, '/');
        for (const auto* segment = uri.pathHead; segment; segment = segment->next) {
            text += view(segment->text);
            if (segment->next)
                text += '/';
        }
        return text;
    }
};

} // namespace benchmarks
