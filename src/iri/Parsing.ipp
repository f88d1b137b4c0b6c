#pragma once

// The way from a text to its components.

#include "except/Throw.hpp"
#include "iri/Parts.ipp"
#include "iri/ReferenceReading.hpp"
#include "text/CodePointIterator.hpp"
#include "text/Utf.hpp"

#include <foundation/network/iri/detail/TemplateIRI.hpp>

#include <cstddef>
#include <optional>
#include <string_view>
#include <utility>

namespace foundation::network::iri::detail {

template <class String>
template <class Unit>
void TemplateIRI<String>::readOrThrow(std::basic_string_view<Unit> text)
{
    if (tryRead(text))
        return;
    text::requireWellFormed(text);
    core::except::throwLogicError("IRI parsing failed");
}

// The grammar looks at the bytes where they lie, and refuses before anything is allocated.
template <class String>
bool TemplateIRI<String>::tryRead(std::string_view utf8)
{
    if (!takeApart(utf8))
        return false;
    if (flags_.readsTheSame) // ASCII, as it mostly is
        text_ = utf8;
    else
        text_ = text::withUsualLeads(utf8);
    return true;
}

template <class String>
bool TemplateIRI<String>::tryRead(std::u16string_view utf16)
{
    std::optional<std::string> utf8 = text::encodeUtf8(utf16);
    if (!utf8 || !takeApart(*utf8))
        return false;
    text_ = *std::move(utf8);
    return true;
}

template <class String>
bool TemplateIRI<String>::takeApart(std::string_view utf8)
{
    if (text::isAllAscii(utf8)) {
        flags_.readsTheSame = utf8.find('%') == utf8.npos;
        return takeApartBy<text::AsciiIterator>(utf8);
    }
    return !text::endsInsideSequence(utf8) && takeApartBy<text::Utf8Iterator>(utf8);
}

template <class String>
template <class TextIt>
bool TemplateIRI<String>::takeApartBy(std::string_view utf8)
{
    hasSourceText_.store(true, std::memory_order_relaxed); // nobody else can see the value yet
    hasComponents_ = true;
    if (utf8.empty())
        return true; // the empty value, whose path can be read
    isEmpty_.store(false, std::memory_order_relaxed);

    const char* const begin = utf8.data();
    TextIt first(begin);
    Parts<TextIt> parts;
    if (!readReference(first, TextIt(begin + utf8.size()), parts, portNumber_))
        return false;
    setPartFlags(parts);
    parts.update();
    ranges_ =
        rangesOf(parts, [begin](TextIt at) { return static_cast<std::size_t>(at.base() - begin); });
    return true;
}

template <class String>
template <class TextIt>
void TemplateIRI<String>::setPartFlags(const Parts<TextIt>& parts)
{
    const HierarchicalPart<TextIt>& hierarchicalPart = parts.hierarchicalPart;
    const auto& path = hierarchicalPart.path;
    flags_.hasScheme = parts.scheme.has_value();
    flags_.hasQuery = parts.query.has_value();
    flags_.hasFragment = parts.fragment.has_value();
    flags_.hasHost = hierarchicalPart.host.has_value();
    flags_.hasUserInfo = hierarchicalPart.userInfo.has_value();
    flags_.hasAuthority = flags_.hasHost; // "//" always yields a host, which may be empty
    flags_.hasPort = hierarchicalPart.port.has_value();
    flags_.pathIsEmpty = path->empty();
    flags_.hasAbsolutePath = !path->empty() && *path->begin() == U'/';
    flags_.isAbsolute = flags_.hasScheme;
    flags_.isOpaque = flags_.hasScheme && !flags_.hasHost && !flags_.hasAbsolutePath;
}

} // namespace foundation::network::iri::detail
