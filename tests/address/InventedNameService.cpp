#include "address/InventedNameService.hpp"

namespace foundation::network::tests {

InventedNameService& nameService()
{
    static InventedNameService service;
    return service;
}

} // namespace foundation::network::tests
