#include "iri/NaiveStringParts.hpp"

#include <stdexcept>
#include <string>
#include <utility>

namespace foundation::network::iri::naive {

namespace {

    constexpr Component components[] = {Component::UserInfo, Component::Host, Component::Path,
                                        Component::Query, Component::Fragment};

    const char* suffixOf(Component component)
    {
        switch (component) {
        case Component::UserInfo:
            return ": UserInfo";
        case Component::Host:
            return ": Host";
        case Component::Path:
            return ": Path";
        case Component::Query:
            return ": Query";
        case Component::Fragment:
            break;
        }
        return ": Fragment";
    }

} // namespace

Slot slotOf(Encoding encoding)
{
    if (encoding == Encoding::Decoded)
        return DECODED;
    return encoding == Encoding::Iri || encoding == Encoding::IriStrict ? IRI : ASCII;
}

void Cell::store(const Text& text, Encoding encoding)
{
    *this = Cell();
    if (static_cast<std::uint32_t>(encoding) > 4)
        return;
    primary_ = slotOf(encoding);
    unset_ = false;
    slots_[primary_] = {true, false, NONE, text};
}

Slot Cell::ownerOf(Slot slot) const
{
    const StoredForm& form = slots_[slot];
    if (!form.present)
        return NONE;
    return form.shared ? form.source : slot;
}

Slot Cell::sourceFor(Slot wanted) const
{
    if (wanted == DECODED)
        return slots_[IRI].present ? IRI : ASCII;
    if (wanted == IRI)
        return slots_[ASCII].present ? ASCII : DECODED;
    return slots_[IRI].present ? IRI : DECODED;
}

MaybeText Cell::convert(Component component, Slot from, Slot to) const
{
    const Text& text = slots_[ownerOf(from)].text;
    if (to == DECODED)
        return from == IRI ? iriToDecoded(component, text, context_)
                           : asciiToDecoded(component, text, context_);
    if (to == IRI)
        return from == ASCII ? asciiToIri(component, text, context_)
                             : decodedToIri(component, text, context_);
    return from == IRI ? iriToAscii(component, text, context_)
                       : decodedToAscii(component, text, context_);
}

const Text& Cell::read(Component component, Slot wanted)
{
    if (!slots_[wanted].present) {
        const Slot source = sourceFor(wanted);
        if (!slots_[source].present)
            throw std::runtime_error("Item not set");
        const Text result = convert(component, source, wanted).value_or(Text());
        if (result == slots_[ownerOf(source)].text)
            slots_[wanted] = {true, true, ownerOf(source), Text()};
        else
            slots_[wanted] = {true, false, NONE, result};
    }
    return slots_[ownerOf(wanted)].text;
}

std::uint64_t Cell::hash(Component component, Slot wanted)
{
    if (unset_)
        return 0;
    const Text& text = read(component, wanted);
    if (text.empty())
        return 0;
    std::uint64_t hash = 0xcbf29ce484222325;
    for (const char32_t c : text)
        for (int shift = 0; shift < 32; shift += 8)
            hash = (hash ^ ((c >> shift) & 0xFF)) * 0x100000001b3;
    return hash;
}

void Cell::applyContext(const Context& context)
{
    context_ = context;
    if (unset_)
        return;
    for (const Slot slot : {DECODED, IRI, ASCII})
        if (slot != primary_)
            slots_[slot] = StoredForm();
}

void Cell::clear()
{
    *this = Cell();
}

StringParts::StringParts(StringParts&& other)
    : cells_(other.cells_)
    , empty_(other.empty_)
{
    for (auto& cell : other.cells_)
        if (cell)
            cell->clear();
}

StringParts& StringParts::operator=(StringParts&& other)
{
    if (this == &other)
        return *this;
    for (const Component component : components) {
        at(component) = other.at(component);
        if (other.at(component))
            other.at(component)->clear();
    }
    empty_ = other.empty_;
    return *this;
}

void StringParts::swap(StringParts& other)
{
    std::swap(cells_, other.cells_);
    std::swap(empty_, other.empty_);
}

void StringParts::reset()
{
    *this = StringParts(); // whose optionals are all disengaged
}

void StringParts::setSchemePresent(bool present)
{
    if (auto& path = at(Component::Path)) {
        Context context = path->context();
        context.schemePresent = present;
        path->applyContext(context);
    }
}

const Text& StringParts::get(Component component, Encoding encoding)
{
    try {
        auto& cell = at(component);
        if (!cell || cell->isUnset())
            throw std::runtime_error("Item not set");
        return cell->read(component, slotOf(encoding));
    } catch (const std::runtime_error& failure) {
        throw std::runtime_error(std::string(failure.what()) + suffixOf(component));
    }
}

Text StringParts::getAuthority(Encoding encoding)
{
    Text result;
    if (at(Component::UserInfo))
        result = get(Component::UserInfo, encoding) + U'@';
    try {
        return result + get(Component::Host, encoding);
    } catch (const std::runtime_error& failure) {
        throw std::runtime_error(std::string(failure.what()) + ": Host (in getAuthority)");
    }
}

void StringParts::set(Component component, const Text& text, Encoding encoding, bool formEncoded)
{
    auto& path = at(Component::Path);
    Cell cell;
    cell.store(text, encoding);
    Context context;
    switch (component) {
    case Component::UserInfo:
    case Component::Host:
        if (path) {
            context = path->context();
            (component == Component::Host ? context.hostPresent : context.userInfoPresent) = true;
            path->applyContext(context);
        }
        break;
    case Component::Path:
        context.userInfoPresent = at(Component::UserInfo).has_value();
        context.hostPresent = at(Component::Host).has_value();
        cell.applyContext(context);
        break;
    case Component::Query:
        context.formEncoded = formEncoded;
        cell.applyContext(context);
        break;
    case Component::Fragment:
        break;
    }
    at(component) = cell;
    if (component != Component::Path || !text.empty())
        empty_ = false;
}

bool StringParts::differsIn(Component component, StringParts& other)
{
    auto& x = at(component);
    auto& y = other.at(component);
    if (x.has_value() != y.has_value())
        return true;
    if (!x || (x->isUnset() && y->isUnset()))
        return false;
    if (x->isUnset() != y->isUnset())
        return true;
    const Slot form = x->primary();
    if (x->hash(component, form) != y->hash(component, form))
        return true;
    return x->read(component, form) != y->read(component, form);
}

bool StringParts::equals(StringParts& other)
{
    if (empty_ && other.empty_)
        return true;
    for (const Component component : components)
        if (differsIn(component, other))
            return false;
    return true;
}

bool StringParts::differs(StringParts& other)
{
    if (empty_ && other.empty_)
        return false;
    if (empty_ != other.empty_)
        return true;
    for (const Component component : components)
        if (differsIn(component, other))
            return true;
    return false;
}

Slot StringParts::ownerOf(Component component, Slot slot) const
{
    const auto& cell = cells_[static_cast<std::size_t>(component)];
    return cell ? cell->ownerOf(slot) : NONE;
}

} // namespace foundation::network::iri::naive
