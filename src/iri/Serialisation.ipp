#pragma once

// The whole IRI as a text.

#include "except/Boundary.hpp"
#include "iri/OnDemand.hpp"
#include "iri/PercentCoding.hpp"
#include "iri/Reading.ipp"
#include "text/HexDigits.hpp"
#include "text/LaxUtf8.hpp"

#include <foundation/network/iri/detail/TemplateIRI.hpp>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>

namespace foundation::network::iri::detail {

/// @{
/// The places of the texts that were built for a form.
constexpr std::size_t plainIndex(Encoding encoding) noexcept
{
    const Form form = formRead(encoding);
    return form == Form::Decoded ? 0 : form == Form::Iri ? 1 : 2;
}

constexpr std::size_t strictIndex(Encoding encoding) noexcept
{
    return formRead(encoding) == Form::Iri ? 0 : 1;
}
/// @}

template <class String>
auto TemplateIRI<String>::hostInAuthority(const Encoding& encoding, std::string& made) const -> View
{
    try {
        return laxText(Component::Host, encoding, made);
    } catch (const std::runtime_error& failure) {
        // The text names the host already; naming it twice is meant.
        throw std::runtime_error(std::string(failure.what()) + ": Host (in getAuthority)");
    }
}

template <class String>
std::string TemplateIRI<String>::getNativeAuthority(const Encoding& encoding) const
{
    std::string madeUserInfo;
    std::string madeHost;
    const View userInfo =
        flags_.hasUserInfo ? laxText(Component::UserInfo, encoding, madeUserInfo) : View();
    const View host = hostInAuthority(encoding, madeHost);
    const View port = portText();
    std::string result;
    result.reserve(userInfo.size() + 1 + host.size() + 1 + port.size());
    if (flags_.hasUserInfo)
        result.append(userInfo).push_back(COMMERCIAL_AT);
    result.append(host);
    if (isStrict(encoding))
        result = fixEscapes(View(result), false);
    if (flags_.hasPort)
        result.append(1, COLON).append(port);
    return result;
}

template <class String>
void TemplateIRI<String>::appendComponent(std::string& result, Component component,
                                          const Encoding& encoding, bool strict) const
{
    std::string made;
    const View text = laxText(component, encoding, made);
    if (strict)
        result.append(fixEscapes(text, true));
    else
        result.append(text);
}

template <class String>
std::string TemplateIRI<String>::getNativeSsp(const Encoding& encoding) const
{
    const bool strict = isStrict(encoding);
    std::string result;
    if (flags_.hasAuthority)
        result.append(2, FORWARD_SLASH).append(getNativeAuthority(encoding));
    appendComponent(result, Component::Path, encoding, strict);
    if (flags_.hasQuery) {
        result.push_back(QUESTION_MARK);
        appendComponent(result, Component::Query, encoding, strict);
    }
    return result;
}

// The whole text. The authority is repaired as the encoding says, what follows it only if
// strictRest says so.
template <class String>
std::string TemplateIRI<String>::buildText(const Encoding& encoding, bool strictRest) const
{
    // The plain ASCII form of a parsed value is its text, escaped in one pass, since the delimiters
    // are ASCII. But a scheme is never escaped, and a fragment may have been dropped.
    if (encoding == Encoding::Ascii && !strictRest && hasComponents_ && hasSourceText_.load()
        && flags_.hasFragment == (text_.size() > ranges_.queryEnd) && isSameInAscii(schemeText()))
        return encodeNonAscii(View(text_));
    std::string result;
    result.reserve(text_.size());
    if (flags_.hasScheme)
        result.append(schemeText()).push_back(COLON);
    if (flags_.hasAuthority)
        result.append(2, FORWARD_SLASH).append(getNativeAuthority(encoding));
    appendComponent(result, Component::Path, encoding, strictRest);
    if (flags_.hasQuery) {
        result.push_back(QUESTION_MARK);
        appendComponent(result, Component::Query, encoding, strictRest);
    }
    if (flags_.hasFragment) {
        result.push_back(HASH_SIGN);
        appendComponent(result, Component::Fragment, encoding, strictRest);
    }
    return result;
}

// Whether all components of the value read in a form as its text has them.
template <class String>
bool TemplateIRI<String>::areStoredIn(Form form) const noexcept
{
    if (flags_.readsTheSame)
        return true;
    if (hasSourceText_.load(std::memory_order_acquire) && form == Form::Ascii)
        return isSameInAscii(text_); // in one pass
    constexpr std::array ALL = {Component::UserInfo, Component::Host, Component::Path,
                                Component::Query, Component::Fragment};
    return std::all_of(ALL.begin(), ALL.end(), [this, form](Component component) {
        return !hasText(component) || isStoredIn(form, component);
    });
}

/// Whether some "%" begins no escape, so that the strict forms repair it.
inline bool hasBarePercent(std::string_view text) noexcept
{
    for (std::size_t at = text.find('%'); at != text.npos; at = text.find('%', at + 1))
        if (!text::isEscapeAt(text, at))
            return true;
    return false;
}

// Whether the text of the value is the whole IRI in a form, also if a strict text was read before,
// after which the plain one shows a repaired authority: there must be nothing to repair.
//
// A text may show a fragment that the value does not have (see `Assembly::dropFragment`), and then
// it is not. But what was read once is what is read again, also from a copy that has lost its
// fragment since; so it is remembered, as a text that was made would be.
template <class String>
bool TemplateIRI<String>::isTextIn(Form form) const noexcept
{
    const auto bit = static_cast<std::uint8_t>(1U << static_cast<unsigned>(form));
    if ((formsOfText_.load(std::memory_order_relaxed) & bit) != 0)
        return true;
    const bool showsFragment = text_.size() > ranges_.queryEnd;
    if (!hasComponents_ || flags_.hasFragment != showsFragment || !areStoredIn(form))
        return false;
    const auto isRepaired = [this](Component component) {
        return hasText(component) && hasBarePercent(storedText(component));
    };
    if (form != Form::Decoded && !flags_.readsTheSame
        && (isRepaired(Component::UserInfo) || isRepaired(Component::Host)))
        return false;
    formsOfText_.fetch_or(bit, std::memory_order_relaxed);
    return true;
}

template <class String>
const std::string& TemplateIRI<String>::toNativeStringFromParts(const Encoding& encoding) const
{
    if (encoding == Encoding::Iri && hasSourceText_.load(std::memory_order_acquire))
        return text_;
    if (!isStrict(encoding) && isTextIn(formRead(encoding)))
        return text_;
    if (isEmpty()) {
        static const std::string empty;
        return empty;
    }
    const OnDemand& texts = onDemand();
    const PublishedText& plain = texts.plainTexts[plainIndex(encoding)];
    if (!isStrict(encoding)) {
        const std::string* made = plain.get();
        if (made != nullptr)
            return *made;
        return plain.publish(std::make_unique<const std::string>(buildText(encoding, false)));
    }
    const PublishedText& strict = texts.strictTexts[strictIndex(encoding)];
    if (const std::string* made = strict.get())
        return *made;
    // A first strict read fixes what later plain reads of the form show, too: the authority in
    // their text is the repaired one from now on. That is meant. A parsed value shows its own text
    // there.
    auto strictText = std::make_unique<const std::string>(buildText(encoding, true));
    const bool plainIsRead = formRead(encoding) != Form::Iri || !hasSourceText_.load();
    if (plainIsRead && plain.get() == nullptr)
        plain.publish(std::make_unique<const std::string>(buildText(encoding, false)));
    return strict.publish(std::move(strictText));
}

template <class String>
std::u16string TemplateIRI<String>::toStringFromParts(const Encoding& encoding) const
{
    return text::laxToUtf16(toNativeStringFromParts(encoding));
}

template <class String>
std::u16string TemplateIRI<String>::toString(bool strict) const
{
    return toStringFromParts(strict ? Encoding::IriStrict : Encoding::Iri);
}

template <class String>
std::u16string TemplateIRI<String>::toAsciiString(bool strict) const
{
    return toStringFromParts(strict ? Encoding::AsciiStrict : Encoding::Ascii);
}

template <class String>
std::string TemplateIRI<String>::toStringUtf8(const Encoding& encoding) const
{
    return core::except::asInternalRuntimeError(
        [&] { return toUtf8(toNativeStringFromParts(encoding)); });
}

template <class String>
std::string TemplateIRI<String>::toAsciiStringUtf8(const Encoding& encoding) const
{
    return toStringUtf8(encoding);
}

} // namespace foundation::network::iri::detail
