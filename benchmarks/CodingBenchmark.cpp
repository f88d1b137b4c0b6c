// Percent escapes, and the crossings between UTF-8, UTF-16 and UTF-32.

#include "Corpus.hpp"
#include "Passes.hpp"
#include "Registration.hpp"
#include "subjects/All.hpp"

#include "text/Utf.hpp"

#include <foundation/network/IRI.hpp>

#include <benchmark/benchmark.h>
#include <unicode/unistr.h>
#include <unicode/ustring.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <deque>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace benchmarks {
namespace {

    using foundation::network::IRI;
    using foundation::network::iri::Encoding;
    namespace text = foundation::network::text;

    // --- escapes ---

    /// The paths and queries of a corpus, as they were written; of those, the ones that hold
    /// an escape, or those that hold none.
    std::vector<std::string> components(const Corpus& corpus, bool withEscapes)
    {
        std::vector<std::string> found;
        const auto add = [&](std::string component) {
            if (!component.empty() && (component.find('%') != std::string::npos) == withEscapes)
                found.push_back(std::move(component));
        };
        for (const std::string& whole : corpus.texts) {
            const IRI iri(whole);
            add(iri.getPathUtf8());
            if (iri.hasQuery())
                add(iri.getQueryUtf8());
        }
        return found;
    }

    using Convert = std::string (*)(const std::string& text);

    std::string unescaped(const std::string& component)
    {
        return IRI("?" + component).getQueryUtf8(Encoding::Decoded);
    }

    /// How this library does it: a reader, on a value that was parsed before. The component stands
    /// in a query, where all of these characters may stand.
    void registerReader(const std::string& operation, const std::string& corpus,
                        const std::shared_ptr<const std::vector<std::string>>& texts,
                        Encoding encoding)
    {
        const auto items = taken(*texts, [](const std::string&) { return true; });
        registerFirstUses(
            operation + "/" + corpus + "/zkflnetwork", items,
            [](const std::string& component) { return IRI("?" + component); },
            [encoding](const IRI& iri) { benchmark::DoNotOptimize(iri.getQueryUtf8(encoding)); });
    }

    /// A peer takes part with the components for which `agrees` holds of its result.
    template <class Agrees>
    void registerPeer(const std::string& name,
                      const std::shared_ptr<const std::vector<std::string>>& texts, Convert convert,
                      Agrees agrees)
    {
        const auto items = taken(*texts, [&](const std::string& component) {
            return agrees(component, convert(component));
        });
        registerPasses(name, items, [convert](const std::string& component) {
            benchmark::DoNotOptimize(convert(component));
        });
    }

    struct Coder {
        const char* name;
        Convert encode; ///< escapes what is outside ASCII; some escape delimiters too
        Convert decode;
    };

    std::vector<Coder> coders()
    {
        std::vector<Coder> found;
#ifdef ZKFLNETWORK_BENCHMARK_CURL
        found.push_back({Curl::name,
                         [](const std::string& text) {
                             const CurlText coded(curl_easy_escape(nullptr, text.data(),
                                                                   static_cast<int>(text.size())));
                             return std::string(coded.get());
                         },
                         [](const std::string& text) {
                             int length = 0;
                             const CurlText coded(curl_easy_unescape(
                                 nullptr, text.data(), static_cast<int>(text.size()), &length));
                             return std::string(coded.get(), static_cast<std::size_t>(length));
                         }});
#endif
#ifdef ZKFLNETWORK_BENCHMARK_GLIB
        found.push_back({GLib::name,
                         [](const std::string& text) {
                             const GLibText coded(
                                 g_uri_escape_string(text.c_str(), "%/?:@!$&'()*+,;=[]", 0));
                             return std::string(coded.get());
                         },
                         [](const std::string& text) {
                             const GLibText coded(g_uri_unescape_string(text.c_str(), nullptr));
                             return coded ? std::string(coded.get()) : std::string();
                         }});
#endif
#ifdef ZKFLNETWORK_BENCHMARK_QT
        found.push_back({Qt5::name,
                         [](const std::string& text) {
                             const auto bytes = QByteArray::fromRawData(
                                 text.data(), static_cast<int>(text.size()));
                             return bytes.toPercentEncoding("%/?:@!$&'()*+,;=[]").toStdString();
                         },
                         [](const std::string& text) {
                             const auto bytes = QByteArray::fromRawData(
                                 text.data(), static_cast<int>(text.size()));
                             return QByteArray::fromPercentEncoding(bytes).toStdString();
                         }});
#endif
#ifdef ZKFLNETWORK_BENCHMARK_URIPARSER
        found.push_back({Uriparser::name,
                         [](const std::string& text) {
                             std::string coded(text.size() * 3 + 1, '\0');
                             const char* const end = uriEscapeExA(
                                 text.data(), text.data() + text.size(), coded.data(), 0, 0);
                             coded.resize(static_cast<std::size_t>(end - coded.data()));
                             return coded;
                         },
                         [](const std::string& text) {
                             std::string coded = text;
                             const char* const end = uriUnescapeInPlaceA(coded.data());
                             coded.resize(static_cast<std::size_t>(end - coded.data()));
                             return coded;
                         }});
#endif
        return found;
    }

    void registerEscapes(const Corpus& decoded, const Corpus& encoded)
    {
        using Texts = std::shared_ptr<const std::vector<std::string>>;
        const Texts plain =
            std::make_shared<const std::vector<std::string>>(components(decoded, false));
        const Texts escaped =
            std::make_shared<const std::vector<std::string>>(components(encoded, true));

        registerReader("EncodeComponent", decoded.name, plain, Encoding::Ascii);
        registerReader("DecodeComponent", encoded.name, escaped, Encoding::Decoded);
        for (const Coder& coder : coders()) {
            registerPeer("EncodeComponent/" + decoded.name + "/" + coder.name, plain, coder.encode,
                         [](const std::string& component, const std::string& coded) {
                             return unescaped(coded) == component;
                         });
            registerPeer("DecodeComponent/" + encoded.name + "/" + coder.name, escaped,
                         coder.decode, [](const std::string& component, const std::string& coded) {
                             return coded == unescaped(component);
                         });
        }
    }

    // --- encodings ---

    /// One text in each encoding.
    struct Written {
        std::string utf8;
        std::u16string utf16;
        std::u32string utf32;
    };

    template <class Work>
    void registerCrossing(const std::string& operation, const std::string& corpus,
                          const std::string& subject, const Items<Written>& texts, Work work)
    {
        registerPasses(operation + "/" + corpus + "/" + subject, texts,
                       [work](const Written& written) { benchmark::DoNotOptimize(work(written)); });
    }

    icu::UnicodeString unicodeString(std::string_view utf8)
    {
        return icu::UnicodeString::fromUTF8(
            icu::StringPiece(utf8.data(), static_cast<std::int32_t>(utf8.size())));
    }

    /// A string of ICU's as UTF-32, by its own function; as many characters as units are enough.
    std::u32string icuUtf32(const char16_t* utf16, std::int32_t length)
    {
        std::u32string result(static_cast<std::size_t>(length), U'\0');
        std::int32_t written = 0;
        UErrorCode code = U_ZERO_ERROR;
        u_strToUTF32(reinterpret_cast<UChar32*>(result.data()), length, &written, utf16, length,
                     &code);
        result.resize(static_cast<std::size_t>(written));
        return result;
    }

    std::u16string icuUtf16(const std::u32string& utf32)
    {
        std::u16string result(utf32.size() * 2, u'\0');
        std::int32_t written = 0;
        UErrorCode code = U_ZERO_ERROR;
        u_strFromUTF32(result.data(), static_cast<std::int32_t>(result.size()), &written,
                       reinterpret_cast<const UChar32*>(utf32.data()),
                       static_cast<std::int32_t>(utf32.size()), &code);
        result.resize(static_cast<std::size_t>(written));
        return result;
    }

    void registerIcu(const std::string& corpus, const Items<Written>& texts)
    {
        registerCrossing("Utf8To32", corpus, "icu", texts, [](const Written& written) {
            const icu::UnicodeString wide = unicodeString(written.utf8);
            return icuUtf32(wide.getBuffer(), wide.length());
        });
        registerCrossing("Utf32To8", corpus, "icu", texts, [](const Written& written) {
            std::string result;
            icu::UnicodeString::fromUTF32(reinterpret_cast<const UChar32*>(written.utf32.data()),
                                          static_cast<std::int32_t>(written.utf32.size()))
                .toUTF8String(result);
            return result;
        });
        registerCrossing("Utf16To32", corpus, "icu", texts, [](const Written& written) {
            return icuUtf32(written.utf16.data(), static_cast<std::int32_t>(written.utf16.size()));
        });
        registerCrossing("Utf32To16", corpus, "icu", texts,
                         [](const Written& written) { return icuUtf16(written.utf32); });
    }

    void registerGLib([[maybe_unused]] const std::string& corpus,
                      [[maybe_unused]] const Items<Written>& texts)
    {
#ifdef ZKFLNETWORK_BENCHMARK_GLIB
        using Wide = std::unique_ptr<gunichar, FreeGLib>;
        using Units = std::unique_ptr<gunichar2, FreeGLib>;
        registerCrossing("Utf8To32", corpus, GLib::name, texts, [](const Written& written) {
            return Wide(g_utf8_to_ucs4(written.utf8.data(), static_cast<glong>(written.utf8.size()),
                                       nullptr, nullptr, nullptr));
        });
        registerCrossing("Utf32To8", corpus, GLib::name, texts, [](const Written& written) {
            return GLibText(g_ucs4_to_utf8(reinterpret_cast<const gunichar*>(written.utf32.data()),
                                           static_cast<glong>(written.utf32.size()), nullptr,
                                           nullptr, nullptr));
        });
        registerCrossing("Utf16To32", corpus, GLib::name, texts, [](const Written& written) {
            return Wide(g_utf16_to_ucs4(reinterpret_cast<const gunichar2*>(written.utf16.data()),
                                        static_cast<glong>(written.utf16.size()), nullptr, nullptr,
                                        nullptr));
        });
        registerCrossing("Utf32To16", corpus, GLib::name, texts, [](const Written& written) {
            return Units(g_ucs4_to_utf16(reinterpret_cast<const gunichar*>(written.utf32.data()),
                                         static_cast<glong>(written.utf32.size()), nullptr, nullptr,
                                         nullptr));
        });
#endif
    }

    void registerQt([[maybe_unused]] const std::string& corpus,
                    [[maybe_unused]] const Items<Written>& texts)
    {
#ifdef ZKFLNETWORK_BENCHMARK_QT
        const auto fromUtf32 = [](const Written& written) {
            return QString::fromUcs4(written.utf32.data(), static_cast<int>(written.utf32.size()));
        };
        registerCrossing("Utf8To32", corpus, Qt5::name, texts, [](const Written& written) {
            return QString::fromUtf8(written.utf8.data(), static_cast<int>(written.utf8.size()))
                .toUcs4();
        });
        registerCrossing("Utf32To8", corpus, Qt5::name, texts, [fromUtf32](const Written& written) {
            return fromUtf32(written).toUtf8();
        });
        registerCrossing("Utf16To32", corpus, Qt5::name, texts, [](const Written& written) {
            return QString::fromRawData(reinterpret_cast<const QChar*>(written.utf16.data()),
                                        static_cast<int>(written.utf16.size()))
                .toUcs4();
        });
        registerCrossing("Utf32To16", corpus, Qt5::name, texts, fromUtf32);
#endif
    }

    /// A plain loop over the elements, into a string that was made with its length.
    template <class To, class From>
    To elementwise(const From& from)
    {
        To to(from.size(), typename To::value_type());
        std::transform(from.begin(), from.end(), to.begin(),
                       [](auto c) { return static_cast<typename To::value_type>(c); });
        return to;
    }

    /// The right answer for ASCII only: the least that a crossing can cost.
    void registerBaselines(const std::string& corpus, const Items<Written>& texts)
    {
        registerCrossing("Utf8To32", corpus, "memcpy", texts, [](const Written& written) {
            std::string copy(written.utf8.size(), '\0');
            std::memcpy(copy.data(), written.utf8.data(), copy.size());
            return copy;
        });
        registerCrossing("Utf8To32", corpus, "plain_loop", texts, [](const Written& written) {
            return elementwise<std::u32string>(written.utf8);
        });
        registerCrossing("Utf32To8", corpus, "plain_loop", texts, [](const Written& written) {
            return elementwise<std::string>(written.utf32);
        });
        registerCrossing("Utf16To32", corpus, "plain_loop", texts, [](const Written& written) {
            return elementwise<std::u32string>(written.utf16);
        });
        registerCrossing("Utf32To16", corpus, "plain_loop", texts, [](const Written& written) {
            return elementwise<std::u16string>(written.utf32);
        });
    }

    void registerCrossings(const Corpus& corpus)
    {
        Taken<Written> all{{}, corpus.texts.size()};
        for (const std::string& utf8 : corpus.texts) {
            const std::u32string utf32 = text::toUtf32(utf8);
            all.items.push_back({utf8, text::toUtf16(utf32), utf32});
        }
        const auto texts = std::make_shared<const Taken<Written>>(std::move(all));
        const std::string& name = corpus.name;

        registerCrossing("Utf8To32", name, Zkflnetwork::name, texts,
                         [](const Written& written) { return text::toUtf32(written.utf8); });
        registerCrossing("Utf32To8", name, Zkflnetwork::name, texts,
                         [](const Written& written) { return text::toUtf8(written.utf32); });
        registerCrossing("Utf16To32", name, Zkflnetwork::name, texts,
                         [](const Written& written) { return text::toUtf32(written.utf16); });
        registerCrossing("Utf32To16", name, Zkflnetwork::name, texts,
                         [](const Written& written) { return text::toUtf16(written.utf32); });
        registerIcu(name, texts);
        registerGLib(name, texts);
        registerQt(name, texts);
        if (&corpus == &urls())
            registerBaselines(name, texts);
    }

} // namespace

void registerCoding()
{
    registerEscapes(iris(), encodedIris());
    registerEscapes(urls(), urls());
    registerCrossings(urls());
    registerCrossings(iris());
}

} // namespace benchmarks
