// IP addresses beside Boost.Asio, domain names beside ICU: what this library puts in front of both.

#include "Corpus.hpp"
#include "Passes.hpp"
#include "Registration.hpp"

#include <foundation/network/IdnConverter.hpp>
#include <foundation/network/InetAddress.hpp>
#include <foundation/network/iri/IRIView.hpp>

#include <benchmark/benchmark.h>
#include <boost/asio/ip/address.hpp>
#include <unicode/idna.h>
#include <unicode/unistr.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <random>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace benchmarks {
namespace {

    using foundation::network::IdnConverter;
    using foundation::network::InetAddress;
    using foundation::network::iri::IRIView;
    namespace ip = boost::asio::ip;

    constexpr std::size_t ADDRESSES = 1000;

    template <class Address>
    Corpus addresses(std::string name)
    {
        std::minstd_rand random(4);
        Corpus corpus{std::move(name), {}};
        for (std::size_t i = 0; i < ADDRESSES; ++i) {
            typename Address::bytes_type bytes{};
            for (auto& byte : bytes)
                byte = static_cast<unsigned char>(random() >> 8U);
            // Zeros that print as "::" in every other one.
            for (std::size_t at = 4; i % 2 == 0 && at + 4 < bytes.size(); ++at)
                bytes[at] = 0;
            corpus.texts.push_back(Address(bytes).to_string());
        }
        return corpus;
    }

    /// Each text as a value of `Read`.
    template <class Value, class Read>
    Items<Value> valuesOf(const Corpus& corpus, Read read)
    {
        Taken<Value> values{{}, corpus.texts.size()};
        for (const std::string& text : corpus.texts)
            values.items.push_back(read(text));
        return std::make_shared<const Taken<Value>>(std::move(values));
    }

    void registerIp(const Corpus& corpus)
    {
        const auto ours = [](const std::string& text) { return InetAddress(text); };
        const auto asio = [](const std::string& text) { return ip::make_address(text); };
        registerPasses("AddressRead/" + corpus.name + "/zkflnetwork", allOf(corpus),
                       [ours](Text text) { benchmark::DoNotOptimize(ours(*text)); });
        registerPasses("AddressRead/" + corpus.name + "/boost_asio", allOf(corpus),
                       [asio](Text text) { benchmark::DoNotOptimize(asio(*text)); });
        registerPasses(
            "AddressPrint/" + corpus.name + "/zkflnetwork", valuesOf<InetAddress>(corpus, ours),
            [](const InetAddress& address) { benchmark::DoNotOptimize(address.toString()); });
        registerPasses(
            "AddressPrint/" + corpus.name + "/boost_asio", valuesOf<ip::address>(corpus, asio),
            [](const ip::address& address) { benchmark::DoNotOptimize(address.to_string()); });
    }

    std::u16string toUtf16(std::string_view utf8)
    {
        const auto wide = icu::UnicodeString::fromUTF8(
            icu::StringPiece(utf8.data(), static_cast<std::int32_t>(utf8.size())));
        return {wide.getBuffer(), static_cast<std::size_t>(wide.length())};
    }

    /// The hosts of a corpus, but for addresses.
    std::vector<std::u16string> hosts(const Corpus& corpus)
    {
        std::vector<std::u16string> found;
        for (const std::string& text : corpus.texts) {
            const auto view = IRIView::parse(text);
            const auto host = view ? view->host() : std::nullopt;
            if (host && !host->empty() && host->find_first_not_of("0123456789.") != host->npos
                && host->front() != '[')
                found.push_back(toUtf16(*host));
        }
        return found;
    }

    /// ICU itself, as a caller without this library would keep it.
    std::shared_ptr<const icu::IDNA> makeIcu()
    {
        UErrorCode code = U_ZERO_ERROR;
        std::shared_ptr<const icu::IDNA> idna(icu::IDNA::createUTS46Instance(
            UIDNA_NONTRANSITIONAL_TO_ASCII | UIDNA_NONTRANSITIONAL_TO_UNICODE, code));
        if (U_FAILURE(code))
            throw std::runtime_error(u_errorName(code));
        return idna;
    }

    std::string icuToAscii(const icu::IDNA& idna, const std::u16string& name)
    {
        UErrorCode code = U_ZERO_ERROR;
        icu::IDNAInfo findings;
        icu::UnicodeString result;
        idna.nameToASCII(
            icu::UnicodeString(false, name.data(), static_cast<std::int32_t>(name.size())), result,
            findings, code);
        std::string ascii(static_cast<std::size_t>(result.length()), '\0');
        result.extract(0, result.length(), ascii.data(), result.length(), US_INV);
        return ascii;
    }

    std::u16string icuToUnicode(const icu::IDNA& idna, const std::string& name)
    {
        UErrorCode code = U_ZERO_ERROR;
        icu::IDNAInfo findings;
        icu::UnicodeString result;
        idna.nameToUnicode(
            icu::UnicodeString(name.data(), static_cast<std::int32_t>(name.size()), US_INV), result,
            findings, code);
        return {result.getBuffer(), static_cast<std::size_t>(result.length())};
    }

    void registerIdn(const Corpus& corpus)
    {
        const auto idna = makeIcu();
        const IdnConverter converter;
        const auto names = taken(hosts(corpus), [](const std::u16string&) { return true; });
        std::vector<std::string> asciiNames;
        for (const std::u16string& name : names->items)
            asciiNames.push_back(icuToAscii(*idna, name));
        const auto ascii = taken(asciiNames, [](const std::string&) { return true; });

        registerPasses("IdnToAscii/" + corpus.name + "/zkflnetwork", names,
                       [converter](const std::u16string& name) {
                           benchmark::DoNotOptimize(converter.toAscii(name));
                       });
        registerPasses("IdnToAscii/" + corpus.name + "/icu", names,
                       [idna](const std::u16string& name) {
                           benchmark::DoNotOptimize(icuToAscii(*idna, name));
                       });
        registerPasses("IdnToUnicode/" + corpus.name + "/zkflnetwork", ascii,
                       [converter](const std::string& name) {
                           benchmark::DoNotOptimize(converter.toUnicode(name));
                       });
        registerPasses("IdnToUnicode/" + corpus.name + "/icu", ascii,
                       [idna](const std::string& name) {
                           benchmark::DoNotOptimize(icuToUnicode(*idna, name));
                       });
    }

} // namespace

void registerAddresses()
{
    static const Corpus v4 = addresses<ip::address_v4>("ipv4");
    static const Corpus v6 = addresses<ip::address_v6>("ipv6");
    registerIp(v4);
    registerIp(v6);
    registerIdn(iris());
    registerIdn(urls());
}

} // namespace benchmarks
