// The way from a bag of components to a value, and back.

#include "except/Throw.hpp"
#include "iri/Assembly.hpp"
#include "iri/DotSegments.hpp"
#include "iri/PercentCoding.hpp"
#include "iri/Reading.ipp"
#include "iri/grammar/SchemeGrammar.hpp"
#include "text/LaxUtf8.hpp"

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

    Building(Iri& iri, const Args& args)
        : assembly_(iri)
        , args_(args)
    {
    }

    void run()
    {
        if (args_.hasScheme_)
            buildScheme();
        if (args_.hasUserInfo_)
            buildUserInfo();
        if (args_.hasHost_)
            set(Component::Host, args_.host_, host_);
        if (args_.hasPort_)
            buildPort();
        buildPath();
        if (args_.hasQuery_)
            buildQuery();
        if (args_.hasFragment_)
            set(Component::Fragment, args_.fragment_, fragment_);
        assembly_.finish();
    }

    /// Overwrites or clears path, query and fragment; of the rest, only adds what the value has, so
    /// that a bag that was used before keeps it. If a component cannot be decoded, nothing changes.
    static void toArgs(const Iri& iri, Args& args)
    {
        const auto textOf = [&iri](Component component, bool isPresent) {
            return isPresent ? iri.componentText(component, Encoding::Decoded).elements()
                             : String();
        };
        String scheme = text::fromLaxUtf8(iri.schemeText());
        String userInfo = textOf(Component::UserInfo, iri.hasUserInfo());
        String host = textOf(Component::Host, iri.hasHost());
        String path = iri.pathText(Encoding::Decoded).elements();
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
    void set(Component component, const String& text, std::string& lax)
    {
        lax = text::toLaxUtf8(text);
        assembly_.set(component, lax, Encoding::Decoded);
    }

    void buildScheme()
    {
        const String& scheme = args_.scheme_;
        auto first = scheme.begin();
        const bool isScheme =
            args_.schemeFromIri_
            || (grammar::parseScheme(first, scheme.end()) && first == scheme.end());
        if (!isScheme)
            core::except::throwLogicError("Malformed scheme");
        scheme_ = text::toLaxUtf8(scheme);
        assembly_.setScheme(scheme_);
    }

    void buildUserInfo()
    {
        if (!args_.hasHost_)
            core::except::throwLogicError("User Info requires a host");
        set(Component::UserInfo, args_.userInfo_, userInfo_);
    }

    void buildPort()
    {
        if (!args_.hasHost_)
            core::except::throwLogicError("Port requires a host");
        port_ = std::to_string(args_.port_);
        assembly_.setPort(port_, args_.port_);
    }

    void buildPath()
    {
        if (!args_.hasPath_) {
            assembly_.setEmptyPath();
            return;
        }
        path_ = text::toLaxUtf8(args_.path_);
        if (args_.hasHost_ && !path_.empty() && path_.front() != Iri::FORWARD_SLASH)
            core::except::throwLogicError("Path cannot be relative if authority present");
        assembly_.setDecodedPath({}, path_);
        assembly_.flags().pathHasDotSegments = hasDotSegments(path_);
    }

    // A query that was put together from pairs carries its escapes already.
    void buildQuery()
    {
        const bool formEncoded = args_.queryFormEncoded_ || args_.queryHasEscapes_;
        query_ = text::toLaxUtf8(args_.queryFormEncoded_
                                     ? encodeNonAscii(std::u32string_view(args_.query_))
                                     : args_.query_);
        assembly_.setQuery(query_, Encoding::Decoded, formEncoded, formEncoded);
    }

    Assembly<String> assembly_;
    const Args& args_;
    std::string scheme_;
    std::string userInfo_;
    std::string host_;
    std::string port_;
    std::string path_;
    std::string query_;
    std::string fragment_;
};

template <class String>
TemplateIRI<String>::TemplateIRI(const ArgsBase<String>& args)
    : TemplateIRI()
{
    Building<String>(*this, args).run();
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
