#include <foundation/network/iri/detail/StringParts.hpp>

#include "iri/ComponentCell.hpp"
#include "text/LaxUtf8.hpp"

#include <memory>
#include <stdexcept>
#include <utility>

namespace foundation::network::iri::detail {

template <class Coder>
CellPlace<Coder>::CellPlace(const CellPlace& other)
    : isPresentWithoutText_(other.isPresentWithoutText_)
{
    if (const Cell* cell = other.get())
        cell_.store(new Cell(*cell), std::memory_order_relaxed);
}

template <class Coder>
CellPlace<Coder>::CellPlace(CellPlace&& other) noexcept
    : cell_(other.cell_.exchange(nullptr, std::memory_order_relaxed))
    , isPresentWithoutText_(other.isPresentWithoutText_)
{
    other.isPresentWithoutText_ = isPresent();
}

template <class Coder>
CellPlace<Coder>& CellPlace<Coder>::operator=(CellPlace&& other) noexcept
{
    CellPlace(std::move(other)).swap(*this);
    return *this;
}

template <class Coder>
CellPlace<Coder>::~CellPlace()
{
    delete get();
}

template <class Coder>
void CellPlace<Coder>::reset() noexcept
{
    delete cell_.exchange(nullptr, std::memory_order_relaxed);
    isPresentWithoutText_ = false;
}

template <class Coder>
void CellPlace<Coder>::swap(CellPlace& other) noexcept
{
    Cell* const mine = cell_.load(std::memory_order_relaxed);
    cell_.store(other.cell_.exchange(mine, std::memory_order_relaxed), std::memory_order_relaxed);
    std::swap(isPresentWithoutText_, other.isPresentWithoutText_);
}

template <class Coder>
template <class... Context>
void CellPlace<Coder>::store(std::u32string text, const Encoding& encoding,
                             const Context&... context)
{
    const Form form = formStored(encoding);
    if (form == Form::None) {
        reset();
        isPresentWithoutText_ = true;
        return;
    }
    auto cell = std::make_unique<Cell>(std::move(text), form, context...);
    reset();
    cell_.store(cell.release(), std::memory_order_relaxed);
}

template <class Coder>
template <class... Context>
void CellPlace<Coder>::engage(std::string_view lax, const Encoding& encoding,
                              const Context&... context)
{
    if (get() != nullptr)
        return;
    auto cell = std::make_unique<Cell>(text::fromLaxUtf8(lax), formStored(encoding), context...);
    Cell* expected = nullptr;
    if (cell_.compare_exchange_strong(expected, cell.get(), std::memory_order_acq_rel))
        static_cast<void>(cell.release()); // owned by the place now
}

namespace {

    [[noreturn]] void throwNotSet(const char* suffix)
    {
        throw std::runtime_error(std::string("Item not set") + suffix);
    }

    // Reads a component and adds its name to a runtime error of the reading.
    template <class Coder>
    const std::u32string& read(const CellPlace<Coder>& place, const Encoding& encoding,
                               const char* suffix)
    {
        const auto* cell = place.get();
        if (cell == nullptr)
            throwNotSet(suffix);
        try {
            return cell->text(formRead(encoding));
        } catch (const std::runtime_error& failure) {
            throw std::runtime_error(std::string(failure.what()) + suffix);
        }
    }

    // Changes what a stored path knows of its neighbours.
    template <class Change>
    void changeContext(CellPlace<PathCoder>& path, Change change)
    {
        auto* cell = path.get();
        if (cell == nullptr)
            return;
        PathContext context = cell->context();
        change(context);
        cell->applyContext(context);
    }

    // Whether one component differs, compared in the form in which the left side stores it.
    template <class Coder>
    bool differ(const CellPlace<Coder>& left, const CellPlace<Coder>& right)
    {
        if (left.isPresent() != right.isPresent())
            return true;
        const auto* x = left.get();
        const auto* y = right.get();
        if (x == nullptr || y == nullptr)
            return x != y;
        const Form form = x->primary();
        return x->hash(form) != y->hash(form) || x->text(form) != y->text(form);
    }

} // namespace

template <class String>
StringParts<String>::StringParts() = default;

template <class String>
StringParts<String>::StringParts(const StringParts& other) = default;

template <class String>
StringParts<String>::StringParts(StringParts&& other) noexcept = default;

template <class String>
StringParts<String>& StringParts<String>::operator=(const StringParts& other)
{
    if (this != &other)
        StringParts(other).swap(*this);
    return *this;
}

template <class String>
StringParts<String>& StringParts<String>::operator=(StringParts&& other) noexcept
{
    if (this == &other)
        return *this;
    userInfo_ = std::move(other.userInfo_);
    host_ = std::move(other.host_);
    path_ = std::move(other.path_);
    query_ = std::move(other.query_);
    fragment_ = std::move(other.fragment_);
    isEmpty_ = other.isEmpty_;
    return *this;
}

template <class String>
StringParts<String>::~StringParts() = default;

template <class String>
void StringParts<String>::swap(StringParts& other) noexcept
{
    userInfo_.swap(other.userInfo_);
    host_.swap(other.host_);
    path_.swap(other.path_);
    query_.swap(other.query_);
    fragment_.swap(other.fragment_);
    std::swap(isEmpty_, other.isEmpty_);
}

template <class String>
bool StringParts<String>::isEmpty() const noexcept
{
    return isEmpty_;
}

template <class String>
void StringParts<String>::reset() noexcept
{
    userInfo_.reset();
    host_.reset();
    path_.reset();
    query_.reset();
    fragment_.reset();
    isEmpty_ = true;
}

template <class String>
void StringParts<String>::setSchemePresent(bool present)
{
    changeContext(path_, [present](PathContext& context) { context.schemePresent = present; });
}

template <class String>
const String& StringParts<String>::getUserInfo(const Encoding& encoding) const
{
    return get(Component::UserInfo, encoding);
}

template <class String>
const String& StringParts<String>::getHost(const Encoding& encoding) const
{
    return get(Component::Host, encoding);
}

template <class String>
const String& StringParts<String>::getPath(const Encoding& encoding) const
{
    return get(Component::Path, encoding);
}

template <class String>
const String& StringParts<String>::getQuery(const Encoding& encoding) const
{
    return get(Component::Query, encoding);
}

template <class String>
const String& StringParts<String>::getFragment(const Encoding& encoding) const
{
    return get(Component::Fragment, encoding);
}

template <class String>
String StringParts<String>::getAuthority(const Encoding& encoding) const
{
    String result;
    if (userInfo_.isPresent())
        result.append(getUserInfo(encoding)).push_back(U'@');
    try {
        result.append(getHost(encoding));
    } catch (const std::runtime_error& failure) {
        // getHost has named the host already; naming it twice is meant.
        throw std::runtime_error(std::string(failure.what()) + ": Host (in getAuthority)");
    }
    return result;
}

template <class String>
void StringParts<String>::setUserInfo(String text, const Encoding& encoding)
{
    userInfo_.store(std::move(text), encoding);
    isEmpty_ = false;
    changeContext(path_, [](PathContext& context) { context.userInfoPresent = true; });
}

template <class String>
void StringParts<String>::setHost(String text, const Encoding& encoding)
{
    host_.store(std::move(text), encoding);
    isEmpty_ = false;
    changeContext(path_, [](PathContext& context) { context.hostPresent = true; });
}

template <class String>
void StringParts<String>::setPath(String text, const Encoding& encoding)
{
    const bool hasText = !text.empty();
    path_.store(std::move(text), encoding,
                PathContext{false, userInfo_.isPresent(), host_.isPresent()});
    if (hasText) // an IRI whose only component is an empty path stays empty
        isEmpty_ = false;
}

template <class String>
void StringParts<String>::setQuery(String text, const Encoding& encoding, bool formEncoded)
{
    query_.store(std::move(text), encoding, QueryContext{formEncoded});
    isEmpty_ = false;
}

template <class String>
void StringParts<String>::setFragment(String text, const Encoding& encoding)
{
    fragment_.store(std::move(text), encoding);
    isEmpty_ = false;
}

template <class String>
bool StringParts<String>::differsFrom(const StringParts& other) const
{
    return differ(userInfo_, other.userInfo_) || differ(host_, other.host_)
           || differ(path_, other.path_) || differ(query_, other.query_)
           || differ(fragment_, other.fragment_);
}

template <class String>
bool StringParts<String>::operator==(const StringParts& other) const
{
    return (isEmpty_ && other.isEmpty_) || !differsFrom(other);
}

template <class String>
bool StringParts<String>::operator!=(const StringParts& other) const
{
    if (isEmpty_ || other.isEmpty_)
        return isEmpty_ != other.isEmpty_;
    return differsFrom(other);
}

// Calls a function with the place of a component and the suffix that names it in messages.
template <class String>
template <class Self, class Function>
auto StringParts<String>::visit(Self& self, Component component, Function function)
{
    switch (component) {
    case Component::UserInfo:
        return function(self.userInfo_, ": UserInfo");
    case Component::Host:
        return function(self.host_, ": Host");
    case Component::Path:
        return function(self.path_, ": Path");
    case Component::Query:
        return function(self.query_, ": Query");
    case Component::Fragment:
        break;
    }
    return function(self.fragment_, ": Fragment");
}

template <class String>
void StringParts<String>::engage(Component component, std::string_view lax,
                                 const Encoding& encoding, const PathContext& path,
                                 bool formEncoded)
{
    if (component == Component::Path)
        path_.engage(lax, encoding, path);
    else if (component == Component::Query)
        query_.engage(lax, encoding, QueryContext{formEncoded});
    else
        visit(*this, component, [&](auto& place, const char*) { place.engage(lax, encoding); });
}

template <class String>
const String& StringParts<String>::get(Component component, const Encoding& encoding) const
{
    return *visit(*this, component, [&encoding](const auto& place, const char* suffix) {
        return &read(place, encoding, suffix);
    });
}

template class ZKFLNETWORK_API_TEMPLATE StringParts<std::u32string>;

} // namespace foundation::network::iri::detail
