#pragma once

#include "iri/ComponentCoders.hpp"
#include "text/Fnv1a.hpp"

#include <foundation/network/iri/Encoding.hpp>

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <mutex>
#include <string>
#include <utility>

namespace foundation::network::iri::detail {

/// The forms in which a component can be stored.
enum class Form : std::uint8_t { None, Decoded, Iri, Ascii };

/// The form that readers of @p encoding see.
constexpr Form formRead(Encoding encoding) noexcept
{
    switch (encoding) {
    case Encoding::Decoded:
        return Form::Decoded;
    case Encoding::Iri:
    case Encoding::IriStrict:
        return Form::Iri;
    default: // every higher value too
        return Form::Ascii;
    }
}

/// The form in which a text given in @p encoding is stored; none for a value above `AsciiStrict`.
constexpr Form formStored(Encoding encoding) noexcept
{
    return encoding > Encoding::AsciiStrict ? Form::None : formRead(encoding);
}

/// The encoding under which a stored form is stored again as it is.
constexpr Encoding encodingOf(Form form) noexcept
{
    return form == Form::Decoded ? Encoding::Decoded
           : form == Form::Iri   ? Encoding::Iri
                                 : Encoding::Ascii;
}

/// One form of a component.
///
/// What `owner` publishes never changes or moves while others may read it: the text of the slot
/// itself, or the text of the slot that `owner` names, which is then the same text.
struct ComponentSlot {
    std::atomic<Form> owner{Form::None}; ///< None: this form was not made yet
    std::u32string text;                 ///< if the slot is its own owner

    /// The FNV-1a hash of `text`; 0 for the empty text. Computed when first asked for.
    std::uint64_t textHash() const noexcept
    {
        if (!hasHash_.load(std::memory_order_acquire)) {
            hash_.store(text.empty() ? 0 : text::fnv1a(text), std::memory_order_relaxed);
            hasHash_.store(true, std::memory_order_release);
        }
        return hash_.load(std::memory_order_relaxed);
    }

    /// Copies another slot; its cell's lock is held.
    void assign(const ComponentSlot& other)
    {
        text = other.text;
        const bool hasHash = other.hasHash_.load(std::memory_order_acquire);
        hash_.store(other.hash_.load(std::memory_order_relaxed), std::memory_order_relaxed);
        hasHash_.store(hasHash, std::memory_order_relaxed);
        owner.store(other.owner.load(std::memory_order_relaxed), std::memory_order_release);
    }

    void clear() noexcept
    {
        owner.store(Form::None, std::memory_order_relaxed);
        std::u32string().swap(text);
        hasHash_.store(false, std::memory_order_relaxed);
    }

private:
    // Two threads that hash the same text at once store the same value.
    mutable std::atomic<bool> hasHash_{false};
    mutable std::atomic<std::uint64_t> hash_{0};
};

/// One component: the text as it was stored, and the forms made of it since.
///
/// Const members may run on many threads. `lock_` is held while a form is made or the cell copied;
/// nothing else is called under it that locks. A form once made is read without it.
template <class Coder>
class ComponentCell {
public:
    using Context = typename Coder::Context;

    ComponentCell(std::u32string text, Form form, const Context& context = {})
        : primary_(form)
        , context_(context)
    {
        ComponentSlot& slot = at(form);
        slot.text = std::move(text);
        slot.owner.store(form, std::memory_order_relaxed);
    }

    ComponentCell(const ComponentCell& other)
    {
        const std::lock_guard guard(other.lock_);
        primary_ = other.primary_;
        context_ = other.context_;
        for (std::size_t i = 0; i < slots_.size(); ++i)
            slots_[i].assign(other.slots_[i]);
    }

    ComponentCell& operator=(const ComponentCell&) = delete;

    /// The form in which the text was stored.
    Form primary() const noexcept { return primary_; }

    const Context& context() const noexcept { return context_; }

    /// Changes what the conversions depend on, so that derived forms are made anew.
    void applyContext(const Context& context)
    {
        const std::lock_guard guard(lock_);
        context_ = context;
        for (const Form form : {Form::Decoded, Form::Iri, Form::Ascii})
            if (form != primary_)
                at(form).clear();
    }

    /// The text in a form, which is made if need be.
    const std::u32string& text(Form form) const { return ownerOf(form).text; }

    /// The hash of the text in a form, which is made if need be.
    std::uint64_t hash(Form form) const { return ownerOf(form).textHash(); }

    /// Whether a form shares the text of another. For tests: readers cannot tell.
    bool isShared(Form form) const noexcept
    {
        const Form owner = at(form).owner.load(std::memory_order_acquire);
        return owner != Form::None && owner != form;
    }

private:
    ComponentSlot& at(Form form) const noexcept
    {
        return slots_[static_cast<std::size_t>(form) - 1];
    }

    bool isMade(Form form) const noexcept
    {
        return at(form).owner.load(std::memory_order_acquire) != Form::None;
    }

    const ComponentSlot& ownerOf(Form form) const
    {
        Form owner = at(form).owner.load(std::memory_order_acquire);
        if (owner == Form::None)
            owner = make(form);
        return at(owner);
    }

    // Makes a form and tells who owns its text. Another thread may have made it in the meantime.
    Form make(Form form) const
    {
        const std::lock_guard guard(lock_);
        ComponentSlot& slot = at(form);
        if (const Form owner = slot.owner.load(std::memory_order_relaxed); owner != Form::None)
            return owner;
        const Form source = sourceFor(form);
        const Form sourceOwner = at(source).owner.load(std::memory_order_relaxed);
        const std::u32string& sourceText = at(sourceOwner).text;
        if (isSame(sourceText, source, form)) {
            slot.owner.store(sourceOwner, std::memory_order_release);
            return sourceOwner;
        }
        // A text that cannot be converted gives the empty text.
        std::u32string result = convert(sourceText, source, form).value_or(std::u32string());
        Form owner = sourceOwner;
        if (result != sourceText) {
            slot.text = std::move(result);
            owner = form;
        }
        slot.owner.store(owner, std::memory_order_release);
        return owner;
    }

    // Where a form comes from. ASCII is the first choice for the IRI form, if both others exist.
    Form sourceFor(Form form) const noexcept
    {
        switch (form) {
        case Form::Decoded:
            return isMade(Form::Iri) ? Form::Iri : Form::Ascii;
        case Form::Iri:
            return isMade(Form::Ascii) ? Form::Ascii : Form::Decoded;
        default:
            return isMade(Form::Iri) ? Form::Iri : Form::Decoded;
        }
    }

    // Whether a form can be told to be the same text without making it.
    bool isSame(const std::u32string& text, Form from, Form to) const noexcept
    {
        if (from == Form::Decoded)
            return to == Form::Iri && Coder::isSameInIri(text, context_);
        if (from == Form::Iri)
            return to == Form::Ascii ? Coder::isSameInAscii(text, context_)
                                     : Coder::isSameDecoded(text, context_);
        return false;
    }

    Conversion convert(const std::u32string& text, Form from, Form to) const
    {
        switch (to) {
        case Form::Decoded:
            return from == Form::Iri ? Coder::iriToDecoded(text, context_)
                                     : Coder::asciiToDecoded(text, context_);
        case Form::Iri:
            return from == Form::Ascii ? Coder::asciiToIri(text, context_)
                                       : Coder::decodedToIri(text, context_);
        default:
            return from == Form::Iri ? Coder::iriToAscii(text, context_)
                                     : Coder::decodedToAscii(text, context_);
        }
    }

    Form primary_;
    Context context_;
    mutable std::mutex lock_; // guards the making of slots_
    mutable std::array<ComponentSlot, 3> slots_;
};

} // namespace foundation::network::iri::detail
