#pragma once

// The members of Parts, for whoever reads a text.

#include <foundation/network/iri/detail/Parts.hpp>

namespace foundation::network::iri::detail {

template <class It>
void HierarchicalPart<It>::update()
{
    if (!userInfo) {
        const It start = host ? host->begin() : path->begin();
        userInfo = Range(start, start);
    }
    if (!host)
        host = Range(path->begin(), path->begin());
    if (!port)
        port = Range(host->end(), host->end());
}

template <class It>
void Parts<It>::update()
{
    hierarchicalPart.update();
    const It pathEnd = hierarchicalPart.path->end();
    if (!query)
        query = Range(pathEnd, pathEnd);
    if (!fragment)
        fragment = Range(query->end(), query->end());
}

} // namespace foundation::network::iri::detail
