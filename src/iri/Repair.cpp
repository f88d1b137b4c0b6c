// The texts that are proposed in the place of bad ones.

#include <foundation/network/iri/Diagnosis.hpp>

#include "iri/Pieces.hpp"
#include "iri/ReferenceReading.hpp"
#include "text/HexDigits.hpp"
#include "text/Utf.hpp"
#include "text/WellFormed.hpp"

#include <utility>

namespace foundation::network::iri {

namespace {

    using namespace detail;

    template <class Unit>
    void appendEscaped(std::basic_string<Unit>& text, std::string_view bytes)
    {
        for (const char byte : bytes) {
            const auto value = static_cast<unsigned char>(byte);
            for (const char c : {'%', text::hexDigit(value >> 4), text::hexDigit(value & 0xFU)})
                text.push_back(static_cast<Unit>(c));
        }
    }

    // Writes a good text component by component.
    template <class Unit>
    class RepairedText {
    public:
        using View = TextView<Unit>;

        explicit RepairedText(std::size_t size) { text_.reserve(size + 8); } // some escapes

        // @returns false if there is nothing to propose
        bool writeAll(const Pieces<Unit>& pieces)
        {
            if (pieces.scheme) {
                copy(*pieces.scheme);
                put(':');
            }
            if (pieces.notAScheme) {
                // A scheme that something is wrong with, as in "my server://x". A path it is not.
                const View behind = pieces.path.substr(pieces.notAScheme->size() + 1);
                if (behind.size() > 1 && behind[0] == '/' && behind[1] == '/')
                    return false;
                put('.');
                put('/');
            }
            if (pieces.hasAuthority)
                writeAuthority(pieces);
            write(pieces.path, [](auto& at) { skipPath(at); });
            if (pieces.query) {
                put('?');
                write(*pieces.query, [](auto& at) { grammar::iquery(at); });
            }
            if (pieces.fragment) {
                put('#');
                write(*pieces.fragment, [](auto& at) { grammar::ifragment(at); });
            }
            return true;
        }

        std::basic_string<Unit> take() { return std::move(text_); }

    private:
        void put(char ascii) { text_.push_back(static_cast<Unit>(ascii)); }
        void copy(View view) { text_.append(view); }

        void escape(char32_t codePoint)
        {
            const text::Utf8Sequence utf8 = text::encodeUtf8(codePoint);
            appendEscaped(text_, utf8.view());
        }

        // Copies what the production takes and escapes what it stops at, in turn.
        template <class Production>
        void write(View component, Production production)
        {
            auto at = cursorOver(component);
            for (;;) {
                const Unit* const start = at.position().base();
                production(at);
                copy({start, static_cast<std::size_t>(at.position().base() - start)});
                if (at.atEnd())
                    return;
                escape(at.next());
            }
        }

        void writeAuthority(const Pieces<Unit>& pieces)
        {
            put('/');
            put('/');
            if (pieces.userInfo) {
                write(*pieces.userInfo, [](auto& at) { grammar::iuserinfo(at); });
                put('@');
            }
            writeHost(pieces);
            if (pieces.port && !pieces.port->empty()) {
                put(':');
                copy(*pieces.port);
            }
        }

        void writeHost(const Pieces<Unit>& pieces)
        {
            const View host = pieces.host;
            if (pieces.isBareIpv6) {
                put('[');
                copy(host);
                put(']');
            } else if (!host.empty() && host.front() == '[') {
                copy(host);
                if (host.find(Unit(']')) == host.npos)
                    put(']');
            } else {
                write(host, [](auto& at) { grammar::ireg_name(at); });
            }
        }

        std::basic_string<Unit> text_;
    };

    template <class Unit>
    TextView<Unit> trimmed(TextView<Unit> text)
    {
        while (!text.empty() && isWhiteSpace(text.front()))
            text.remove_prefix(1);
        while (!text.empty() && isWhiteSpace(text.back()))
            text.remove_suffix(1);
        return text;
    }

    template <class Unit>
    std::optional<std::basic_string<Unit>> repairWellFormed(TextView<Unit> text)
    {
        if (isReference(text))
            return std::basic_string<Unit>(text);
        text = trimmed(text);
        RepairedText<Unit> repaired(text.size());
        if (!repaired.writeAll(splitAtDelimiters(text, text.size())))
            return std::nullopt;
        // An address or a port that is wrong was copied.
        std::optional result(repaired.take());
        if (!isReference(TextView<Unit>(*result)))
            result.reset();
        return result;
    }

    // Each byte of a defect as an escape of its own.
    std::string withDefectsEscaped(std::string_view utf8)
    {
        std::string result;
        for (;;) {
            const std::size_t wellFormed = text::wellFormedLength(utf8);
            result.append(utf8.substr(0, wellFormed));
            utf8.remove_prefix(wellFormed);
            if (utf8.empty())
                return result;
            const std::size_t length = text::defectLength(utf8);
            appendEscaped(result, utf8.substr(0, length));
            utf8.remove_prefix(length);
        }
    }

} // namespace

std::optional<std::string> repair(std::string_view utf8)
{
    if (text::wellFormedLength(utf8) == utf8.size())
        return repairWellFormed(utf8);
    return repairWellFormed(std::string_view(withDefectsEscaped(utf8)));
}

std::optional<std::u16string> repair(std::u16string_view utf16)
{
    // A lone surrogate has no UTF-8 that could be escaped.
    if (text::wellFormedLength(utf16) < utf16.size())
        return std::nullopt;
    return repairWellFormed(utf16);
}

} // namespace foundation::network::iri
