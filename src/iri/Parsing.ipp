#pragma once

// The way from a text to its components.

#include "except/Throw.hpp"
#include "iri/Parts.ipp"
#include "iri/ReferenceReading.hpp"
#include "text/CodePointIterator.hpp"
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
void TemplateIRI<String>::readOrThrow(std::string_view utf8)
{
    if (text::isAllAscii(utf8)) {
        if (!readAscii(utf8))
            core::except::throwLogicError("IRI parsing failed");
    } else {
        text_ = text::toUtf32(utf8);
        parseOrThrow();
    }
}

template <class String>
bool TemplateIRI<String>::tryRead(std::string_view utf8)
{
    return text::isAllAscii(utf8) ? readAscii(utf8) : text::decodeUtf8(utf8, text_) && parse();
}

template <class String>
bool TemplateIRI<String>::tryRead(std::u16string_view utf16)
{
    return !text::decodeUtf16(utf16, text_) && parse();
}

// The grammar looks at the bytes, which takes half the time, and refuses before anything is
// allocated. In ASCII, an index is the same in all encodings.
template <class String>
bool TemplateIRI<String>::readAscii(std::string_view ascii)
{
    const char* const begin = ascii.data();
    const text::AsciiIterator first(begin);
    const text::AsciiIterator last(begin + ascii.size());
    const bool isReference = takeApart(first, last, [begin](text::AsciiIterator at) {
        return static_cast<std::size_t>(at.base() - begin);
    });
    if (!isReference)
        return false;
    flags_.readsTheSame = ascii.find('%') == ascii.npos;
    text_ = text::widenAscii(ascii);
    return true;
}

template <class String>
bool TemplateIRI<String>::parse()
{
    const String& text = text_;
    return takeApart(text.begin(), text.end(),
                     [&text](It at) { return static_cast<std::size_t>(at - text.begin()); });
}

template <class String>
template <class TextIt, class IndexOf>
bool TemplateIRI<String>::takeApart(TextIt first, TextIt last, IndexOf indexOf)
{
    hasSourceText_.store(true, std::memory_order_relaxed); // nobody else can see the value yet
    hasComponents_ = true;
    if (first == last)
        return true; // the empty value, whose path can be read
    isEmpty_.store(false, std::memory_order_relaxed);

    Parts<TextIt> parts;
    if (!readReference(first, last, parts, portNumber_))
        return false;
    setPartFlags(parts);
    parts.update();
    ranges_ = rangesOf(parts, indexOf);
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
    flags_.hasAbsolutePath = !path->empty() && *path->begin() == FORWARD_SLASH;
    flags_.isAbsolute = flags_.hasScheme;
    flags_.isOpaque = flags_.hasScheme && !flags_.hasHost && !flags_.hasAbsolutePath;
}

} // namespace foundation::network::iri::detail
