#pragma once

#include <foundation/network/API.hpp>

#include <exception>
#include <memory>
#include <string>

namespace foundation::network {

/// A failure of ICU itself while it converts a domain name. What is wrong with a name is no failure,
/// but a label so long that ICU does not take it is one.
class ZKFLNETWORK_API IdnConverterException : public std::exception {
public:
    /// A failure with this message.
    explicit IdnConverterException(std::string message) noexcept;

    /// A copy with the same message.
    IdnConverterException(const IdnConverterException& other);
    /// Takes the message over.
    IdnConverterException(IdnConverterException&& other) noexcept;
    /// A copy with the same message.
    IdnConverterException& operator=(const IdnConverterException& other);
    /// Takes the message over.
    IdnConverterException& operator=(IdnConverterException&& other) noexcept;
    ~IdnConverterException() noexcept override;

    /// ICU's name of the error, such as "U_MEMORY_ALLOCATION_ERROR"; valid as long as this object is.
    const char* what() const noexcept override;

private:
    std::string message_;
};

class IdnConverterImpl;

/// Converts whole domain names between Unicode and ASCII (UTS #46, processing by ICU).
///
/// The processing is non-transitional both ways, so that a sharp s and a final sigma stay what they
/// are. The rules STD3, CheckBidi, CheckJoiners and ContextO are off.
///
/// A name that breaks the rules of UTS #46 is no failure: an empty label, one of more than 63
/// characters, a name of more than 253, a character that is not allowed, a label that begins with
/// "xn--" and is none. The result is then what ICU makes of the name, with U+FFFD where nothing could
/// be made; `toAscii` gives "?" for each UTF-16 unit outside ASCII that is left, so that a name that
/// could not be converted never looks like another valid one. Who looks a name up checks the result
/// for these.
///
/// To make a converter takes some time, to copy one costs a reference count. One converter, and its
/// copies, may be used by any number of threads. A moved-from converter may only be destroyed or
/// assigned to.
///
/// Where memory runs out `std::bad_alloc` is thrown, or the exception "U_MEMORY_ALLOCATION_ERROR", by
/// which ICU tells the same; the converter can still be used.
///
/// No IRI is converted by this: in an IRI the ASCII form of a host has percent escapes.
class ZKFLNETWORK_API IdnConverter {
public:
    /// @throws IdnConverterException with ICU's name of the error
    IdnConverter();

    /// Shares what the other uses.
    IdnConverter(const IdnConverter& other) noexcept;
    /// Takes over what the other uses.
    IdnConverter(IdnConverter&& other) noexcept;
    /// Shares what the other uses.
    IdnConverter& operator=(const IdnConverter& other) noexcept;
    /// Takes over what the other uses.
    IdnConverter& operator=(IdnConverter&& other) noexcept;
    /// The last of the copies frees what they use.
    ~IdnConverter();

    /// @{
    /// The ASCII form of a name in UTF-16: lower case, with "xn--" before each label that needed
    /// Punycode (RFC 3492). `convert` is the same.
    ///
    /// @throws IdnConverterException with ICU's name of the error; "U_INPUT_TOO_LONG_ERROR" if a label
    ///         of more than 1000 units needs Punycode; the converter can still be used
    std::string toAscii(const std::u16string& name) const;
    std::string convert(const std::u16string& name) const;
    /// @}

    /// @{
    /// The Unicode form, in UTF-16, of a name in ASCII. A byte above 0x7F is taken for U+FFFD, which
    /// no name may hold. `convert` is the same.
    ///
    /// @throws IdnConverterException with ICU's name of the error; the converter can still be used
    std::u16string toUnicode(const std::string& name) const;
    std::u16string convert(const std::string& name) const;
    /// @}

private:
    std::shared_ptr<const IdnConverterImpl> impl_;
};

/// `IdnConverter::toAscii` of a converter that is made for this one call; keep one for many names.
ZKFLNETWORK_API std::string idn_to_ascii(const std::u16string& name);

/// `IdnConverter::toUnicode` of a converter that is made for this one call; keep one for many names.
ZKFLNETWORK_API std::u16string ascii_to_idn(const std::string& name);

} // namespace foundation::network
