#pragma once

#include "iri/NaiveCoding.hpp"

#include <foundation/network/iri/Encoding.hpp>

#include <array>
#include <cstdint>
#include <optional>

/// A second, plain StringParts: every form is a slot with all that it knows, and whatever changes
/// does so step by step. For one thread.
namespace foundation::network::iri::naive {

/// The forms of a component, as numbers of slots.
enum Slot : std::uint32_t { NONE, DECODED, IRI, ASCII };

/// One component.
class Cell {
public:
    bool isUnset() const { return unset_; }
    Slot primary() const { return primary_; }
    const Context& context() const { return context_; }

    /// Nothing is stored under an encoding that names no form.
    void store(const Text& text, Encoding encoding);

    /// The text of a slot, which is made if need be.
    const Text& read(Component component, Slot wanted);
    std::uint64_t hash(Component component, Slot wanted);

    void applyContext(const Context& context);
    void clear();

    /// Whose text a slot shows: its own number, or that of the slot which it shares with; none if
    /// it was not made.
    Slot ownerOf(Slot slot) const;

private:
    struct StoredForm {
        bool present = false;
        bool shared = false;
        Slot source = NONE; // if shared
        Text text;          // if not
    };

    Slot sourceFor(Slot wanted) const;
    MaybeText convert(Component component, Slot from, Slot to) const;

    Slot primary_ = NONE;
    Context context_;
    bool unset_ = true;
    std::array<StoredForm, 4> slots_; // the first one is never used
};

Slot slotOf(Encoding encoding);

class StringParts {
public:
    StringParts() = default;
    StringParts(const StringParts& other) = default;
    StringParts(StringParts&& other);
    StringParts& operator=(const StringParts& other) = default;
    StringParts& operator=(StringParts&& other);
    ~StringParts() = default;

    void swap(StringParts& other);
    bool isEmpty() const { return empty_; }
    void reset();
    void setSchemePresent(bool present);

    /// Reading fills slots.
    const Text& get(Component component, Encoding encoding);
    Text getAuthority(Encoding encoding);
    void set(Component component, const Text& text, Encoding encoding, bool formEncoded);

    bool equals(StringParts& other);
    bool differs(StringParts& other);

    /// @copydoc Cell::ownerOf
    Slot ownerOf(Component component, Slot slot) const;

private:
    std::optional<Cell>& at(Component component)
    {
        return cells_[static_cast<std::size_t>(component)];
    }
    bool differsIn(Component component, StringParts& other);

    std::array<std::optional<Cell>, 5> cells_;
    bool empty_ = true;
};

} // namespace foundation::network::iri::naive
