#include <foundation/network/IRI.hpp>

#include <foundation/network/IRIArgs.hpp>

#include "text/Ascii.hpp"

#include <ostream>

namespace foundation::network {

IRI::IRI() noexcept = default;

IRI::IRI(const std::u16string& utf16)
    : Base(utf16)
{
}

IRI::IRI(const std::string& utf8)
    : Base(utf8)
{
}

IRI::IRI(const IRIArgs& args)
    : Base(args)
{
}

IRI::IRI(const IRI& other) = default;
IRI::IRI(IRI&& other) noexcept = default;

IRI& IRI::operator=(const IRI& other) = default;
IRI& IRI::operator=(IRI&& other) = default;
IRI::~IRI() = default;

void IRI::swap(IRI& other) noexcept
{
    Base::swap(other);
}

std::u16string IRI::getScheme() const
{
    return Base::getScheme();
}

std::string IRI::getSchemeUtf8() const
{
    return Base::getSchemeUtf8();
}

std::u16string IRI::getSchemeSpecificPart(const Encoding& encoding) const
{
    return Base::getSchemeSpecificPart(encoding);
}

std::string IRI::getSchemeSpecificPartUtf8(const Encoding& encoding) const
{
    return Base::getSchemeSpecificPartUtf8(encoding);
}

std::u16string IRI::getAuthority(const Encoding& encoding) const
{
    return Base::getAuthority(encoding);
}

std::string IRI::getAuthorityUtf8(const Encoding& encoding) const
{
    return Base::getAuthorityUtf8(encoding);
}

std::u16string IRI::getUserInfo(const Encoding& encoding) const
{
    return Base::getUserInfo(encoding);
}

std::string IRI::getUserInfoUtf8(const Encoding& encoding) const
{
    return Base::getUserInfoUtf8(encoding);
}

std::u16string IRI::getHost(const Encoding& encoding) const
{
    return Base::getHost(encoding);
}

std::string IRI::getHostUtf8(const Encoding& encoding) const
{
    return Base::getHostUtf8(encoding);
}

std::u16string IRI::getPort() const
{
    return Base::getPort();
}

std::string IRI::getPortUtf8() const
{
    return Base::getPortUtf8();
}

std::uint16_t IRI::getPortNumber() const
{
    return Base::getPortNumber();
}

std::u16string IRI::getPath(const Encoding& encoding) const
{
    return Base::getPath(encoding);
}

std::string IRI::getPathUtf8(const Encoding& encoding) const
{
    return Base::getPathUtf8(encoding);
}

std::u16string IRI::getQuery(const Encoding& encoding) const
{
    return Base::getQuery(encoding);
}

std::string IRI::getQueryUtf8(const Encoding& encoding) const
{
    return Base::getQueryUtf8(encoding);
}

std::u16string IRI::getFragment(const Encoding& encoding) const
{
    return Base::getFragment(encoding);
}

std::string IRI::getFragmentUtf8(const Encoding& encoding) const
{
    return Base::getFragmentUtf8(encoding);
}

std::u16string IRI::toString(bool strict) const
{
    return Base::toString(strict);
}

std::string IRI::toStringUtf8(bool strict) const
{
    return Base::toStringUtf8(strict ? Encoding::IriStrict : Encoding::Iri);
}

std::u16string IRI::toAsciiString(bool strict) const
{
    return Base::toAsciiString(strict);
}

std::string IRI::toAsciiStringUtf8(bool strict) const
{
    return Base::toAsciiStringUtf8(strict ? Encoding::AsciiStrict : Encoding::Ascii);
}

IRI IRI::resolveAgainst(const IRI& base) const
{
    IRI target;
    Base::doResolve(base, target);
    return target;
}

IRI IRI::makeRelativeTo(const IRI& base) const
{
    IRI target;
    Base::doRelativise(base, target);
    return target;
}

void IRI::toArgs(IRIArgs& args) const
{
    Base::toArgs(args);
}

bool IRI::operator==(const IRI& other) const
{
    return Base::operator==(other);
}

bool IRI::operator!=(const IRI& other) const
{
    return Base::operator!=(other);
}

bool IRI::operator<(const IRI& other) const
{
    return Base::operator<(other);
}

std::uint64_t IRI::hashValue() const
{
    return Base::hashValue();
}

std::optional<IRI> IRI::tryParse(std::string_view utf8)
{
    std::optional<IRI> value(std::in_place);
    if (!value->tryRead(utf8))
        value.reset();
    return value;
}

std::optional<IRI> IRI::tryParse(std::u16string_view utf16)
{
    std::optional<IRI> value(std::in_place);
    if (!value->tryRead(utf16))
        value.reset();
    return value;
}

std::ostream& operator<<(std::ostream& stream, const IRI& iri)
{
    return stream << text::toAscii(iri.toAsciiString(false));
}

} // namespace foundation::network
