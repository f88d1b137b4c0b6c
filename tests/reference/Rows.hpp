#pragma once

#include <foundation/network/IRI.hpp>
#include <foundation/network/IRIArgs.hpp>

#include <string>
#include <utility>

/// What the tables of resolving and relativising are made of.
namespace foundation::network::tests {

/// Something taken with a base, and what comes of it.
struct Row {
    const char* iri;
    const char* base;
    const char* result;
};

inline IRI make(const std::string& text)
{
    return IRI(text);
}

inline IRI resolved(const std::string& reference, const std::string& base)
{
    return IRI(reference).resolveAgainst(IRI(base));
}

inline IRI relative(const std::string& iri, const std::string& base)
{
    return IRI(iri).makeRelativeTo(IRI(base));
}

/// A value with a path and no more, of plain text.
inline IRI pathOf(const std::string& path)
{
    IRIArgs args;
    args.setPath(path);
    return IRI(args);
}

/// The predicates that hold, in the order of the header.
inline std::string predicatesOf(const IRI& iri)
{
    const std::pair<const char*, bool> all[] = {
        {"empty", iri.isEmpty()},          {"scheme", iri.hasScheme()},
        {"authority", iri.hasAuthority()}, {"query", iri.hasQuery()},
        {"fragment", iri.hasFragment()},   {"absolutePath", iri.hasAbsolutePath()},
        {"absolute", iri.isAbsolute()},    {"opaque", iri.isOpaque()},
        {"port", iri.hasPort()},           {"host", iri.hasHost()},
        {"userInfo", iri.hasUserInfo()},
    };
    std::string result;
    for (const auto& [name, holds] : all)
        if (holds)
            result.append(result.empty() ? "" : " ").append(name);
    return result;
}

} // namespace foundation::network::tests
