#include <foundation/core/except/Exception.hpp>

#include <algorithm>
#include <memory>
#include <typeinfo>

namespace foundation::core::except {

namespace {

    // What an exception answers that was made without a text.
    constexpr const char* NO_TEXT = "Unknown exception";

    std::string textOrUnknown(const char* text)
    {
        return text != nullptr && *text != '\0' ? text : NO_TEXT;
    }

    // A std::exception itself answers a name that the standard library chose, which is no message.
    std::string textOf(const std::exception& standard)
    {
        return typeid(standard) == typeid(std::exception) ? NO_TEXT
                                                          : textOrUnknown(standard.what());
    }

} // namespace

IException::~IException() noexcept = default;
IInternalException::~IInternalException() noexcept = default;

std::u16string IException::toUstring() const
{
    return ToUstringImpl();
}

std::u16string IException::convert_str(const std::string& message)
{
    std::u16string wide(message.size(), u'\0');
    std::transform(message.begin(), message.end(), wide.begin(), [](char narrow) {
        const auto byte = static_cast<unsigned char>(narrow);
        return byte < 0x80 ? static_cast<char16_t>(byte) : u'\uFFFD';
    });
    return wide;
}

template <class Standard>
Exception<IInternalException, Standard, void>::Exception(const Standard& standard)
    : Standard(standard)
{
}

template <class Standard>
Exception<IInternalException, Standard, void>::~Exception() noexcept = default;

template <class Standard>
const char* Exception<IInternalException, Standard, void>::what() const noexcept
{
    return Standard::what();
}

template <class Standard>
std::u16string Exception<IInternalException, Standard, void>::ToUstringImpl() const
{
    return convert_str(textOrUnknown(Standard::what()));
}

Exception<IInternalException, std::exception, void>::Exception(const std::exception& standard)
    : std::exception(standard)
    , text_(textOf(standard))
{
}

Exception<IInternalException, std::exception, void>::~Exception() noexcept = default;

const char* Exception<IInternalException, std::exception, void>::what() const noexcept
{
    return text_.what();
}

std::u16string Exception<IInternalException, std::exception, void>::ToUstringImpl() const
{
    return convert_str(text_.what());
}

namespace detail {

    template <class Standard>
    AnonymousInternalException<Standard>::AnonymousInternalException(const Standard& standard)
        : Exception<IInternalException, Standard, void>(standard)
    {
    }

    template <class Standard>
    AnonymousInternalException<Standard>::~AnonymousInternalException() noexcept = default;

    template <class Standard>
    const boost::exception_detail::clone_base* AnonymousInternalException<Standard>::clone() const
    {
        // The details that Boost attaches are shared by plain copies, and not between threads.
        auto copy = std::make_unique<AnonymousInternalException>(*this);
        boost::exception_detail::copy_boost_exception(copy.get(), this);
        return copy.release();
    }

    template <class Standard>
    void AnonymousInternalException<Standard>::rethrow() const
    {
        throw AnonymousInternalException(*this);
    }

} // namespace detail

template class ZKFLNETWORK_API_TEMPLATE Exception<IInternalException, std::logic_error>;
template class ZKFLNETWORK_API_TEMPLATE Exception<IInternalException, std::runtime_error>;
template class ZKFLNETWORK_API_TEMPLATE Exception<IInternalException, std::invalid_argument>;
template class ZKFLNETWORK_API_TEMPLATE Exception<IInternalException, std::system_error>;

namespace detail {

    template class ZKFLNETWORK_API_TEMPLATE AnonymousInternalException<std::exception>;
    template class ZKFLNETWORK_API_TEMPLATE AnonymousInternalException<std::logic_error>;
    template class ZKFLNETWORK_API_TEMPLATE AnonymousInternalException<std::runtime_error>;
    template class ZKFLNETWORK_API_TEMPLATE AnonymousInternalException<std::invalid_argument>;
    template class ZKFLNETWORK_API_TEMPLATE AnonymousInternalException<std::system_error>;

} // namespace detail

} // namespace foundation::core::except
