#include "Source.hpp"

namespace tool::bulk {

namespace {

    template <class Work>
    auto orUnreadable(Work work)
    {
        try {
            return work();
        } catch (const std::system_error& error) {
            throw UnreadableSource(error);
        }
    }

} // namespace

Source::Source()
    : name_("<stdin>")
    , descriptor_(system::inputDescriptor())
    , isOwned_(false)
{
}

Source::Source(const std::string& path)
    : name_(path)
    , descriptor_(orUnreadable([&] { return system::openForReading(path); }))
    , isOwned_(true)
{
}

Source::~Source()
{
    if (isOwned_)
        system::close(descriptor_);
}

std::optional<std::uint64_t> Source::remainingSize() const
{
    return system::remainingSize(descriptor_);
}

std::size_t Source::read(std::span<char> buffer)
{
    return orUnreadable(
        [&] { return system::readSome(descriptor_, isOwned_ ? name_ : "standard input", buffer); });
}

bool Source::isInterrupted() noexcept
{
    return system::wasInterrupted();
}

} // namespace tool::bulk
