#include <foundation/core/except/Exception.hpp>
#include <foundation/network/IRI.hpp>
#include <foundation/network/IRIArgs.hpp>
#include <foundation/network/IdnConverter.hpp>
#include <foundation/network/InetAddress.hpp>
#include <foundation/network/InterfaceAddress.hpp>

#include <boost/throw_exception.hpp>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <exception>
#include <fstream>
#include <functional>
#include <map>
#include <stdexcept>
#include <string>
#include <system_error>
#include <typeindex>
#include <utility>
#include <vector>

namespace foundation::network {

namespace {

    using iri::Encoding;
    using iri::detail::ArgsBase;

    // --- the page ----------------------------------------------------------------------------

    struct Row {
        std::string message; // as the page shows it
        std::string type;
    };

    std::vector<std::string> cellsOf(const std::string& line)
    {
        std::vector<std::string> cells;
        for (std::size_t begin = 2; begin < line.size();) {
            const std::size_t end = line.find(" |", begin);
            cells.push_back(line.substr(begin, end - begin));
            begin = end + 3;
        }
        return cells;
    }

    std::vector<Row> rowsOfThePage()
    {
        std::ifstream page(ZKFLNETWORK_ERRORS_PAGE);
        std::vector<Row> rows;
        bool isInTable = false;
        for (std::string line; std::getline(page, line);) {
            if (line.rfind("| Message |", 0) == 0)
                isInTable = true;
            else if (line.rfind('|', 0) != 0)
                isInTable = false;
            else if (isInTable && line.rfind("|---", 0) != 0)
                rows.push_back({cellsOf(line)[0], cellsOf(line)[1]});
        }
        return rows;
    }

    // A message in backticks without them. Other cells describe a message that is not ours.
    std::string literal(const std::string& cell)
    {
        return cell.size() > 2 && cell.front() == '`' && cell.find('`', 1) == cell.size() - 1
                   ? cell.substr(1, cell.size() - 2)
                   : std::string();
    }

    bool fits(const std::string& message, const std::string& cell)
    {
        const std::string wanted = literal(cell);
        if (wanted.empty())
            return !message.empty();
        const std::string dots = "…";
        const std::size_t gap = wanted.find(dots);
        if (gap == std::string::npos)
            return message == wanted;
        const std::string front = wanted.substr(0, gap);
        const std::string back = wanted.substr(gap + dots.size());
        return message.size() > front.size() + back.size() && message.starts_with(front)
               && message.ends_with(back);
    }

    // --- what the library does ---------------------------------------------------------------

    template <class Standard>
    using Ours = core::except::AnonymousInternalException<Standard>;

    const std::map<std::string, std::type_index>& types()
    {
        static const std::map<std::string, std::type_index> all = {
            {"`std::logic_error`", typeid(Ours<std::logic_error>)},
            {"`std::runtime_error`", typeid(Ours<std::runtime_error>)},
            {"`std::exception`", typeid(Ours<std::exception>)},
            {"`std::invalid_argument`", typeid(Ours<std::invalid_argument>)},
            {"`std::system_error`", typeid(Ours<std::system_error>)},
            {"`std::out_of_range`", typeid(boost::wrapexcept<std::out_of_range>)},
            {"`IdnConverterException`", typeid(IdnConverterException)},
        };
        return all;
    }

    IRI parsed(const char* text)
    {
        return IRI(std::string(text));
    }

    void makeRelative(const char* text, const char* base)
    {
        static_cast<void>(parsed(text).makeRelativeTo(parsed(base)));
    }

    void buildFrom(const std::function<void(IRIArgs&)>& fill)
    {
        IRIArgs args;
        fill(args);
        static_cast<void>(IRI(args));
    }

    // By the message as the page shows it, what provokes it.
    std::multimap<std::string, std::function<void()>> provocations()
    {
        const char* const invalidUtf8 =
            "`Invalid UTF-8 sequence encountered while trying to encode UTF-32 character`";
        const std::string relative = "`Cannot make relative to base as base has ";
        return {
            {"`IRI parsing failed`", [] { parsed("a b"); }},
            {invalidUtf8, [] { parsed("\xFF"); }},
            {invalidUtf8, [] { IRIArgs().setPath("\xFF"); }},
            {invalidUtf8, [] { parsed("/%C0%80").getPathUtf8(Encoding::Decoded); }},
            {"`Misplaced UTF-16 surrogate U+… encountered while trying to encode UTF-32 sequence`",
             [] {
                 static_cast<void>(IRI(std::u16string{u'a', u'\xD800', u'b'}));
             }},
            {"`No scheme`", [] { parsed("a").getScheme(); }},
            {"`No port`", [] { parsed("http://h").getPortUtf8(); }},
            {"`No port`", [] { parsed("http://h").getPortNumber(); }},
            {"`Item not set: UserInfo`", [] { parsed("//h").getUserInfo(); }},
            {"`Item not set: Host`", [] { parsed("a").getHostUtf8(); }},
            {"`Item not set: Host: Host (in getAuthority)`", [] { parsed("a").getAuthority(); }},
            {"`Item not set: Path`", [] { IRI().getPath(); }},
            {"`Item not set: Path`", [] { IRI().getSchemeSpecificPartUtf8(); }},
            {"`Item not set: Query`", [] { parsed("a").getQuery(); }},
            {"`Item not set: Fragment`", [] { parsed("a").getFragment(); }},
            {"`Invalid UTF-32 code point U+… encountered while trying to encode UTF-16 sequence`",
             [] {
                 IRIArgs args;
                 static_cast<ArgsBase<std::u32string>&>(args).setPath(std::u32string{0xD800});
                 IRI(args).getPath(Encoding::Decoded);
             }},
            {"`Malformed scheme`", [] { buildFrom([](IRIArgs& args) { args.setScheme("1"); }); }},
            {"`Malformed scheme`", [] { buildFrom([](IRIArgs& args) { args.setScheme(""); }); }},
            {"`User Info requires a host`",
             [] { buildFrom([](IRIArgs& args) { args.setUserInfo("u"); }); }},
            {"`Port requires a host`", [] { buildFrom([](IRIArgs& args) { args.setPort(80); }); }},
            {"`Path cannot be relative if authority present`",
             [] { buildFrom([](IRIArgs& args) { args.setHost("h").setPath("a"); }); }},
            {"`Port must be numeric`", [] { IRIArgs().setPort(":80"); }},
            {"`Key must not be empty`",
             [] { IRIArgs().appendQueryKeyValuePair("", "v", true, false); }},
            {"`Cannot make relative to base. Already relative`", [] { makeRelative("a", "/b"); }},
            {"`Cannot make relative. Base is relative`", [] { makeRelative("/a", "b"); }},
            {relative + "scheme but this does not`", [] { makeRelative("/a", "http:/b"); }},
            {relative + "authority but this does not`", [] { makeRelative("/a", "//h/b"); }},
            {relative + "path but this does not`", [] { makeRelative("", "b"); }},
            {relative + "query but this does not`", [] { makeRelative("#f", "?q"); }},
            {"`Can not create InetAddress from … elements. Vector must have 0, 4 or 16 elements.`",
             [] { static_cast<void>(InetAddress(std::vector<unsigned char>(5))); }},
            {"the system's message", [] { static_cast<void>(InetAddress(std::string("h"))); }},
            {"the name service's message", [] { InetAddress::getByName(""); }},
            {"`prefix length too large`",
             [] { static_cast<void>(InterfaceAddress(InetAddress(), 33)); }},
            {"ICU's name of the error, such as `U_INPUT_TOO_LONG_ERROR`",
             [] { idn_to_ascii(std::u16string(1001, u'é')); }},
            {"`Unknown exception`", [] { throw Ours<std::exception>(std::exception()); }},
        };
    }

    // What only a system that fails, or another one, can bring about.
    const std::array<std::string, 3> elsewhere = {
        "`Invalid IP address string: …`",            // StrictIPv4RefusalTest.cpp
        "`Call to GetComputerName failed.: …`",      // LocalHostTest.cpp
        "`Call to GetAdaptersAddresses failed.: …`", // ListingTest.cpp
    };

} // namespace

TEST(ErrorsPage, tellsTheMessageAndTheTypeOfEachFailure)
{
    const auto all = provocations();
    std::size_t used = 0;
    for (const Row& row : rowsOfThePage()) {
        SCOPED_TRACE(row.message);
        ASSERT_EQ(types().count(row.type), 1U) << row.type;
        const auto [first, last] = all.equal_range(row.message);
        const bool isElsewhere =
            std::find(elsewhere.begin(), elsewhere.end(), row.message) != elsewhere.end();
        EXPECT_EQ(first == last, isElsewhere) << "nothing provokes it";
        for (auto each = first; each != last; ++each, ++used) {
            try {
                each->second();
                ADD_FAILURE() << "nothing was thrown";
            } catch (const std::exception& failure) {
                EXPECT_TRUE(fits(failure.what(), row.message)) << failure.what();
                EXPECT_EQ(types().at(row.type), std::type_index(typeid(failure)))
                    << typeid(failure).name();
            }
        }
    }
    EXPECT_EQ(used, all.size()) << "a message is not on the page";
}

} // namespace foundation::network
