#pragma once

// The readers of single components.

#include "except/Boundary.hpp"
#include "except/Throw.hpp"
#include "iri/ComponentCell.hpp"
#include "iri/DotSegments.hpp"
#include "iri/OnDemand.hpp"
#include "iri/PercentCoding.hpp"
#include "text/Utf.hpp"

#include <foundation/network/iri/detail/TemplateIRI.hpp>

#include <memory>

namespace foundation::network::iri::detail {

/// Whether escapes and brackets are repaired for readers of @p encoding.
constexpr bool isStrict(Encoding encoding) noexcept
{
    return encoding == Encoding::IriStrict || encoding == Encoding::AsciiStrict;
}

/// The transcoders as function objects.
inline constexpr auto toUtf16 = [](std::u32string_view text) { return text::toUtf16(text); };
inline constexpr auto toUtf8 = [](std::u32string_view text) { return text::toUtf8(text); };

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

// Whether the text of the value shows a component, be it absent or present.
template <class String>
bool TemplateIRI<String>::isTextStored(Component component) const noexcept
{
    if (!hasSourceText_.load(std::memory_order_acquire) || isMovedFrom_)
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

template <class String>
auto TemplateIRI<String>::storedText(Component component) const noexcept -> View
{
    const auto between = [this](std::size_t begin, std::size_t end) {
        return View(text_).substr(begin, end - begin);
    };
    switch (component) {
    case Component::UserInfo: {
        // The authority follows "//", or a scheme with ":" and "//".
        const std::size_t begin = flags_.hasScheme ? ranges_.schemeEnd + 3 : 2;
        return between(begin, ranges_.hostBegin - 1);
    }
    case Component::Host:
        return between(ranges_.hostBegin, ranges_.hostEnd);
    case Component::Path:
        return between(ranges_.pathBegin, ranges_.pathEnd);
    case Component::Query:
        return between(ranges_.pathEnd + 1, ranges_.queryEnd);
    case Component::Fragment:
        break;
    }
    return between(ranges_.queryEnd + 1, text_.size());
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

// The components that were stored one by one.
template <class String>
const StringParts<String>& TemplateIRI<String>::storedParts() const
{
    static const StringParts<String> none;
    const OnDemand* made = onDemand_.load(std::memory_order_acquire);
    return made != nullptr ? made->parts : none;
}

// The components, among them the one asked for, if the value has it. A parsed value stores it in
// the form of its text now.
template <class String>
const StringParts<String>& TemplateIRI<String>::partsWith(Component component) const
{
    if (!isTextStored(component))
        return storedParts();
    StringParts<String>& parts = onDemand().parts;
    parts.engage(component, storedText(component),
                 PathContext{flags_.hasScheme, flags_.hasUserInfo, flags_.hasHost});
    return parts;
}

/// Whether a component of a parsed text reads the same in a form. The rules of the components differ
/// in neither direction that matters here.
inline bool isSameIn(Form form, std::u32string_view text) noexcept
{
    return form == Form::Iri
           || (form == Form::Ascii ? FragmentCoder::isSameInAscii(text, {})
                                   : FragmentCoder::isSameDecoded(text, {}));
}

/// @throws std::runtime_error "Item not set: Host" and so on, if the component is absent
template <class String>
auto TemplateIRI<String>::componentText(Component component, const Encoding& encoding) const -> View
{
    if (isTextStored(component)) {
        const View text = storedText(component);
        if (isSameIn(formRead(encoding), text))
            return text;
    }
    return partsWith(component).get(component, encoding);
}

/// @throws std::runtime_error "Item not set", if the component is absent
template <class String>
auto TemplateIRI<String>::readStoredForm(Component component) const -> StoredText
{
    if (isTextStored(component))
        return {storedText(component), Encoding::Iri};
    const auto stored = storedParts().readStoredForm(component);
    return {stored.text, stored.encoding};
}

template <class String>
bool TemplateIRI<String>::hasStoredPath() const noexcept
{
    return isTextStored(Component::Path) || storedParts().hasText(Component::Path);
}

// The path, or the empty text if the value has none at all.
template <class String>
auto TemplateIRI<String>::pathText(const Encoding& encoding) const -> View
{
    return hasStoredPath() ? componentText(Component::Path, encoding) : View();
}

template <class String>
bool TemplateIRI<String>::pathHasDotSegments() const noexcept
{
    return isTextStored(Component::Path) ? hasDotSegments(storedText(Component::Path))
                                         : flags_.pathHasDotSegments;
}

template <class String>
template <class Convert>
auto TemplateIRI<String>::readComponent(Component component, const Encoding& encoding,
                                        Convert convert) const
{
    return core::except::asInternalRuntimeError([&] {
        const View text = componentText(component, encoding);
        // User information is never repaired; the brackets of an address in the host stay.
        if (!isStrict(encoding) || component == Component::UserInfo)
            return convert(text);
        return convert(fixEscapes(text, component != Component::Host));
    });
}

template <class String>
std::u16string TemplateIRI<String>::getScheme() const
{
    if (!flags_.hasScheme)
        core::except::throwRuntimeError("No scheme");
    return text::toUtf16(schemeText());
}

template <class String>
std::string TemplateIRI<String>::getSchemeUtf8() const
{
    if (!flags_.hasScheme)
        core::except::throwRuntimeError("No scheme");
    return text::toUtf8(schemeText());
}

template <class String>
std::u16string TemplateIRI<String>::getPort() const
{
    if (!flags_.hasPort)
        core::except::throwRuntimeError("No port");
    return text::toUtf16(portText());
}

template <class String>
std::string TemplateIRI<String>::getPortUtf8() const
{
    if (!flags_.hasPort)
        core::except::throwRuntimeError("No port");
    return text::toUtf8(portText());
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
    return readComponent(Component::UserInfo, encoding, toUtf16);
}

template <class String>
std::string TemplateIRI<String>::getUserInfoUtf8(const Encoding& encoding) const
{
    return readComponent(Component::UserInfo, encoding, toUtf8);
}

template <class String>
std::u16string TemplateIRI<String>::getHost(const Encoding& encoding) const
{
    return readComponent(Component::Host, encoding, toUtf16);
}

template <class String>
std::string TemplateIRI<String>::getHostUtf8(const Encoding& encoding) const
{
    return readComponent(Component::Host, encoding, toUtf8);
}

template <class String>
std::u16string TemplateIRI<String>::getAuthority(const Encoding& encoding) const
{
    return core::except::asInternalRuntimeError(
        [&] { return text::toUtf16(getNativeAuthority(encoding)); });
}

template <class String>
std::string TemplateIRI<String>::getAuthorityUtf8(const Encoding& encoding) const
{
    return core::except::asInternalRuntimeError(
        [&] { return text::toUtf8(getNativeAuthority(encoding)); });
}

template <class String>
std::u16string TemplateIRI<String>::getPath(const Encoding& encoding) const
{
    return readComponent(Component::Path, encoding, toUtf16);
}

template <class String>
std::string TemplateIRI<String>::getPathUtf8(const Encoding& encoding) const
{
    return readComponent(Component::Path, encoding, toUtf8);
}

template <class String>
std::u16string TemplateIRI<String>::getQuery(const Encoding& encoding) const
{
    return readComponent(Component::Query, encoding, toUtf16);
}

template <class String>
std::string TemplateIRI<String>::getQueryUtf8(const Encoding& encoding) const
{
    return readComponent(Component::Query, encoding, toUtf8);
}

template <class String>
std::u16string TemplateIRI<String>::getFragment(const Encoding& encoding) const
{
    return readComponent(Component::Fragment, encoding, toUtf16);
}

template <class String>
std::string TemplateIRI<String>::getFragmentUtf8(const Encoding& encoding) const
{
    return readComponent(Component::Fragment, encoding, toUtf8);
}

template <class String>
std::u16string TemplateIRI<String>::getSchemeSpecificPart(const Encoding& encoding) const
{
    return core::except::asInternalRuntimeError(
        [&] { return text::toUtf16(getNativeSsp(encoding)); });
}

template <class String>
std::string TemplateIRI<String>::getSchemeSpecificPartUtf8(const Encoding& encoding) const
{
    return core::except::asInternalRuntimeError(
        [&] { return text::toUtf8(getNativeSsp(encoding)); });
}

} // namespace foundation::network::iri::detail
