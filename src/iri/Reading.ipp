#pragma once

// The readers of single components.

#include "except/Boundary.hpp"
#include "except/Throw.hpp"
#include "iri/ComponentCell.hpp"
#include "iri/ComponentText.hpp"
#include "iri/DotSegments.hpp"
#include "iri/OnDemand.hpp"
#include "iri/PercentCoding.hpp"
#include "text/LaxUtf8.hpp"
#include "text/Utf.hpp"

#include <foundation/network/iri/detail/TemplateIRI.hpp>

#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <utility>

namespace foundation::network::iri::detail {

/// Whether escapes and brackets are repaired for readers of @p encoding.
constexpr bool isStrict(Encoding encoding) noexcept
{
    return encoding == Encoding::IriStrict || encoding == Encoding::AsciiStrict;
}

template <class String>
auto TemplateIRI<String>::schemeText() const noexcept -> View
{
    return View(text_).substr(0, ranges_.schemeEnd);
}

template <class String>
auto TemplateIRI<String>::portText() const noexcept -> View
{
    if (ranges_.hostEnd == ranges_.pathBegin)
        return {};
    return View(text_).substr(ranges_.hostEnd + 1, ranges_.pathBegin - ranges_.hostEnd - 1);
}

// Whether the value has a component and the text of it; a path it always has, unless it is fresh.
template <class String>
bool TemplateIRI<String>::hasText(Component component) const noexcept
{
    if (!hasComponents_)
        return false;
    switch (component) {
    case Component::UserInfo:
        return flags_.hasUserInfo;
    case Component::Host:
        return flags_.hasHost;
    case Component::Path:
        return true;
    case Component::Query:
        return flags_.hasQuery;
    case Component::Fragment:
        break;
    }
    return flags_.hasFragment;
}

// The authority follows "//", or a scheme with ":" and "//". The value has one.
template <class String>
std::size_t TemplateIRI<String>::authorityBegin() const noexcept
{
    return flags_.hasScheme ? ranges_.schemeEnd + 3 : 2;
}

template <class String>
auto TemplateIRI<String>::textBetween(std::size_t begin, std::size_t end) const noexcept -> View
{
    return View(text_).substr(begin, end - begin);
}

template <class String>
auto TemplateIRI<String>::storedText(Component component) const noexcept -> View
{
    switch (component) {
    case Component::UserInfo:
        return textBetween(authorityBegin(), ranges_.hostBegin - 1);
    case Component::Host:
        return textBetween(ranges_.hostBegin, ranges_.hostEnd);
    case Component::Path:
        return textBetween(ranges_.pathBegin, ranges_.pathEnd);
    case Component::Query:
        return textBetween(ranges_.pathEnd + 1, ranges_.queryEnd);
    case Component::Fragment:
        break;
    }
    return textBetween(ranges_.queryEnd + 1, text_.size());
}

template <class String>
auto TemplateIRI<String>::onDemand() const -> OnDemand&
{
    if (OnDemand* made = onDemand_.load(std::memory_order_acquire))
        return *made;
    auto fresh = std::make_unique<OnDemand>();
    OnDemand* first = nullptr;
    if (onDemand_.compare_exchange_strong(first, fresh.get(), std::memory_order_acq_rel))
        return *fresh.release();
    return *first; // another thread was first
}

template <class String>
PathContext TemplateIRI<String>::pathContext() const noexcept
{
    return {flags_.hasScheme, flags_.hasUserInfo, flags_.hasHost};
}

// The components with their forms, among them the one asked for, if the value has it.
template <class String>
const StringParts<String>& TemplateIRI<String>::partsWith(Component component) const
{
    static const StringParts<String> none;
    if (!hasText(component))
        return none;
    StringParts<String>& parts = onDemand().parts;
    const auto stored = readStoredForm(component);
    parts.engage(component, stored.text, stored.encoding, pathContext(), flags_.queryReadsAsForm);
    return parts;
}

/// Whether a decoded text reads the same in an IRI.
inline bool isSameInIri(Component component, std::string_view text, const PathContext& path,
                        const QueryContext& query) noexcept
{
    switch (component) {
    case Component::UserInfo:
        return UserInfoCoder::isSameInIri(text, {});
    case Component::Host:
        return HostCoder::isSameInIri(text, {});
    case Component::Path:
        return PathCoder::isSameInIri(text, path);
    case Component::Query:
        return QueryCoder::isSameInIri(text, query);
    case Component::Fragment:
        break;
    }
    return FragmentCoder::isSameInIri(text, {});
}

/// @{
/// Whether a text that stands in an IRI reads the same in another form. The rules of the components
/// do not differ here.
inline bool isSameInAscii(std::string_view text) noexcept
{
    return FragmentCoder::isSameInAscii(text, {});
}

inline bool isSameDecoded(std::string_view text, const QueryContext& query) noexcept
{
    return QueryCoder::isSameDecoded(text, query);
}
/// @}

// Whether a component, of which the value has the text, reads the same in a form. What is made of it
// later does not depend on whether this was asked: the conversions between the forms of such a text
// all give that text.
template <class String>
bool TemplateIRI<String>::isStoredIn(Form form, Component component) const noexcept
{
    if (flags_.readsTheSame)
        return true;
    const View text = storedText(component);
    const QueryContext query{component == Component::Query && flags_.queryReadsAsForm};
    if (flags_.plain.contains(component))
        return form == Form::Decoded
               || (isSameInIri(component, text, pathContext(), query)
                   && (form == Form::Iri || isSameInAscii(text)));
    return form == Form::Iri
           || (form == Form::Ascii ? isSameInAscii(text) : isSameDecoded(text, query));
}

/// @throws std::runtime_error "Item not set: Host" and so on, if the component is absent
template <class String>
ComponentText TemplateIRI<String>::componentText(Component component,
                                                 const Encoding& encoding) const
{
    if (hasText(component) && isStoredIn(formRead(encoding), component))
        return ComponentText(storedText(component));
    return ComponentText(partsWith(component).get(component, encoding));
}

/// @throws std::runtime_error "Item not set", if the component is absent
template <class String>
auto TemplateIRI<String>::readStoredForm(Component component) const -> StoredText
{
    if (!hasText(component))
        throw std::runtime_error("Item not set");
    return {storedText(component),
            flags_.plain.contains(component) ? Encoding::Decoded : Encoding::Iri};
}

// The path, or the empty text if the value has none at all.
template <class String>
ComponentText TemplateIRI<String>::pathText(const Encoding& encoding) const
{
    return hasText(Component::Path) ? componentText(Component::Path, encoding) : ComponentText();
}

template <class String>
bool TemplateIRI<String>::pathHasDotSegments() const noexcept
{
    if (!hasComponents_ || !hasSourceText_.load(std::memory_order_acquire))
        return flags_.pathHasDotSegments;
    DotSegments known = dotSegments_.load(std::memory_order_relaxed);
    if (known == DotSegments::Unknown) { // a base is asked once for each of its references
        known = hasDotSegments(storedText(Component::Path)) ? DotSegments::Some : DotSegments::None;
        dotSegments_.store(known, std::memory_order_relaxed);
    }
    return known == DotSegments::Some;
}

// A component, of which the value has the text, as escapes are made or undone straight from there,
// which costs about what a copy does. Nothing, if the other forms have to tell.
template <class String>
std::optional<std::string> TemplateIRI<String>::convertedText(Component component,
                                                              const Encoding& encoding) const
{
    if (flags_.plain.contains(component))
        return std::nullopt;
    if (encoding == Encoding::Ascii)
        return encodeNonAscii(storedText(component));
    const bool readsAsForm = component == Component::Query && flags_.queryReadsAsForm;
    if (encoding == Encoding::Decoded && !readsAsForm)
        return decodeToUtf8(storedText(component));
    return std::nullopt;
}

// A component in lax UTF-8: a view of the value's text, or of `made`, which then holds it.
/// @throws std::runtime_error "Item not set: Host" and so on, if the component is absent
template <class String>
auto TemplateIRI<String>::laxText(Component component, const Encoding& encoding,
                                  std::string& made) const -> View
{
    if (hasText(component)) {
        if (isStoredIn(formRead(encoding), component))
            return storedText(component);
        if (auto converted = convertedText(component, encoding))
            return made = *std::move(converted);
    }
    return made = text::toLaxUtf8(partsWith(component).get(component, encoding));
}

// The path, or the empty text if the value has none at all.
template <class String>
auto TemplateIRI<String>::laxPath(const Encoding& encoding, std::string& made) const -> View
{
    return hasText(Component::Path) ? laxText(Component::Path, encoding, made) : View();
}

// What the value stores, as UTF-8.
template <class String>
std::string TemplateIRI<String>::toUtf8(View lax) const
{
    return flags_.exceedsUnicode ? text::laxToUtf8(lax) : std::string(lax);
}

template <class String>
template <class Convert>
auto TemplateIRI<String>::readComponent(Component component, const Encoding& encoding,
                                        Convert convert) const
{
    return componentText(component, encoding).visit([&](auto text) {
        // User information is never repaired; the brackets of an address in the host stay.
        if (!isStrict(encoding) || component == Component::UserInfo)
            return convert(text);
        const auto fixed = fixEscapes(text, component != Component::Host);
        return convert(decltype(text)(fixed));
    });
}

template <class String>
std::string TemplateIRI<String>::componentUtf8(Component component, const Encoding& encoding) const
{
    // What is asked for most is what the text has.
    if (hasText(component)
        && ((flags_.readsTheSame && !isStrict(encoding))
            || (encoding == Encoding::Iri && !flags_.plain.contains(component))))
        return std::string(storedText(component));
    return core::except::asInternalRuntimeError([&] {
        if (hasText(component))
            if (auto converted = convertedText(component, encoding))
                return *std::move(converted);
        return readComponent(component, encoding, [this](auto text) {
            if constexpr (std::is_same_v<decltype(text), View>)
                return toUtf8(text);
            else
                return text::toUtf8(text);
        });
    });
}

template <class String>
std::u16string TemplateIRI<String>::componentUtf16(Component component,
                                                   const Encoding& encoding) const
{
    return core::except::asInternalRuntimeError([&] {
        return readComponent(component, encoding, [](auto text) {
            if constexpr (std::is_same_v<decltype(text), View>)
                return text::laxToUtf16(text);
            else
                return text::toUtf16(text);
        });
    });
}

template <class String>
std::u16string TemplateIRI<String>::getScheme() const
{
    if (!flags_.hasScheme)
        core::except::throwRuntimeError("No scheme");
    return text::laxToUtf16(schemeText());
}

template <class String>
std::string TemplateIRI<String>::getSchemeUtf8() const
{
    if (!flags_.hasScheme)
        core::except::throwRuntimeError("No scheme");
    return std::string(schemeText());
}

template <class String>
std::u16string TemplateIRI<String>::getPort() const
{
    if (!flags_.hasPort)
        core::except::throwRuntimeError("No port");
    return text::laxToUtf16(portText());
}

template <class String>
std::string TemplateIRI<String>::getPortUtf8() const
{
    if (!flags_.hasPort)
        core::except::throwRuntimeError("No port");
    return std::string(portText());
}

template <class String>
std::uint16_t TemplateIRI<String>::getPortNumber() const
{
    if (!flags_.hasPort)
        core::except::throwRuntimeError("No port");
    return portNumber_;
}

template <class String>
std::u16string TemplateIRI<String>::getUserInfo(const Encoding& encoding) const
{
    return componentUtf16(Component::UserInfo, encoding);
}

template <class String>
std::string TemplateIRI<String>::getUserInfoUtf8(const Encoding& encoding) const
{
    return componentUtf8(Component::UserInfo, encoding);
}

template <class String>
std::u16string TemplateIRI<String>::getHost(const Encoding& encoding) const
{
    return componentUtf16(Component::Host, encoding);
}

template <class String>
std::string TemplateIRI<String>::getHostUtf8(const Encoding& encoding) const
{
    return componentUtf8(Component::Host, encoding);
}

template <class String>
std::u16string TemplateIRI<String>::getAuthority(const Encoding& encoding) const
{
    return core::except::asInternalRuntimeError(
        [&] { return text::laxToUtf16(getNativeAuthority(encoding)); });
}

template <class String>
std::string TemplateIRI<String>::getAuthorityUtf8(const Encoding& encoding) const
{
    return core::except::asInternalRuntimeError(
        [&] { return text::laxToUtf8(getNativeAuthority(encoding)); });
}

template <class String>
std::u16string TemplateIRI<String>::getPath(const Encoding& encoding) const
{
    return componentUtf16(Component::Path, encoding);
}

template <class String>
std::string TemplateIRI<String>::getPathUtf8(const Encoding& encoding) const
{
    return componentUtf8(Component::Path, encoding);
}

template <class String>
std::u16string TemplateIRI<String>::getQuery(const Encoding& encoding) const
{
    return componentUtf16(Component::Query, encoding);
}

template <class String>
std::string TemplateIRI<String>::getQueryUtf8(const Encoding& encoding) const
{
    return componentUtf8(Component::Query, encoding);
}

template <class String>
std::u16string TemplateIRI<String>::getFragment(const Encoding& encoding) const
{
    return componentUtf16(Component::Fragment, encoding);
}

template <class String>
std::string TemplateIRI<String>::getFragmentUtf8(const Encoding& encoding) const
{
    return componentUtf8(Component::Fragment, encoding);
}

template <class String>
std::u16string TemplateIRI<String>::getSchemeSpecificPart(const Encoding& encoding) const
{
    return core::except::asInternalRuntimeError(
        [&] { return text::laxToUtf16(getNativeSsp(encoding)); });
}

template <class String>
std::string TemplateIRI<String>::getSchemeSpecificPartUtf8(const Encoding& encoding) const
{
    return core::except::asInternalRuntimeError(
        [&] { return text::laxToUtf8(getNativeSsp(encoding)); });
}

} // namespace foundation::network::iri::detail
