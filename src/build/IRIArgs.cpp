#include <foundation/network/IRIArgs.hpp>

#include <foundation/network/IRI.hpp>

namespace foundation::network {

IRIArgs::IRIArgs() = default;

IRIArgs::IRIArgs(const IRI& iri)
{
    iri.toArgs(*this);
}

IRIArgs::IRIArgs(const IRIArgs& other) = default;

// Moving copies: a bag that was moved from can be used again as it is.
IRIArgs::IRIArgs(IRIArgs&& other)
    : IRIArgs(other) // NOLINT(performance-move-constructor-init): meant
{
}

IRIArgs& IRIArgs::operator=(const IRIArgs& other) = default;

IRIArgs& IRIArgs::operator=(IRIArgs&& other)
{
    return *this = other;
}

IRIArgs::~IRIArgs() = default;

IRIArgs& IRIArgs::setScheme(const std::string& utf8)
{
    Base::setScheme(utf8);
    return *this;
}

IRIArgs& IRIArgs::setScheme(const std::u16string& utf16)
{
    Base::setScheme(utf16);
    return *this;
}

IRIArgs& IRIArgs::setScheme(std::initializer_list<char> utf8)
{
    Base::setScheme(utf8);
    return *this;
}

IRIArgs& IRIArgs::setUserInfo(const std::string& utf8)
{
    Base::setUserInfo(utf8);
    return *this;
}

IRIArgs& IRIArgs::setUserInfo(const std::u16string& utf16)
{
    Base::setUserInfo(utf16);
    return *this;
}

IRIArgs& IRIArgs::setUserInfo(std::initializer_list<char> utf8)
{
    Base::setUserInfo(utf8);
    return *this;
}

IRIArgs& IRIArgs::setHost(const std::string& utf8)
{
    Base::setHost(utf8);
    return *this;
}

IRIArgs& IRIArgs::setHost(const std::u16string& utf16)
{
    Base::setHost(utf16);
    return *this;
}

IRIArgs& IRIArgs::setHost(std::initializer_list<char> utf8)
{
    Base::setHost(utf8);
    return *this;
}

IRIArgs& IRIArgs::setPath(const std::string& utf8)
{
    Base::setPath(utf8);
    return *this;
}

IRIArgs& IRIArgs::setPath(const std::u16string& utf16)
{
    Base::setPath(utf16);
    return *this;
}

IRIArgs& IRIArgs::setPath(std::initializer_list<char> utf8)
{
    Base::setPath(utf8);
    return *this;
}

IRIArgs& IRIArgs::setQuery(const std::string& utf8)
{
    Base::setQuery(utf8);
    return *this;
}

IRIArgs& IRIArgs::setQuery(const std::u16string& utf16)
{
    Base::setQuery(utf16);
    return *this;
}

IRIArgs& IRIArgs::setQuery(std::initializer_list<char> utf8)
{
    Base::setQuery(utf8);
    return *this;
}

IRIArgs& IRIArgs::setFragment(const std::string& utf8)
{
    Base::setFragment(utf8);
    return *this;
}

IRIArgs& IRIArgs::setFragment(const std::u16string& utf16)
{
    Base::setFragment(utf16);
    return *this;
}

IRIArgs& IRIArgs::setFragment(std::initializer_list<char> utf8)
{
    Base::setFragment(utf8);
    return *this;
}

IRIArgs& IRIArgs::setPort(unsigned short number)
{
    Base::setPort(number);
    return *this;
}

IRIArgs& IRIArgs::setPort(const std::string& utf8)
{
    Base::setPort(utf8);
    return *this;
}

IRIArgs& IRIArgs::setPort(const std::u16string& utf16)
{
    Base::setPort(utf16);
    return *this;
}

IRIArgs& IRIArgs::setPort(std::initializer_list<char> utf8)
{
    return setPort(std::string(utf8));
}

IRIArgs& IRIArgs::clearScheme()
{
    Base::clearScheme();
    return *this;
}

IRIArgs& IRIArgs::clearUserInfo()
{
    Base::clearUserInfo();
    return *this;
}

IRIArgs& IRIArgs::clearPort()
{
    Base::clearPort();
    return *this;
}

IRIArgs& IRIArgs::clearPath()
{
    Base::clearPath();
    return *this;
}

IRIArgs& IRIArgs::clearQuery()
{
    Base::clearQuery();
    return *this;
}

IRIArgs& IRIArgs::clearFragment()
{
    Base::clearFragment();
    return *this;
}

IRIArgs& IRIArgs::clearHost()
{
    Base::clearHost();
    return clearPort(); // unlike the base: a port needs a host
}

IRIArgs& IRIArgs::appendQueryKeyValuePair(const std::string& key, const std::string& value,
                                          bool formEncoded, bool semicolonSeparator)
{
    Base::appendQueryKeyValuePair(key, value, formEncoded, semicolonSeparator);
    return *this;
}

IRIArgs& IRIArgs::appendQueryKeyValuePair(const std::u16string& key, const std::u16string& value,
                                          bool formEncoded, bool semicolonSeparator)
{
    Base::appendQueryKeyValuePair(key, value, formEncoded, semicolonSeparator);
    return *this;
}

} // namespace foundation::network
