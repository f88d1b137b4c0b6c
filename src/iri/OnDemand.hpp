#pragma once

#include "iri/ComponentCell.hpp"

#include <foundation/network/iri/detail/StringParts.hpp>
#include <foundation/network/iri/detail/TemplateIRI.hpp>

#include <array>
#include <atomic>
#include <memory>
#include <string>

namespace foundation::network::iri::detail {

/// A text in lax UTF-8 that is made once and then never changes or moves. Const use from many
/// threads is safe.
class PublishedText {
public:
    PublishedText() = default;

    PublishedText(const PublishedText& other)
    {
        if (const std::string* text = other.get())
            text_.store(new std::string(*text), std::memory_order_relaxed);
    }

    PublishedText& operator=(const PublishedText&) = delete;
    ~PublishedText() { delete get(); }

    /// The text, or null if it was not made yet.
    const std::string* get() const noexcept { return text_.load(std::memory_order_acquire); }

    /// Keeps @p made, unless another thread was first, and gives what is kept.
    const std::string& publish(std::unique_ptr<const std::string> made) const noexcept
    {
        const std::string* first = nullptr;
        if (text_.compare_exchange_strong(first, made.get(), std::memory_order_acq_rel))
            return *made.release();
        return *first;
    }

private:
    mutable std::atomic<const std::string*> text_{nullptr};
};

/// All of it may be made while a copy is taken. The copy has the members in the order in which they
/// stand here: first what is made last, so that what belongs to that is there when its turn comes.
template <class String>
struct TemplateIRI<String>::OnDemand {
    /// The whole IRI in the forms `IriStrict` and `AsciiStrict`; `strictIndex` tells which is which.
    std::array<PublishedText, 2> strictTexts;

    /// The whole IRI in each form, also that which a strict text brings along; see `plainIndex`.
    std::array<PublishedText, 3> plainTexts;

    /// A built value's components. Of a parsed value, those that were read in another form than
    /// that of its text.
    StringParts<String> parts;
};

} // namespace foundation::network::iri::detail
