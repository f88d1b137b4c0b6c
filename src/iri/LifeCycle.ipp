#pragma once

// How a TemplateIRI comes into being, is copied, moved, exchanged and emptied.

#include "except/Throw.hpp"
#include "iri/OnDemand.hpp"
#include "iri/Parsing.ipp"
#include "text/LaxUtf8.hpp"
#include "text/WellFormed.hpp"

#include <foundation/network/iri/detail/TemplateIRI.hpp>

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

namespace foundation::network::iri::detail {

template <class String>
TemplateIRI<String>::TemplateIRI() noexcept = default;

template <class String>
TemplateIRI<String>::TemplateIRI(const String& text)
{
    text_ = text::toLaxUtf8(text); // of which the grammar takes no element that is no code point
    if (!takeApart(text_) || text::wellFormedLength(View(text_)) < text_.size())
        core::except::throwLogicError("IRI parsing failed");
}

template <class String>
TemplateIRI<String>::TemplateIRI(const std::u16string& text)
{
    readOrThrow(std::u16string_view(text));
}

template <class String>
TemplateIRI<String>::TemplateIRI(const std::string& text)
{
    readOrThrow(std::string_view(text));
}

// Others may be reading the source. What they make last is taken first, so that the copy is the
// source of one moment: the hash, the texts, which it may be of, the components, which those are
// made of (see `OnDemand`), and in which forms the source's own text was answered.
template <class String>
TemplateIRI<String>::TemplateIRI(const TemplateIRI& other)
    : text_(other.text_)
    , ranges_(other.ranges_)
    , flags_(other.flags_)
    , portNumber_(other.portNumber_)
    , isEmpty_(other.isEmpty())
    , hasSourceText_(other.hasSourceText_.load())
    , hasComponents_(other.hasComponents_)
    , dotSegments_(other.dotSegments_.load(std::memory_order_relaxed))
{
    hash_.assign(other.hash_);
    if (const OnDemand* made = other.onDemand_.load(std::memory_order_acquire))
        onDemand_.store(new OnDemand(*made), std::memory_order_relaxed);
    formsOfText_.store(other.formsOfText_.load(std::memory_order_relaxed),
                       std::memory_order_relaxed);
}

template <class String>
TemplateIRI<String>::TemplateIRI(TemplateIRI&& other) noexcept
    : text_(std::move(other.text_))
    , ranges_(other.ranges_)
    , flags_(other.flags_)
    , portNumber_(other.portNumber_)
    , isEmpty_(other.isEmpty())
    , hasSourceText_(other.hasSourceText_.load())
    , hasComponents_(other.hasComponents_)
    , formsOfText_(other.formsOfText_.load(std::memory_order_relaxed))
    , dotSegments_(other.dotSegments_.load(std::memory_order_relaxed))
    , onDemand_(other.onDemand_.load(std::memory_order_relaxed)) // nobody else uses the source
{
    other.onDemand_.store(nullptr, std::memory_order_relaxed);
    if (other.hash_.wouldBeLeftBehind())
        other.hash_.keepPromise([this] { return generateHash(); }); // of the text, which is here
    hash_.assign(other.hash_);
    other.clear();
}

template <class String>
TemplateIRI<String>& TemplateIRI<String>::operator=(const TemplateIRI& other)
{
    if (this == &other)
        return *this;
    if (other.isEmpty()) {
        if (!isEmpty())
            clear();
        return *this; // one empty value is not assigned to another
    }
    // A value whose hash is known stays one; it is computed first, so that a failure changes nothing.
    TemplateIRI copy(other);
    if (hash_.isValid() && !copy.hash_.isValid())
        copy.hash_.set(copy.generateHash());
    copy.swap(*this);
    return *this;
}

template <class String>
TemplateIRI<String>& TemplateIRI<String>::operator=(TemplateIRI&& other)
{
    if (this == &other)
        return *this;
    if (other.isEmpty()) {
        if (!isEmpty())
            clear();
        return *this;
    }
    const bool refresh = hash_.isValid() && !other.hash_.isValid();
    const std::uint64_t hash = refresh ? other.generateHash() : 0;
    other.hash_.keepPromise([&other] { return other.generateHash(); }); // it stays with the flags
    text_ = std::move(other.text_);
    ranges_ = other.ranges_;
    flags_ = other.flags_;
    portNumber_ = other.portNumber_;
    isEmpty_.store(other.isEmpty(), std::memory_order_relaxed);
    hasSourceText_.store(other.hasSourceText_.load(), std::memory_order_relaxed);
    hasComponents_ = other.hasComponents_;
    formsOfText_.store(other.formsOfText_.load(std::memory_order_relaxed),
                       std::memory_order_relaxed);
    dotSegments_.store(other.dotSegments_.load(std::memory_order_relaxed),
                       std::memory_order_relaxed);
    hash_.assign(other.hash_);
    if (refresh)
        hash_.set(hash);
    delete onDemand_.load(std::memory_order_relaxed); // nobody else uses either of the two
    onDemand_.store(other.onDemand_.load(std::memory_order_relaxed), std::memory_order_relaxed);
    other.onDemand_.store(nullptr, std::memory_order_relaxed);

    // The source keeps its flags, unlike that of the move constructor. Its texts are gone.
    other.text_.clear();
    other.formsOfText_.store(0, std::memory_order_relaxed);
    other.ranges_ = ComponentRanges();
    other.hasComponents_ = false;
    return *this;
}

template <class String>
TemplateIRI<String>::~TemplateIRI()
{
    delete onDemand_.load(std::memory_order_acquire);
}

template <class String>
void TemplateIRI<String>::swap(TemplateIRI& other) noexcept
{
    if (this == &other)
        return;
    const auto exchange = [](auto& mine, auto& theirs) { // nobody else uses either of the two
        const auto value = mine.load(std::memory_order_relaxed);
        mine.store(theirs.load(std::memory_order_relaxed), std::memory_order_relaxed);
        theirs.store(value, std::memory_order_relaxed);
    };
    text_.swap(other.text_);
    std::swap(ranges_, other.ranges_);
    std::swap(flags_, other.flags_);
    std::swap(portNumber_, other.portNumber_);
    exchange(isEmpty_, other.isEmpty_);
    exchange(hasSourceText_, other.hasSourceText_);
    exchange(formsOfText_, other.formsOfText_);
    exchange(dotSegments_, other.dotSegments_);
    std::swap(hasComponents_, other.hasComponents_);
    hash_.swap(other.hash_);
    exchange(onDemand_, other.onDemand_);
}

template <class String>
void TemplateIRI<String>::clear() noexcept
{
    if (hash_.wouldBeLeftBehind())
        hash_.keepPromise([this] { return generateHash(); });
    std::string().swap(text_); // frees the memory, too
    ranges_ = ComponentRanges();
    flags_ = ComponentFlags();
    portNumber_ = 0;
    isEmpty_.store(true, std::memory_order_relaxed);
    hasSourceText_.store(false, std::memory_order_relaxed);
    formsOfText_.store(0, std::memory_order_relaxed);
    dotSegments_.store(DotSegments::Unknown, std::memory_order_relaxed);
    hasComponents_ = false;
    hash_.leaveBehind();
    delete onDemand_.load(std::memory_order_relaxed);
    onDemand_.store(nullptr, std::memory_order_relaxed);
}

} // namespace foundation::network::iri::detail
