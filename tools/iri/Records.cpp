#include "Records.hpp"

#include "System.hpp"

#include <algorithm>
#include <string_view>
#include <utility>

namespace tool {
namespace {

    constexpr std::size_t BUFFER_SIZE = 65536;
    constexpr std::string_view BYTE_ORDER_MARK = "\xEF\xBB\xBF";

} // namespace

Records::Records(std::vector<Operand> operands, Output& output)
    : operands_(std::move(operands))
    , output_(output)
{
    if (operands_.empty())
        operands_.push_back({"-", false});
}

bool Records::next(Record& record)
{
    for (;;) {
        if (isReading_) {
            if (nextLine(record.text)) {
                record.origin = "line " + std::to_string(lineNumber_);
                record.source = "<stdin>";
                record.line = lineNumber_;
                return true;
            }
            isReading_ = false;
        }
        if (nextOperand_ == operands_.size())
            return false;

        Operand& operand = operands_[nextOperand_++];
        if (operand.isVerbatim || operand.text != "-") {
            record.text = std::move(operand.text);
            record.origin = "argument " + std::to_string(nextOperand_);
            record.source = "<" + record.origin + ">";
            record.line = 1;
            return true;
        }
        isReading_ = true;
    }
}

bool Records::nextLine(std::string& line)
{
    line.clear();
    bool isComplete = false;
    while (!isComplete) {
        if (begin_ == end_ && !fillBuffer())
            break;
        const char* const start = buffer_.data() + begin_;
        const char* const stop = buffer_.data() + end_;
        const char* const lineFeed = std::find(start, stop, '\n');
        line.append(start, lineFeed);
        isComplete = lineFeed != stop;
        begin_ += static_cast<std::size_t>(lineFeed - start) + (isComplete ? 1 : 0);
    }
    if (!isComplete && line.empty())
        return false;

    ++lineNumber_;
    if (line.ends_with('\r'))
        line.pop_back();
    if (lineNumber_ == 1 && line.starts_with(BYTE_ORDER_MARK))
        line.erase(0, BYTE_ORDER_MARK.size());
    return true;
}

bool Records::fillBuffer()
{
    // Whoever feeds the program may be waiting for the answers to what it has written so far.
    output_.flush();
    if (buffer_.empty()) {
        buffer_.resize(BUFFER_SIZE);
        if (system::isTerminal(system::Stream::Input) && system::isTerminal(system::Stream::Error))
            output_.reportError("reading lines from the terminal; Ctrl-D ends");
    }
    begin_ = 0;
    end_ = system::readSome(buffer_);
    return end_ != 0;
}

} // namespace tool
