#pragma once

#include <foundation/network/IRI.hpp>
#include <foundation/network/IRIArgs.hpp>

#include <gtest/gtest.h>

#include <cstdint>
#include <initializer_list>
#include <map>
#include <ostream>
#include <string>

/// What the tests of bags share. A bag has no readers: what it holds is seen in the IRI that it
/// builds.
namespace foundation::network::tests {

using Base = iri::detail::ArgsBase<std::u32string>;

inline IRI parsed(const std::string& text)
{
    return IRI(text);
}

/// Builds what a text consists of. Its escapes are undone, and made anew where they are needed.
inline IRI built(const std::string& text)
{
    return IRI(IRIArgs(parsed(text)));
}

/// The components of an IRI as plain text, by their names; an absent one is not there. A path
/// always is.
using Components = std::map<std::string, std::string>;

inline Components componentsOf(const IRI& iri)
{
    constexpr auto PLAIN = IRI::Encoding::Decoded;
    Components result{{"path", iri.getPathUtf8(PLAIN)}};
    if (iri.hasScheme())
        result["scheme"] = iri.getSchemeUtf8();
    if (iri.hasUserInfo())
        result["userInfo"] = iri.getUserInfoUtf8(PLAIN);
    if (iri.hasHost())
        result["host"] = iri.getHostUtf8(PLAIN);
    if (iri.hasPort())
        result["port"] = iri.getPortUtf8();
    if (iri.hasQuery())
        result["query"] = iri.getQueryUtf8(PLAIN);
    if (iri.hasFragment())
        result["fragment"] = iri.getFragmentUtf8(PLAIN);
    return result;
}

inline Components componentsOf(const IRIArgs& args)
{
    return componentsOf(IRI(args));
}

/// A bag with all components, whose text is "s://u@h:8/p?q#f".
inline IRIArgs fullBag()
{
    IRIArgs args;
    args.setScheme("s").setUserInfo("u").setHost("h").setPort(8).setPath("/p").setQuery("q");
    return args.setFragment("f");
}

inline const Components fullComponents{{"scheme", "s"},  {"userInfo", "u"}, {"host", "h"},
                                       {"port", "8"},    {"path", "/p"},    {"query", "q"},
                                       {"fragment", "f"}};

/// One of the six components that are texts, with its operations on both classes.
struct TextComponent {
    const char* name;

    IRIArgs& (IRIArgs::*setUtf8)(const std::string&);
    IRIArgs& (IRIArgs::*setUtf16)(const std::u16string&);
    IRIArgs& (IRIArgs::*setList)(std::initializer_list<char>);
    IRIArgs& (IRIArgs::*clear)();

    void (Base::*setBaseUtf32)(std::u32string);
    void (Base::*setBaseUtf8)(const std::string&);
    void (Base::*setBaseUtf16)(const std::u16string&);
    void (Base::*setBaseList)(std::initializer_list<char>);
    void (Base::*clearBase)();
};

inline std::ostream& operator<<(std::ostream& stream, const TextComponent& component)
{
    return stream << component.name;
}

inline constexpr TextComponent textComponents[] = {
    {"scheme", &IRIArgs::setScheme, &IRIArgs::setScheme, &IRIArgs::setScheme, &IRIArgs::clearScheme,
     &Base::setScheme, &Base::setScheme, &Base::setScheme, &Base::setScheme, &Base::clearScheme},
    {"userInfo", &IRIArgs::setUserInfo, &IRIArgs::setUserInfo, &IRIArgs::setUserInfo,
     &IRIArgs::clearUserInfo, &Base::setUserInfo, &Base::setUserInfo, &Base::setUserInfo,
     &Base::setUserInfo, &Base::clearUserInfo},
    {"host", &IRIArgs::setHost, &IRIArgs::setHost, &IRIArgs::setHost, &IRIArgs::clearHost,
     &Base::setHost, &Base::setHost, &Base::setHost, &Base::setHost, &Base::clearHost},
    {"path", &IRIArgs::setPath, &IRIArgs::setPath, &IRIArgs::setPath, &IRIArgs::clearPath,
     &Base::setPath, &Base::setPath, &Base::setPath, &Base::setPath, &Base::clearPath},
    {"query", &IRIArgs::setQuery, &IRIArgs::setQuery, &IRIArgs::setQuery, &IRIArgs::clearQuery,
     &Base::setQuery, &Base::setQuery, &Base::setQuery, &Base::setQuery, &Base::clearQuery},
    {"fragment", &IRIArgs::setFragment, &IRIArgs::setFragment, &IRIArgs::setFragment,
     &IRIArgs::clearFragment, &Base::setFragment, &Base::setFragment, &Base::setFragment,
     &Base::setFragment, &Base::clearFragment},
};

/// A copy without one component, but with a host if the component is user information.
inline IRIArgs bagWithout(const TextComponent& component)
{
    IRIArgs args = fullBag();
    (static_cast<Base&>(args).*component.clearBase)();
    if (component.name == std::string("host"))
        args.clearUserInfo().clearPort();
    return args;
}

/// How a bag goes on to treat the text of its query.
struct QueryFlags {
    bool formEncoded;
    bool hasEscapes; ///< not seen if it is form-encoded

    bool operator==(const QueryFlags&) const = default;
};

inline std::ostream& operator<<(std::ostream& stream, const QueryFlags& flags)
{
    return stream << "form-encoded: " << flags.formEncoded << ", has escapes: " << flags.hasEscapes;
}

inline QueryFlags queryFlagsOf(IRIArgs args)
{
    const std::string shown = IRI(args.setQuery("é [")).getQueryUtf8();
    if (shown == "é%20[")
        return {false, false};
    if (shown == "é+%5B")
        return {false, true};
    EXPECT_EQ(shown, "%C3%A9%20%5B");
    return {true, false};
}

} // namespace foundation::network::tests
