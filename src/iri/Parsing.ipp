#pragma once

// The way from a text to its components.

#include "except/Throw.hpp"
#include "iri/ReferenceReading.hpp"
#include "text/Utf.hpp"

#include <foundation/network/iri/detail/TemplateIRI.hpp>

#include <cstddef>
#include <string_view>

namespace foundation::network::iri::detail {

template <class String>
void TemplateIRI<String>::parseOrThrow()
{
    if (!parse())
        core::except::throwLogicError("IRI parsing failed");
}

template <class String>
bool TemplateIRI<String>::tryRead(std::string_view utf8)
{
    return text::decodeUtf8(utf8, text_) && parse();
}

template <class String>
bool TemplateIRI<String>::tryRead(std::u16string_view utf16)
{
    return !text::decodeUtf16(utf16, text_) && parse();
}

template <class String>
bool TemplateIRI<String>::parse()
{
    hasSourceText_.store(true, std::memory_order_relaxed); // nobody else can see the value yet
    if (text_.empty())
        return true; // the empty value, whose path can be read
    isEmpty_.store(false, std::memory_order_relaxed);

    const String& text = text_;
    It first = text.begin();
    Parts<It> parts;
    if (!readReference(first, text.end(), parts, portNumber_))
        return false;
    setPartFlags(parts);
    parts.update();
    ranges_ =
        rangesOf(parts, [&text](It at) { return static_cast<std::size_t>(at - text.begin()); });
    return true;
}

template <class String>
void TemplateIRI<String>::setPartFlags(const Parts<It>& parts)
{
    const HierarchicalPart<It>& hierarchicalPart = parts.hierarchicalPart;
    const auto& path = hierarchicalPart.path;
    flags_.hasScheme = parts.scheme.has_value();
    flags_.hasQuery = parts.query.has_value();
    flags_.hasFragment = parts.fragment.has_value();
    flags_.hasHost = hierarchicalPart.host.has_value();
    flags_.hasUserInfo = hierarchicalPart.userInfo.has_value();
    flags_.hasAuthority = flags_.hasHost; // "//" always yields a host, which may be empty
    flags_.hasPort = hierarchicalPart.port.has_value();
    flags_.pathIsEmpty = path->empty();
    flags_.hasAbsolutePath = !path->empty() && path->front() == FORWARD_SLASH;
    flags_.isAbsolute = flags_.hasScheme;
    flags_.isOpaque = flags_.hasScheme && !flags_.hasHost && !flags_.hasAbsolutePath;
}

} // namespace foundation::network::iri::detail
