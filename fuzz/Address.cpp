// The text of an address, or after "!" a prefix length and the bytes of one: what is taken is shown
// in the one short way, and reads again as the same.

#include "Target.hpp"

#include "address/NaiveAddress.hpp"

#include <foundation/core/except/Exception.hpp>
#include <foundation/network/HardwareAddress.hpp>
#include <foundation/network/InetAddress.hpp>
#include <foundation/network/InterfaceAddress.hpp>

#include <optional>
#include <stdexcept>
#include <string>

namespace foundation::network::fuzz {

namespace {

    using namespace tests;

    void requireShown(const InetAddress& address)
    {
        const Bytes bytes = address.bytes();
        require(bytes.size() == (address.getVersion() == 4 ? 4U : 16U), "4 or 16 bytes");
        const std::string shown = address.toString();
        require(shown.substr(0, shown.find('%')) == naiveText(bytes), "the short text is shown");
        require(shown == address.getHostAddress(), "both readers agree");
        require(InetAddress(shown).bytes() == bytes, "the text reads again as the same");
        require(InetAddress(shown).toString() == shown, "and is shown in the same way");
        require(address.isLoopback() == naiveIsLoopback(bytes)
                    && address.isLinkLocal() == naiveIsLinkLocal(bytes)
                    && address.isMulticast() == naiveIsMulticast(bytes),
                "it is of the classes that its bytes show");
    }

    void requireNetwork(const InetAddress& address, unsigned short prefix)
    {
        try {
            const InterfaceAddress network(address, prefix);
            require(network.toString() == address.toString() + "/" + std::to_string(prefix),
                    "address and prefix are shown");
            require(network.prefixLength() == prefix, "the prefix length comes back");
            require(network.getInetAddress().bytes() == address.bytes()
                        && network.getInetAddress().toString() == address.toString(),
                    "and so does the address");
        } catch (const std::out_of_range&) {
            require(prefix > (address.getVersion() == 4 ? 32 : 128), "the prefix is too long");
            return;
        }
        require(prefix <= (address.getVersion() == 4 ? 32 : 128), "the prefix fits");
    }

    void runBytes(Input input)
    {
        const unsigned short prefix = input.byte();
        const std::string text = input.rest();
        const Bytes bytes(text.begin(), text.end());
        const HardwareAddress hardware(bytes);
        require(hardware.bytes() == bytes
                    && hardware.toString().size() == (bytes.empty() ? 0 : 3 * bytes.size() - 1),
                "any bytes are a hardware address");
        try {
            const InetAddress address(bytes);
            require(bytes.empty() || address.bytes() == bytes, "the bytes come back");
            requireShown(address);
            requireNetwork(address, prefix);
        } catch (const core::except::AnonymousInternalException<std::invalid_argument>& failure) {
            require(failure.what()
                        == "Can not create InetAddress from " + std::to_string(bytes.size())
                               + " elements. Vector must have 0, 4 or 16 elements.",
                    "the number of bytes is shown");
            require(!bytes.empty() && bytes.size() != 4 && bytes.size() != 16,
                    "only other numbers of bytes are refused");
        }
    }

    void runText(const std::string& text)
    {
        std::optional<InetAddress> address;
        try {
            address.emplace(text);
        } catch (const core::except::AnonymousInternalException<std::invalid_argument>& failure) {
            const std::string message = failure.what();
            require(message == "Invalid IP address string: " + text
                        || message.find(" [system:") != message.npos,
                    "the text is shown, or the system says why it is refused");
            return;
        }
        requireShown(*address);
        // Windows takes a port, too.
        require(address->getVersion() == 6 || text.find(':') == text.npos
                    || text.find('\0') < text.find(':')
                    || text.starts_with(address->toString() + ':'),
                "a colon makes it version 6, unless it is that of a port");
    }

} // namespace

void run(Input input)
{
    const std::string text = Input(input).rest();
    if (!text.starts_with('!'))
        return runText(text);
    input.byte();
    runBytes(input);
}

} // namespace foundation::network::fuzz
