#pragma once

#include "iri/ComponentCell.hpp"

#include <foundation/network/iri/detail/StringParts.hpp>
#include <foundation/network/iri/detail/TemplateIRI.hpp>

#include <array>
#include <atomic>
#include <memory>

namespace foundation::network::iri::detail {

/// A text that is made once and then never changes or moves. Const use from many threads is safe.
template <class String>
class PublishedText {
public:
    PublishedText() = default;

    PublishedText(const PublishedText& other)
    {
        if (const String* text = other.get())
            text_.store(new String(*text), std::memory_order_relaxed);
    }

    PublishedText& operator=(const PublishedText&) = delete;
    ~PublishedText() { delete get(); }

    /// The text, or null if it was not made yet.
    const String* get() const noexcept { return text_.load(std::memory_order_acquire); }

    /// Keeps @p made, unless another thread was first, and gives what is kept.
    const String& publish(std::unique_ptr<const String> made) const noexcept
    {
        const String* first = nullptr;
        if (text_.compare_exchange_strong(first, made.get(), std::memory_order_acq_rel))
            return *made.release();
        return *first;
    }

private:
    mutable std::atomic<const String*> text_{nullptr};
};

template <class String>
struct TemplateIRI<String>::OnDemand {
    /// A built value's components. Of a parsed value, those that were read in another form than
    /// that of its text.
    StringParts<String> parts;

    /// The whole IRI, as built for each form; which is which, `nativeStringIndex` tells.
    std::array<PublishedText<String>, 5> nativeStrings;
};

} // namespace foundation::network::iri::detail
