#include "except/Catcher.hpp"

#include "except/Handlers.hpp"

#include <foundation/core/except/Exception.hpp>
#include <foundation/network/IRI.hpp>

#include <system_error>

namespace catcher {

namespace except = foundation::core::except;

std::vector<std::string> handlersThatTake(void (*operation)())
{
    return except::tests::handlersThatTake(operation);
}

std::string textTakenAsIException(void (*operation)())
{
    try {
        operation();
    } catch (const except::IException& thrown) {
        return thrown.what();
    }
    return "nothing was thrown";
}

int codeTakenAsSystemError(void (*operation)())
{
    try {
        operation();
    } catch (const std::system_error& thrown) {
        return thrown.code().value();
    }
    return -1;
}

std::vector<const std::type_info*> typesOfTheFamily()
{
    return except::tests::typesOfTheFamily();
}

void parse(const std::string& text)
{
    foundation::network::IRI iri(text);
}

void throwSystemError(int code)
{
    throw except::AnonymousInternalException<std::system_error>(
        std::system_error(code, std::generic_category(), "Made elsewhere"));
}

} // namespace catcher
