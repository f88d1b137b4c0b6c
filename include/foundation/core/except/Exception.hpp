#pragma once

#include <foundation/network/API.hpp>

#include <boost/exception/exception.hpp>

#include <exception>
#include <stdexcept>
#include <string>
#include <system_error>

/// How the library fails.
///
/// A failure of input or of the system is thrown as `AnonymousInternalException<E>`, where `E` is
/// the standard exception that fits. Not of this family are `std::out_of_range` (as
/// `boost::wrapexcept`), for bad UTF-16, for code points that cannot be written and for a prefix
/// length that is too large; `network::IdnConverterException`; the plain `std::runtime_error` of a
/// missing component in `IRI::toString` and `IRI::toAsciiString`; and what the containers throw for
/// want of memory.
///
/// A handler may name a member of the family as that type, as `IInternalException`, `IException` or
/// `boost::exception`, as `E` or any base of `E`. It can be copied, kept in a `boost::exception_ptr`
/// and thrown again with its complete type; each owns its text, and `clone` copies what Boost has
/// attached, so that it may pass from thread to thread.
namespace foundation::core::except {

/// The root of the family: an exception that can copy and throw itself.
class ZKFLNETWORK_API IException : public boost::exception_detail::clone_base,
                                   public boost::exception {
public:
    /// @{
    /// A copy shares what Boost has attached; `clone` copies that, too.
    IException(const IException&) = default;
    IException& operator=(const IException&) = default;
    /// @}

    /// Virtual: an exception may be destroyed through any of its bases.
    ~IException() noexcept override;

    /// The message, as narrow text; valid as long as this object is.
    virtual const char* what() const noexcept = 0;

    /// The message as UTF-16; "Unknown exception" if the exception holds no text.
    std::u16string toUstring() const;

protected:
    /// Nothing is attached.
    IException() = default;

    /// Widens a narrow message; a byte outside ASCII becomes U+FFFD.
    static std::u16string convert_str(const std::string& message);

private:
    virtual std::u16string ToUstringImpl() const = 0;
};

/// The part of the family that the libraries throw themselves.
class ZKFLNETWORK_API IInternalException : public IException {
public:
    /// Nothing is attached.
    IInternalException() = default;

    /// @{
    /// As the copy of an `IException`.
    IInternalException(const IInternalException&) = default;
    IInternalException& operator=(const IInternalException&) = default;
    /// @}

    ~IInternalException() noexcept override;
};

/// Joins an interface of the family with a standard exception that holds the message.
///
/// The third parameter is reserved for specialisations.
template <class Interface, class Standard, class = void>
class Exception;

/// An internal exception that is a `Standard` as well; `Standard` holds the message.
template <class Standard>
class Exception<IInternalException, Standard, void> : public IInternalException, public Standard {
public:
    /// Copies the message, and with `std::system_error` the code, of @p standard.
    explicit Exception(const Standard& standard);

    /// @{
    /// A copy with the same text.
    Exception(const Exception&) = default;
    Exception& operator=(const Exception&) = default;
    /// @}

    ~Exception() noexcept override;

    /// The message of the standard exception.
    const char* what() const noexcept override;

private:
    std::u16string ToUstringImpl() const override;
};

/// An internal exception that is a `std::exception`.
///
/// `std::exception` keeps no text, so the text that the original answered is kept here.
template <>
class ZKFLNETWORK_API Exception<IInternalException, std::exception, void>
    : public IInternalException, public std::exception {
public:
    /// Keeps what `standard.what()` answers. A plain `std::exception` holds no text.
    explicit Exception(const std::exception& standard);

    /// @{
    /// A copy with the same text.
    Exception(const Exception&) = default;
    Exception& operator=(const Exception&) = default;
    /// @}

    ~Exception() noexcept override;

    /// The kept text; "Unknown exception" if the original held none.
    const char* what() const noexcept override;

private:
    std::u16string ToUstringImpl() const override;

    std::runtime_error text_; // copies without throwing, as the copy of an exception must
};

namespace detail {

    /// The form in which the library throws the standard exception `Standard`.
    template <class Standard>
    class AnonymousInternalException : public Exception<IInternalException, Standard, void> {
    public:
        /// Takes over the message, and with `std::system_error` the code, of @p standard.
        explicit AnonymousInternalException(const Standard& standard);

        /// @{
        /// A copy with the same text.
        AnonymousInternalException(const AnonymousInternalException&) = default;
        AnonymousInternalException& operator=(const AnonymousInternalException&) = default;
        /// @}

        ~AnonymousInternalException() noexcept override;

        /// A copy on the heap, which the caller owns.
        const boost::exception_detail::clone_base* clone() const override;

        /// Throws a copy of this object, with its complete type.
        [[noreturn]] void rethrow() const override;
    };

} // namespace detail

using detail::AnonymousInternalException;

extern template class ZKFLNETWORK_API_EXTERN Exception<IInternalException, std::logic_error>;
extern template class ZKFLNETWORK_API_EXTERN Exception<IInternalException, std::runtime_error>;
extern template class ZKFLNETWORK_API_EXTERN Exception<IInternalException, std::invalid_argument>;
extern template class ZKFLNETWORK_API_EXTERN Exception<IInternalException, std::system_error>;

namespace detail {

    extern template class ZKFLNETWORK_API_EXTERN AnonymousInternalException<std::exception>;
    extern template class ZKFLNETWORK_API_EXTERN AnonymousInternalException<std::logic_error>;
    extern template class ZKFLNETWORK_API_EXTERN AnonymousInternalException<std::runtime_error>;
    extern template class ZKFLNETWORK_API_EXTERN AnonymousInternalException<std::invalid_argument>;
    extern template class ZKFLNETWORK_API_EXTERN AnonymousInternalException<std::system_error>;

} // namespace detail

} // namespace foundation::core::except
