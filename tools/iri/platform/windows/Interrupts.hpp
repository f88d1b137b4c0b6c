#pragma once

/// How Ctrl-C ends a read that waits. The functions that catch interrupts are in System.hpp.
namespace tool::system {

/// While it lives, an interrupt ends the read in which this thread waits: that then fails with the
/// error of an operation that was given up.
class InterruptibleRead {
public:
    InterruptibleRead();
    InterruptibleRead(const InterruptibleRead&) = delete;
    InterruptibleRead& operator=(const InterruptibleRead&) = delete;
    ~InterruptibleRead();
};

} // namespace tool::system
