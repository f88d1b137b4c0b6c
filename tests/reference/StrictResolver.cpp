#include "reference/StrictResolver.hpp"

#include <cstddef>
#include <optional>

namespace foundation::network::tests {

namespace {

    using Component = std::optional<std::string>;

    struct Components {
        Component scheme;
        Component authority;
        std::string path;
        Component query;
        Component fragment;
    };

    bool takeFront(std::string& text, const std::string& front)
    {
        if (text.rfind(front, 0) != 0)
            return false;
        text.erase(0, front.size());
        return true;
    }

    // What stands in front of the first of some characters, which stay in the text.
    std::string takenUntil(std::string& text, const char* characters)
    {
        const std::string taken = text.substr(0, text.find_first_of(characters));
        text.erase(0, taken.size());
        return taken;
    }

    // What the regular expression of RFC 3986, appendix B finds.
    Components takenApart(std::string text)
    {
        Components result;
        const std::size_t colon = text.find_first_of(":/?#");
        if (colon != std::string::npos && colon > 0 && text[colon] == ':') {
            result.scheme = takenUntil(text, ":");
            takeFront(text, ":");
        }
        if (takeFront(text, "//"))
            result.authority = takenUntil(text, "/?#");
        result.path = takenUntil(text, "?#");
        if (takeFront(text, "?"))
            result.query = takenUntil(text, "#");
        if (takeFront(text, "#"))
            result.fragment = text;
        return result;
    }

    // RFC 3986, 5.2.4
    std::string withoutDotSegments(std::string input)
    {
        std::string output;
        while (!input.empty()) {
            if (takeFront(input, "../") || takeFront(input, "./")) // A
                continue;
            if (takeFront(input, "/./") || input == "/.") { // B
                input = input == "/." ? "/" : "/" + input;
            } else if (takeFront(input, "/../") || input == "/..") { // C
                input = input == "/.." ? "/" : "/" + input;
                const std::size_t slash = output.rfind('/');
                output.erase(slash == std::string::npos ? 0 : slash);
            } else if (input == "." || input == "..") { // D
                input.clear();
            } else { // E
                const std::size_t end = input.find('/', 1);
                output += input.substr(0, end);
                input.erase(0, end);
            }
        }
        return output;
    }

    // RFC 3986, 5.2.3
    std::string merged(const Components& base, const std::string& path)
    {
        if (base.authority && base.path.empty())
            return "/" + path;
        return base.path.substr(0, base.path.rfind('/') + 1) + path;
    }

    // RFC 3986, 5.3
    std::string recomposed(const Components& components)
    {
        std::string result;
        if (components.scheme)
            result += *components.scheme + ":";
        if (components.authority)
            result += "//" + *components.authority;
        result += components.path;
        if (components.query)
            result += "?" + *components.query;
        if (components.fragment)
            result += "#" + *components.fragment;
        return result;
    }

} // namespace

// RFC 3986, 5.2.2
std::string strictlyResolved(const std::string& reference, const std::string& base)
{
    const Components r = takenApart(reference);
    const Components b = takenApart(base);
    Components target;
    if (r.scheme) {
        target = r;
        target.path = withoutDotSegments(r.path);
    } else {
        target.scheme = b.scheme;
        if (r.authority) {
            target.authority = r.authority;
            target.path = withoutDotSegments(r.path);
            target.query = r.query;
        } else {
            target.authority = b.authority;
            if (r.path.empty()) {
                target.path = b.path;
                target.query = r.query ? r.query : b.query;
            } else {
                target.path = withoutDotSegments(r.path[0] == '/' ? r.path : merged(b, r.path));
                target.query = r.query;
            }
        }
        target.fragment = r.fragment;
    }
    return recomposed(target);
}

} // namespace foundation::network::tests
