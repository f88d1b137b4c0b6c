// The way from a bag of components to a value, and back.

#include "except/Throw.hpp"
#include "iri/Assembly.hpp"
#include "iri/DotSegments.hpp"
#include "iri/PercentCoding.hpp"
#include "iri/Reading.ipp"
#include "iri/grammar/SchemeGrammar.hpp"

#include <foundation/network/iri/detail/ArgsBase.hpp>
#include <foundation/network/iri/detail/TemplateIRI.hpp>

#include <string>

namespace foundation::network::iri::detail {

/// Reads and fills the bags of components.
///
/// What is built is never parsed. Only the scheme is checked, and that
/// the components go together; what a component may not show is escaped when somebody reads it.
template <class String>
class Building {
public:
    using Iri = TemplateIRI<String>;
    using Args = ArgsBase<String>;

    static void buildFromArgs(Iri& iri, const Args& args)
    {
        Assembly<String> assembly(iri);
        String port;
        String query;
        if (args.hasScheme_)
            buildScheme(assembly, args);
        if (args.hasUserInfo_)
            buildUserInfo(assembly, args);
        if (args.hasHost_)
            assembly.set(Component::Host, args.host_, Encoding::Decoded);
        if (args.hasPort_)
            buildPort(assembly, args, port);
        buildPath(assembly, args);
        if (args.hasQuery_)
            buildQuery(assembly, args, query);
        if (args.hasFragment_)
            assembly.set(Component::Fragment, args.fragment_, Encoding::Decoded);
        assembly.finish();
    }

    /// Overwrites or clears path, query and fragment; of the rest, only adds what the value has, so
    /// that a bag that was used before keeps it. If a component cannot be decoded, nothing changes.
    static void toArgs(const Iri& iri, Args& args)
    {
        const auto textOf = [&iri](Component component, bool isPresent) {
            return isPresent ? String(iri.componentText(component, Encoding::Decoded)) : String();
        };
        String scheme(iri.schemeText());
        String userInfo = textOf(Component::UserInfo, iri.hasUserInfo());
        String host = textOf(Component::Host, iri.hasHost());
        String path(iri.pathText(Encoding::Decoded));
        String query = textOf(Component::Query, iri.hasQuery());
        String fragment = textOf(Component::Fragment, iri.hasFragment());

        if (iri.hasScheme()) {
            args.setScheme(std::move(scheme));
            args.schemeFromIri_ = true; // was valid once, and need not be checked again
        }
        if (iri.hasUserInfo())
            args.setUserInfo(std::move(userInfo));
        if (iri.hasHost())
            args.setHost(std::move(host));
        if (iri.hasPort())
            args.setPort(iri.portNumber_);
        args.setPath(std::move(path));
        args.query_ = std::move(query);
        args.hasQuery_ = iri.hasQuery();
        args.queryFormEncoded_ = iri.flags_.formEncoded;
        args.queryHasEscapes_ = false;
        args.fragment_ = std::move(fragment);
        args.hasFragment_ = iri.hasFragment();
    }

private:
    static void buildScheme(Assembly<String>& assembly, const Args& args)
    {
        const String& scheme = args.scheme_;
        auto first = scheme.begin();
        const bool isScheme =
            args.schemeFromIri_
            || (grammar::parseScheme(first, scheme.end()) && first == scheme.end());
        if (!isScheme)
            core::except::throwLogicError("Malformed scheme");
        assembly.setScheme(scheme);
    }

    static void buildUserInfo(Assembly<String>& assembly, const Args& args)
    {
        if (!args.hasHost_)
            core::except::throwLogicError("User Info requires a host");
        assembly.set(Component::UserInfo, args.userInfo_, Encoding::Decoded);
    }

    static void buildPort(Assembly<String>& assembly, const Args& args, String& port)
    {
        if (!args.hasHost_)
            core::except::throwLogicError("Port requires a host");
        const std::string digits = std::to_string(args.port_);
        port.assign(digits.begin(), digits.end());
        assembly.setPort(port, args.port_);
    }

    static void buildPath(Assembly<String>& assembly, const Args& args)
    {
        if (!args.hasPath_) {
            assembly.setEmptyPath();
            return;
        }
        const String& path = args.path_;
        if (args.hasHost_ && !path.empty() && path.front() != Iri::FORWARD_SLASH)
            core::except::throwLogicError("Path cannot be relative if authority present");
        assembly.setDecodedPath({}, path);
        assembly.flags().pathHasDotSegments = hasDotSegments(path);
    }

    // A query that was put together from pairs carries its escapes already.
    static void buildQuery(Assembly<String>& assembly, const Args& args, String& query)
    {
        const bool formEncoded = args.queryFormEncoded_ || args.queryHasEscapes_;
        query = args.queryFormEncoded_ ? encodeNonAscii(args.query_) : args.query_;
        assembly.setQuery(query, Encoding::Decoded, formEncoded, formEncoded);
    }
};

template <class String>
TemplateIRI<String>::TemplateIRI(const ArgsBase<String>& args)
    : TemplateIRI()
{
    Building<String>::buildFromArgs(*this, args);
}

template <class String>
void TemplateIRI<String>::toArgs(ArgsBase<String>& args) const
{
    Building<String>::toArgs(*this, args);
}

template ZKFLNETWORK_API TemplateIRI<std::u32string>::TemplateIRI(
    const ArgsBase<std::u32string>& args);
template ZKFLNETWORK_API void TemplateIRI<std::u32string>::toArgs(
    ArgsBase<std::u32string>& args) const;

} // namespace foundation::network::iri::detail
