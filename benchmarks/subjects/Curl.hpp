#pragma once

#include <curl/curl.h>

#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>

namespace benchmarks {

struct FreeCurl {
    void operator()(CURLU* url) const noexcept { curl_url_cleanup(url); }
    void operator()(char* text) const noexcept { curl_free(text); }
};

/// A text that libcurl allocated.
using CurlText = std::unique_ptr<char, FreeCurl>;

/// libcurl: a CURLU, asked to take any scheme and to leave the path as it is.
struct Curl {
    static constexpr const char* name = "libcurl";
    using Value = std::unique_ptr<CURLU, FreeCurl>;

    static bool accepts(const std::string& text)
    {
        const Value value(curl_url());
        return isRead(value, text, LENIENT);
    }

    static Value parse(const std::string& text)
    {
        Value value(curl_url());
        if (!isRead(value, text, LENIENT))
            throw std::invalid_argument("libcurl refuses the text");
        return value;
    }

    /// Each component in the buffer that libcurl allocates for it: there is no other way to them.
    template <class Use>
    static void readStrings(const Value& value, Use use)
    {
        for (const CURLUPart part :
             {CURLUPART_SCHEME, CURLUPART_USER, CURLUPART_PASSWORD, CURLUPART_HOST, CURLUPART_PORT,
              CURLUPART_PATH, CURLUPART_QUERY, CURLUPART_FRAGMENT})
            if (const CurlText text = get(value, part))
                use(std::string_view(text.get()));
    }

    static std::string print(const Value& value)
    {
        const CurlText text = get(value, CURLUPART_URL);
        if (!text)
            throw std::runtime_error("libcurl cannot print");
        return text.get();
    }

    /// The setter resolves against what the handle holds, so the base is copied first.
    static std::string resolve(const std::string& reference, const Value& base)
    {
        const Value resolved = copy(base);
        if (!isRead(resolved, reference, LENIENT & ~static_cast<unsigned>(CURLU_PATH_AS_IS)))
            throw std::invalid_argument("libcurl refuses the reference");
        return print(resolved);
    }

    static Value copy(const Value& value) { return Value(curl_url_dup(value.get())); }

private:
    static constexpr unsigned LENIENT =
        CURLU_NON_SUPPORT_SCHEME | CURLU_PATH_AS_IS | CURLU_NO_AUTHORITY;

    static bool isRead(const Value& value, const std::string& text, unsigned flags)
    {
        return curl_url_set(value.get(), CURLUPART_URL, text.c_str(), flags) == CURLUE_OK;
    }

    static CurlText get(const Value& value, CURLUPart part)
    {
        char* text = nullptr;
        return curl_url_get(value.get(), part, &text, 0) == CURLUE_OK ? CurlText(text) : nullptr;
    }
};

} // namespace benchmarks
