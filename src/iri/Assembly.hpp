#pragma once

#include "iri/OnDemand.hpp"

#include <foundation/network/iri/detail/Component.hpp>
#include <foundation/network/iri/detail/StringParts.hpp>
#include <foundation/network/iri/detail/TemplateIRI.hpp>

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

namespace foundation::network::iri::detail {

/// A value while it is put together from components, its own or those of other values.
///
/// Components taken from another value keep the form in which they are stored there, so that no
/// text is converted. The value may be used once `finish` has run.
template <class String>
class Assembly {
public:
    using Iri = TemplateIRI<String>;
    using View = typename Iri::View;

    /// Goes on with @p iri, which has no source text.
    explicit Assembly(Iri& iri)
        : iri_(iri)
        , parts_(iri.onDemand().parts)
    {
    }

    ComponentFlags& flags() noexcept { return iri_.flags_; }

    void setScheme(View scheme)
    {
        setSchemeAndPort(String(scheme), String(iri_.portText()), iri_.portNumber_);
        flags().hasScheme = true;
    }

    void setPort(View port, std::uint16_t number)
    {
        setSchemeAndPort(String(iri_.schemeText()), String(port), number);
        flags().hasPort = true;
    }

    /// Stores a component and marks it as present.
    /// @param formEncoded  of the query only
    void set(Component component, String text, const Encoding& encoding, bool formEncoded = false)
    {
        parts_.set(component, std::move(text), encoding, formEncoded);
        if (bool* flag = presence(component))
            *flag = true;
    }

    /// Stores a path as plain text and marks it as not empty.
    void setDecodedPath(String&& path, bool isAbsolute)
    {
        flags().pathIsEmpty = false;
        flags().hasAbsolutePath = isAbsolute;
        set(Component::Path, std::move(path), Encoding::Decoded);
    }

    /// Stores a path as plain text and marks it as what it is.
    void setDecodedPath(String&& path)
    {
        if (path.empty()) {
            setEmptyPath();
        } else {
            const bool isAbsolute = path.front() == Iri::FORWARD_SLASH;
            setDecodedPath(std::move(path), isAbsolute);
        }
    }

    void setEmptyPath()
    {
        flags().pathIsEmpty = true;
        set(Component::Path, String(), Encoding::Decoded);
    }

    void takeScheme(const Iri& from)
    {
        if (from.hasScheme())
            setScheme(from.schemeText());
    }

    /// Takes user information, host and port, as far as @p from has them.
    void takeAuthority(const Iri& from)
    {
        if (from.hasUserInfo())
            take(Component::UserInfo, from);
        if (from.hasHost())
            take(Component::Host, from);
        if (from.hasPort())
            setPort(from.portText(), from.portNumber_);
    }

    void takeQuery(const Iri& from)
    {
        if (from.hasQuery())
            takeQuery(from, from.flags_.formEncoded);
    }

    /// @param readAsForm  whether the query's conversions treat it as form-encoded
    void takeQuery(const Iri& from, bool readAsForm)
    {
        const auto stored = from.readStoredForm(Component::Query);
        set(Component::Query, String(stored.text), stored.encoding, readAsForm);
        flags().formEncoded = from.flags_.formEncoded;
    }

    void takeFragment(const Iri& from)
    {
        if (from.hasFragment())
            take(Component::Fragment, from);
    }

    /// Takes a component that @p from has.
    void take(Component component, const Iri& from)
    {
        const auto stored = from.readStoredForm(component);
        set(component, String(stored.text), stored.encoding);
    }

    /// Makes the fragment of a whole value absent.
    static void dropFragment(Iri& iri) noexcept
    {
        iri.flags_.hasFragment = false;
        if (auto* made = iri.onDemand_.load())
            made->parts.clear(Component::Fragment);
    }

    /// Derives what follows from the components. Comes last.
    void finish()
    {
        ComponentFlags& flags = iri_.flags_;
        iri_.isEmpty_.store(parts_.isEmpty() && !flags.hasScheme && !flags.hasPort);
        flags.hasAuthority = flags.hasHost;
        if (!flags.hasScheme)
            return;
        parts_.setSchemePresent(true);
        flags.isAbsolute = true;
        if (!flags.hasAuthority)
            flags.isOpaque = !flags.hasAbsolutePath;
    }

private:
    // The flag that says whether a component is present; the path always is.
    bool* presence(Component component) noexcept
    {
        ComponentFlags& flags = iri_.flags_;
        switch (component) {
        case Component::UserInfo:
            return &flags.hasUserInfo;
        case Component::Host:
            return &flags.hasHost;
        case Component::Query:
            return &flags.hasQuery;
        case Component::Fragment:
            return &flags.hasFragment;
        case Component::Path:
            break;
        }
        return nullptr;
    }

    void setSchemeAndPort(String scheme, const String& port, std::uint16_t number)
    {
        ComponentRanges& ranges = iri_.ranges_;
        const bool hasPort = !port.empty();
        ranges = ComponentRanges();
        ranges.schemeEnd = scheme.size();
        ranges.hostEnd = scheme.size(); // behind which the port is looked for
        if (hasPort)
            scheme.append(1, Iri::COLON).append(port);
        ranges.pathBegin = scheme.size();
        iri_.text_ = std::move(scheme);
        iri_.portNumber_ = number;
    }

    Iri& iri_;
    StringParts<String>& parts_;
};

} // namespace foundation::network::iri::detail
