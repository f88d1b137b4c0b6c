#include <foundation/network/IdnConverter.hpp>

#include "text/Ascii.hpp"

#include <unicode/idna.h>
#include <unicode/unistr.h>

#include <cstdint>
#include <limits>
#include <string_view>
#include <utility>

namespace foundation::network {

IdnConverterException::IdnConverterException(std::string message) noexcept
    : message_(std::move(message))
{
}

IdnConverterException::IdnConverterException(const IdnConverterException& other) = default;
IdnConverterException::IdnConverterException(IdnConverterException&& other) noexcept = default;
IdnConverterException& IdnConverterException::operator=(const IdnConverterException& other) =
    default;
IdnConverterException& IdnConverterException::operator=(IdnConverterException&& other) noexcept =
    default;
IdnConverterException::~IdnConverterException() noexcept = default;

const char* IdnConverterException::what() const noexcept
{
    return message_.c_str();
}

namespace {

    void throwIfFailed(UErrorCode code)
    {
        if (U_FAILURE(code))
            throw IdnConverterException(u_errorName(code));
    }

} // namespace

/// What the copies of a converter share. It does not change once it is made.
class IdnConverterImpl {
public:
    IdnConverterImpl()
    {
        constexpr std::uint32_t OPTIONS =
            UIDNA_NONTRANSITIONAL_TO_ASCII | UIDNA_NONTRANSITIONAL_TO_UNICODE;
        UErrorCode code = U_ZERO_ERROR;
        idna_.reset(icu::IDNA::createUTS46Instance(OPTIONS, code));
        throwIfFailed(code);
    }

    using Direction = icu::UnicodeString& (icu::IDNA::*)(const icu::UnicodeString&,
                                                         icu::UnicodeString&, icu::IDNAInfo&,
                                                         UErrorCode&) const;

    std::u16string convert(const std::u16string& name, Direction direction) const
    {
        constexpr auto LIMIT = static_cast<std::size_t>(std::numeric_limits<std::int32_t>::max());
        if (name.size() > LIMIT)
            throwIfFailed(U_ILLEGAL_ARGUMENT_ERROR);

        // ICU moves the rest of the name for each label that changes, which is quadratic where there
        // are many. No label changes another, so long names are converted some labels at a time.
        std::u16string_view rest = name;
        std::u16string result;
        for (;;) {
            const std::size_t dot =
                rest.size() > ENOUGH ? rest.find(u'.', ENOUGH) : std::u16string_view::npos;
            convertOnto(result, rest.substr(0, dot), direction);
            if (dot == std::u16string_view::npos)
                return result;
            result += u'.';
            rest.remove_prefix(dot + 1);
        }
    }

private:
    // Many times what a name in the DNS may have, so that those are converted at once.
    static constexpr std::size_t ENOUGH = 1024;

    void convertOnto(std::u16string& result, std::u16string_view labels, Direction direction) const
    {
        UErrorCode code = U_ZERO_ERROR;
        icu::IDNAInfo findings; // not read: what is wrong with a name is no failure here
        icu::UnicodeString converted;
        const icu::UnicodeString source(false, labels.data(),
                                        static_cast<std::int32_t>(labels.size()));
        ((*idna_).*direction)(source, converted, findings, code);
        throwIfFailed(code);
        result.append(converted.getBuffer(), static_cast<std::size_t>(converted.length()));
    }

    std::unique_ptr<const icu::IDNA> idna_;
};

IdnConverter::IdnConverter()
    : impl_(std::make_unique<const IdnConverterImpl>())
{
}

IdnConverter::IdnConverter(const IdnConverter& other) noexcept = default;
IdnConverter::IdnConverter(IdnConverter&& other) noexcept = default;
IdnConverter& IdnConverter::operator=(const IdnConverter& other) noexcept = default;
IdnConverter& IdnConverter::operator=(IdnConverter&& other) noexcept = default;
IdnConverter::~IdnConverter() = default;

std::string IdnConverter::toAscii(const std::u16string& name) const
{
    return text::toAscii(impl_->convert(name, &icu::IDNA::nameToASCII));
}

std::string IdnConverter::convert(const std::u16string& name) const
{
    return toAscii(name);
}

std::u16string IdnConverter::toUnicode(const std::string& name) const
{
    return impl_->convert(text::fromAscii(name), &icu::IDNA::nameToUnicode);
}

std::u16string IdnConverter::convert(const std::string& name) const
{
    return toUnicode(name);
}

std::string idn_to_ascii(const std::u16string& name)
{
    return IdnConverter().toAscii(name);
}

std::u16string ascii_to_idn(const std::string& name)
{
    return IdnConverter().toUnicode(name);
}

} // namespace foundation::network
