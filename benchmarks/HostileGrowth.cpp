// Times operations on texts that were made to be slow, at growing lengths: whether any of them takes
// more than its share of a longer text. Prints a line of JSON for each time, which hostile.py shows.

#include <foundation/network/IRI.hpp>
#include <foundation/network/IRIArgs.hpp>
#include <foundation/network/IdnConverter.hpp>
#include <foundation/network/InetAddress.hpp>
#include <foundation/network/iri/Diagnosis.hpp>
#include <foundation/network/iri/IRIView.hpp>
#include <foundation/network/iri/QueryPairs.hpp>

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <ctime>
#include <exception>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#if defined(__GLIBC__)
#    include <malloc.h>
#endif

namespace foundation::network {

namespace {

    // A piece over and over between two ends.
    struct Shape {
        const char* name;
        const char* before;
        const char* piece;
        const char* after;

        std::string text(std::size_t length) const
        {
            std::string result = before;
            const std::string_view repeated = piece;
            result.reserve(length + repeated.size());
            while (result.size() < length)
                result += repeated;
            return result += after;
        }
    };

    constexpr Shape shapes[] = {
        {R"(all "%")", "", "%", ""},
        {R"(host of "%")", "//", "%", ""},
        {R"(all ":")", "", ":", ""},
        {R"(all "/")", "", "/", ""},
        {R"(all "?")", "", "?", ""},
        {R"(all "#")", "", "#", ""},
        {R"(all "[")", "", "[", ""},
        {R"("a@" in an authority)", "//", "a@", ""},
        {R"("a@" in a path)", "/", "a@", ""},
        {R"("a:" in a path)", "./", "a:", ""},
        {"IPv6 groups", "//[", "1:", "1]"},
        {R"(host of ":")", "//", ":", ""},
        {"address of a future version", "//[v1.", "a", "]"},
        {"dotted decimals", "//", "1.", "1"},
        {"digits of a port", "//h:", "0", "8"},
        {R"(deep "../")", "", "../", ""},
        {R"(deep "./")", "", "./", ""},
        {R"(segments with "..")", "/", "a/../", ""},
        {R"(segments, then "..")", "/", "a/b/../../", ".."},
        {"many segments", "/", "a/", ""},
        {"one long segment", "/", "a", ""},
        {"long scheme", "", "a", ":x"},
        {"escaped letters", "/", "%41", ""},
        {"escaped UTF-8", "/", "%C3%A9", ""},
        {"escaped broken UTF-8", "/", "%E9", ""},
        {"letters that are not ASCII", "/", "é", ""},
        {"private use", "?", "\uE000", ""},
        {"forbidden characters", "/", "<", ""},
        {"broken UTF-8", "/", "\xFF", ""},
        {"query pairs", "?", "a=b&", ""},
        {R"(query of "&" and "=")", "?", "&=", ""},
        {"labels", "//", "a.", ""},
        {"labels that are not ASCII", "//", "ü.", ""},
        {"one label that is not ASCII", "//", "ü", ""},
        {"Punycode labels", "//", "xn--tda.", ""},
        {"one Punycode label", "//xn--", "a", ""},
        {"combining characters", "//a", "\u0301", ""},
        {"joiners", "//a", "\u200d", ""},
    };

    // What is timed. Preparing it, and freeing what it needs, is not.
    using Work = std::function<void()>;

    struct Operation {
        const char* name;
        Work (*prepared)(const std::string& text); // nothing, if the operation takes no such text
    };

    std::size_t sink = 0; // printed at the end, so that nothing can be left out

    // The value of a text, or one whose path is the text.
    std::shared_ptr<const IRI> valueOf(const std::string& text)
    {
        std::optional<IRI> parsed = IRI::tryParse(text);
        return parsed ? std::make_shared<const IRI>(*std::move(parsed)) : nullptr;
    }

    Work parsing(const std::string& text)
    {
        return [&text] { sink += IRI::tryParse(text).has_value() ? 1U : 0U; };
    }

    Work viewing(const std::string& text)
    {
        return [&text] {
            const std::optional<iri::IRIView> view = iri::IRIView::parse(std::string_view(text));
            sink += view ? view->path().size() : 0;
        };
    }

    Work diagnosing(const std::string& text)
    {
        return [&text] {
            const std::optional<iri::Diagnosis> found = iri::diagnose(text);
            sink += found ? found->offset : 0;
        };
    }

    Work repairing(const std::string& text)
    {
        return [&text] {
            const std::optional<std::string> proposed = iri::repair(text);
            sink += proposed ? proposed->size() : 0;
        };
    }

    // Each form is made anew, because the value is.
    Work printing(const std::string& text)
    {
        if (!IRI::tryParse(text))
            return nullptr;
        return [&text] {
            const std::optional<IRI> value = IRI::tryParse(text);
            sink += value->toStringUtf8(true).size() + value->toAsciiStringUtf8(true).size();
        };
    }

    Work decoding(const std::string& text)
    {
        if (!IRI::tryParse(text))
            return nullptr;
        return [&text] {
            const std::optional<IRI> value = IRI::tryParse(text);
            sink += value->getPathUtf8(IRI::Encoding::Decoded).size();
            if (value->hasHost())
                sink += value->getHostUtf8(IRI::Encoding::Decoded).size();
            if (value->hasQuery())
                sink += value->getQueryUtf8(IRI::Encoding::Decoded).size();
        };
    }

    Work building(const std::string& text)
    {
        if (iri::diagnose(text).has_value()
            && iri::diagnose(text)->code == iri::Diagnosis::Code::BadUtf8)
            return nullptr;
        return [&text] {
            const IRI value(IRIArgs().setPath(text).setQuery(text));
            sink += value.toAsciiStringUtf8(true).size();
        };
    }

    Work resolving(const std::string& text)
    {
        const std::shared_ptr<const IRI> value = valueOf(text);
        if (!value)
            return nullptr;
        const auto base = std::make_shared<const IRI>(std::string("http://h/a/b/c?q"));
        return [value, base] {
            sink += value->resolveAgainst(*base).toStringUtf8().size();
            sink += base->resolveAgainst(*value).toStringUtf8().size();
            // Behind a base that is as long, and has no authority of its own.
            sink += IRI(std::string("../x")).resolveAgainst(*value).toStringUtf8().size();
        };
    }

    Work relativising(const std::string& text)
    {
        const std::shared_ptr<const IRI> value = valueOf(text);
        const std::shared_ptr<const IRI> sibling = valueOf(text + "x");
        if (!value || !sibling)
            return nullptr;
        return [value, sibling] {
            sink += value->makeRelativeTo(*sibling).toStringUtf8().size();
            sink += value->makeRelativeTo(*value).toStringUtf8().size();
        };
    }

    Work comparing(const std::string& text)
    {
        const std::shared_ptr<const IRI> value = valueOf(text);
        if (!value)
            return nullptr;
        return [&text, value] {
            const IRI other(text);
            sink += *value == other && !(*value < other) ? other.hashValue() & 1 : 0;
        };
    }

    Work pairing(const std::string& text)
    {
        return [&text] {
            for (const iri::QueryPair& pair : iri::QueryPairs(std::string_view(text)))
                sink += pair.key.size();
        };
    }

    std::string withoutSlashes(const std::string& text)
    {
        std::string result = text.substr(std::min(text.find_first_not_of("/?"), text.size()));
        std::erase_if(result, [](char c) { return c == '[' || c == ']'; });
        return result;
    }

    Work addressing(const std::string& text)
    {
        return [name = withoutSlashes(text)] {
            try {
                sink += InetAddress(name).toString().size();
            } catch (const std::exception&) {
                ++sink;
            }
        };
    }

    Work converting(const std::string& text)
    {
        const std::optional<iri::Diagnosis> found = iri::diagnose(text);
        if (found && found->code == iri::Diagnosis::Code::BadUtf8)
            return nullptr;
        const auto converter = std::make_shared<const IdnConverter>();
        const std::string name = withoutSlashes(text);
        const std::u16string wide =
            IRI(IRIArgs().setPath("/" + name)).getPath(IRI::Encoding::Decoded);
        return [converter, name, wide] {
            try {
                sink += converter->toAscii(wide).size();
                sink += converter->toUnicode(name).size();
            } catch (const IdnConverterException&) {
                ++sink;
            }
        };
    }

    constexpr Operation operations[] = {
        {"parse", parsing},           {"view", viewing},        {"diagnose", diagnosing},
        {"repair", repairing},        {"print", printing},      {"decode", decoding},
        {"build", building},          {"resolve", resolving},   {"relativise", relativising},
        {"compare, hash", comparing}, {"query pairs", pairing}, {"IP address", addressing},
        {"IDN", converting},
    };

    // Of the processor: what else the machine does is no matter.
    double nanosecondsOf(const Work& work)
    {
        const std::clock_t begin = std::clock();
        work();
        return static_cast<double>(std::clock() - begin) * (1e9 / CLOCKS_PER_SEC);
    }

    // The least of many times, of which each is long enough for the clock.
    double leastTime(const Work& work)
    {
        constexpr double ENOUGH = 2e6;
        constexpr double ALL = 3e7;
        constexpr int LEAST_ROUNDS = 3;
        const double first = nanosecondsOf(work);
        const int repeats = std::max(1, static_cast<int>(ENOUGH / std::max(first, 100.0)));
        double least = first;
        double spent = first;
        for (int round = 0; round < LEAST_ROUNDS || spent < ALL; ++round) {
            const double time = nanosecondsOf([&] {
                for (int i = 0; i < repeats; ++i)
                    work();
            });
            least = std::min(least, time / repeats);
            spent += time;
            if (spent > 100 * ALL)
                break;
        }
        return least;
    }

    void run(std::size_t longest)
    {
        constexpr std::size_t SHORTEST = 16384;
        constexpr double TOO_SLOW = 2e9;
        for (const Shape& shape : shapes) {
            for (const Operation& operation : operations) {
                for (std::size_t length = SHORTEST; length <= longest; length *= 4) {
                    const std::string text = shape.text(length);
                    const Work work = operation.prepared(text);
                    if (!work)
                        break;
                    const double time = leastTime(work);
                    std::string name;
                    for (const char c : std::string_view(shape.name))
                        name += c == '"' ? std::string("\\\"") : std::string(1, c);
                    std::printf(R"({"shape":"%s","operation":"%s","length":%zu,"time":%.1f})"
                                "\n",
                                name.c_str(), operation.name, text.size(), time);
                    std::fflush(stdout);
                    if (time > TOO_SLOW)
                        break;
                }
            }
        }
        std::fprintf(stderr, "%zu\n", sink);
    }

} // namespace

} // namespace foundation::network

int main(int count, char** words)
{
#if defined(__GLIBC__)
    // Memory that was freed is kept: that the kernel clears long pieces anew each time is not our
    // growth.
    mallopt(M_MMAP_THRESHOLD, 1 << 30);
    mallopt(M_TRIM_THRESHOLD, 1 << 30);
#endif
    constexpr std::size_t MEBIBYTE = 1U << 20U;
    try {
        foundation::network::run(count > 1 ? std::stoul(words[1]) : MEBIBYTE);
        return 0;
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "%s\n", failure.what());
        return 1;
    }
}
