#pragma once

// Equality, order and hash. All are exact: no case is folded and no escape undone.

#include "iri/OnDemand.hpp"
#include "iri/Serialisation.ipp"
#include "text/Comparing.hpp"
#include "text/Fnv1a.hpp"

#include <foundation/network/iri/detail/TemplateIRI.hpp>

namespace foundation::network::iri::detail {

template <class String>
bool TemplateIRI<String>::differsInSchemeOrPort(const TemplateIRI& other) const noexcept
{
    // The number of a port counts here, not its text.
    return hasScheme() != other.hasScheme() || !text::areEqual(schemeText(), other.schemeText())
           || hasPort() != other.hasPort() || portNumber_ != other.portNumber_;
}

template <class String>
bool TemplateIRI<String>::differsInText(const TemplateIRI& other) const
{
    // Two texts that lie there are compared for less than their hashes cost. But the hashes of what
    // was compared count as computed, as a value that was emptied since would show.
    const auto isText = [](const TemplateIRI& iri) {
        return iri.hasSourceText_.load(std::memory_order_acquire) && iri.hasComponents_
               && iri.hash_.isOpen();
    };
    if (isText(*this) && isText(other)) {
        hash_.promise();
        other.hash_.promise();
        return !text::areEqual(text_, other.text_);
    }
    return hashValue() != other.hashValue()
           || !text::areEqual(toNativeStringFromParts(Encoding::Iri),
                              other.toNativeStringFromParts(Encoding::Iri));
}

// Whether a component of two built values differs, compared in the form in which the left side stores
// it. A component whose text was moved out is still present.
template <class String>
bool TemplateIRI<String>::differsIn(Component component, const TemplateIRI& other) const
{
    if (!hasText(component) || !other.hasText(component))
        return hasText(component) != other.hasText(component);
    const auto mine = readStoredForm(component);
    std::string made;
    return !text::areEqual(mine.text, other.componentText(component, mine.encoding).laxIn(made));
}

template <class String>
bool TemplateIRI<String>::differsInComponents(const TemplateIRI& other) const
{
    // One after the other: what stands behind a difference is neither converted nor kept, and fails
    // nothing.
    return hasUserInfo() != other.hasUserInfo() || differsIn(Component::UserInfo, other)
           || hasHost() != other.hasHost() || differsIn(Component::Host, other)
           || differsIn(Component::Path, other) || hasQuery() != other.hasQuery()
           || differsIn(Component::Query, other) || hasFragment() != other.hasFragment()
           || differsIn(Component::Fragment, other);
}

template <class String>
bool TemplateIRI<String>::operator==(const TemplateIRI& other) const
{
    if (isEmpty() || other.isEmpty())
        return isEmpty() == other.isEmpty();
    if (differsInSchemeOrPort(other))
        return false;
    if (hasSourceText_.load() || other.hasSourceText_.load())
        return !differsInText(other);
    return (flags_.partsAreEmpty && other.flags_.partsAreEmpty) || !differsInComponents(other);
}

template <class String>
bool TemplateIRI<String>::operator!=(const TemplateIRI& other) const
{
    if (isEmpty() || other.isEmpty())
        return isEmpty() != other.isEmpty();
    if (differsInSchemeOrPort(other))
        return true;
    if (hasSourceText_.load() || other.hasSourceText_.load())
        return differsInText(other);
    // Not always the opposite of ==, and that is meant.
    if (flags_.partsAreEmpty || other.flags_.partsAreEmpty)
        return flags_.partsAreEmpty != other.flags_.partsAreEmpty;
    return differsInComponents(other);
}

template <class String>
bool TemplateIRI<String>::operator<(const TemplateIRI& other) const
{
    const bool isParsed = hasSourceText_.load(std::memory_order_acquire);
    const bool isOtherParsed = other.hasSourceText_.load(std::memory_order_acquire);
    if (isParsed && isOtherParsed)
        return text::isLess(text_, other.text_);
    // Two built values sort by another form than a built and a parsed one. So this is no strict
    // weak order over a mixture of them, and that is meant.
    const Encoding encoding = isParsed || isOtherParsed ? Encoding::Iri : Encoding::Decoded;
    return text::isLess(toNativeStringFromParts(encoding), other.toNativeStringFromParts(encoding));
}

template <class String>
std::uint64_t TemplateIRI<String>::generateHash() const
{
    return isEmpty() ? 0 : text::fnv1a(View(toNativeStringFromParts(Encoding::Iri)));
}

template <class String>
std::uint64_t TemplateIRI<String>::hashValue() const
{
    return hash_.get([this] { return generateHash(); });
}

} // namespace foundation::network::iri::detail
