#include <foundation/network/iri/detail/ArgsBase.hpp>

#include "except/Boundary.hpp"
#include "except/Throw.hpp"
#include "iri/grammar/PortGrammar.hpp"
#include "text/Utf.hpp"

#include <utility>

namespace foundation::network::iri::detail {

namespace {

    // The text of a component. Whatever was wrong with it, the setters fail with one type.
    template <class Text>
    std::u32string toComponent(const Text& text)
    {
        return core::except::asInternalException<std::out_of_range>(
            [&] { return text::toUtf32(text); });
    }

    void setComponent(std::u32string& component, bool& isPresent, std::u32string&& text) noexcept
    {
        component = std::move(text);
        isPresent = true;
    }

    void clearComponent(std::u32string& component, bool& isPresent) noexcept
    {
        component.clear();
        isPresent = false;
    }

} // namespace

template <class String>
ArgsBase<String>::ArgsBase() = default;

template <class String>
ArgsBase<String>::ArgsBase(const ArgsBase& other) = default;

// A copy first: where memory runs out, nothing has changed.
template <class String>
ArgsBase<String>& ArgsBase<String>::operator=(const ArgsBase& other)
{
    if (this == &other)
        return *this;
    ArgsBase copy(other);
    for (const auto text : {&ArgsBase::scheme_, &ArgsBase::userInfo_, &ArgsBase::host_,
                            &ArgsBase::path_, &ArgsBase::query_, &ArgsBase::fragment_})
        (this->*text).swap(copy.*text);
    port_ = other.port_;
    hasQuery_ = other.hasQuery_;
    hasFragment_ = other.hasFragment_;
    hasScheme_ = other.hasScheme_;
    hasHost_ = other.hasHost_;
    hasUserInfo_ = other.hasUserInfo_;
    hasPort_ = other.hasPort_;
    hasPath_ = other.hasPath_;
    schemeFromIri_ = other.schemeFromIri_;
    queryFormEncoded_ = other.queryFormEncoded_;
    queryHasEscapes_ = other.queryHasEscapes_;
    return *this;
}

template <class String>
ArgsBase<String>::~ArgsBase() = default;

template <class String>
void ArgsBase<String>::setScheme(String text)
{
    setComponent(scheme_, hasScheme_, std::move(text));
    schemeFromIri_ = false;
}

template <class String>
void ArgsBase<String>::setScheme(const std::string& utf8)
{
    setScheme(toComponent(utf8));
}

template <class String>
void ArgsBase<String>::setScheme(const std::u16string& utf16)
{
    setScheme(toComponent(utf16));
}

template <class String>
void ArgsBase<String>::setScheme(std::initializer_list<char> utf8)
{
    setScheme(std::string(utf8));
}

template <class String>
void ArgsBase<String>::clearScheme()
{
    clearComponent(scheme_, hasScheme_);
    schemeFromIri_ = false;
}

template <class String>
void ArgsBase<String>::setUserInfo(String text)
{
    setComponent(userInfo_, hasUserInfo_, std::move(text));
}

template <class String>
void ArgsBase<String>::setUserInfo(const std::string& utf8)
{
    setUserInfo(toComponent(utf8));
}

template <class String>
void ArgsBase<String>::setUserInfo(const std::u16string& utf16)
{
    setUserInfo(toComponent(utf16));
}

template <class String>
void ArgsBase<String>::setUserInfo(std::initializer_list<char> utf8)
{
    setUserInfo(std::string(utf8));
}

template <class String>
void ArgsBase<String>::clearUserInfo()
{
    clearComponent(userInfo_, hasUserInfo_);
}

template <class String>
void ArgsBase<String>::setHost(String text)
{
    setComponent(host_, hasHost_, std::move(text));
}

template <class String>
void ArgsBase<String>::setHost(const std::string& utf8)
{
    setHost(toComponent(utf8));
}

template <class String>
void ArgsBase<String>::setHost(const std::u16string& utf16)
{
    setHost(toComponent(utf16));
}

template <class String>
void ArgsBase<String>::setHost(std::initializer_list<char> utf8)
{
    setHost(std::string(utf8));
}

template <class String>
void ArgsBase<String>::clearHost()
{
    clearComponent(host_, hasHost_);
}

template <class String>
void ArgsBase<String>::setPath(String text)
{
    setComponent(path_, hasPath_, std::move(text));
}

template <class String>
void ArgsBase<String>::setPath(const std::string& utf8)
{
    setPath(toComponent(utf8));
}

template <class String>
void ArgsBase<String>::setPath(const std::u16string& utf16)
{
    setPath(toComponent(utf16));
}

template <class String>
void ArgsBase<String>::setPath(std::initializer_list<char> utf8)
{
    setPath(std::string(utf8));
}

template <class String>
void ArgsBase<String>::clearPath()
{
    clearComponent(path_, hasPath_);
}

template <class String>
void ArgsBase<String>::setQuery(String text)
{
    setComponent(query_, hasQuery_, std::move(text));
}

template <class String>
void ArgsBase<String>::setQuery(const std::string& utf8)
{
    setQuery(toComponent(utf8));
}

template <class String>
void ArgsBase<String>::setQuery(const std::u16string& utf16)
{
    setQuery(toComponent(utf16));
}

template <class String>
void ArgsBase<String>::setQuery(std::initializer_list<char> utf8)
{
    setQuery(std::string(utf8));
}

template <class String>
void ArgsBase<String>::clearQuery()
{
    clearComponent(query_, hasQuery_);
}

template <class String>
void ArgsBase<String>::setFragment(String text)
{
    setComponent(fragment_, hasFragment_, std::move(text));
}

template <class String>
void ArgsBase<String>::setFragment(const std::string& utf8)
{
    setFragment(toComponent(utf8));
}

template <class String>
void ArgsBase<String>::setFragment(const std::u16string& utf16)
{
    setFragment(toComponent(utf16));
}

template <class String>
void ArgsBase<String>::setFragment(std::initializer_list<char> utf8)
{
    setFragment(std::string(utf8));
}

template <class String>
void ArgsBase<String>::clearFragment()
{
    clearComponent(fragment_, hasFragment_);
}

template <class String>
void ArgsBase<String>::setPort(unsigned short number)
{
    port_ = number;
    hasPort_ = true;
}

template <class String>
void ArgsBase<String>::setPort(const String& text)
{
    if (!portStringToNumeric(text, port_))
        core::except::throwLogicError("Port must be numeric");
    hasPort_ = true;
}

template <class String>
void ArgsBase<String>::setPort(const std::string& utf8)
{
    setPort(text::toUtf32(utf8));
}

template <class String>
void ArgsBase<String>::setPort(const std::u16string& utf16)
{
    setPort(text::toUtf32(utf16));
}

template <class String>
void ArgsBase<String>::clearPort()
{
    port_ = 0;
    hasPort_ = false;
}

template <class String>
bool portStringToNumeric(const String& text, unsigned short& number)
{
    return grammar::portStringToNumeric(text, number);
}

template class ZKFLNETWORK_API_TEMPLATE ArgsBase<std::u32string>;
template ZKFLNETWORK_API bool portStringToNumeric(const std::u32string& text,
                                                  unsigned short& number);

} // namespace foundation::network::iri::detail
