// A program of calls, one a line, on four values and two bags. Of a line, the first letter is the
// call and the next ones name what it works on:
//
//     pA text     A is parsed from the text
//     PA text     the same from the text in UTF-16
//     cAB  mAB    A is a copy of B; A is constructed by moving B
//     =AB  <AB    the same by assignment
//     xAB         A and B are exchanged
//     RABC  LABC  A is B resolved against C; A is B made relative to C; unless its path gets long
//     rA..        A is read, in the order that the next two letters draw
//     hA  eAB     A is hashed; A and B are compared
//     kA call     the call of callAlike on bag A
//     tAB  BAB    bag B takes the components of A; A is what bag B builds
//
// All of it gives what the model gives.

#include "BagCalls.hpp"
#include "ModelledValue.hpp"
#include "Target.hpp"

#include "build/NaiveText.hpp"

#include <array>
#include <cstddef>
#include <string>
#include <utility>

namespace foundation::network::fuzz {

namespace {

    class Program {
    public:
        Program()
        {
            for (ModelledValuePointer& value : values_)
                value = emptyValue();
        }

        void call(Input line)
        {
            const unsigned char letter = line.byte();
            const std::size_t index = indexFrom(line);
            ModelledValuePointer& first = values_[index];
            switch (letter) {
            case 'p':
                return parse(first, line.rest());
            case 'P':
                return parseUtf16(first, line.rest());
            case 'k':
                return require(callAlike(bags_[index % 2], line));
            case 'B':
                return require(buildAlike(bags_[indexFrom(line) % 2], first));
            default:
                break;
            }
            if (letter == 'R' || letter == 'L') {
                ModelledValue& left = *values_[indexFrom(line)];
                ModelledValue& right = *values_[indexFrom(line)];
                return combine(first, letter, left, right);
            }
            if (letter == 'r' && !first->isMovedFrom)
                return read(*first, line.byte() + 256U * line.byte());
            if (letter == 'h' && !first->isMovedFrom)
                return require(hashAlike(*first));
            const std::size_t second = indexFrom(line);
            if (letter == 't' && !first->isMovedFrom)
                return require(toArgsAlike(*first, bags_[second % 2]));
            if (!values_[second]->isMovedFrom)
                callWithTwo(letter, first, *values_[second]);
        }

        // Whatever happened, all is as the model has it.
        void end()
        {
            unsigned seed = 1;
            for (ModelledValuePointer& value : values_)
                if (!value->isMovedFrom) {
                    read(*value, seed++);
                    require(hashAlike(*value));
                }
        }

    private:
        static std::size_t indexFrom(Input& line) { return line.byte() % 4U; }

        static void parse(ModelledValuePointer& value, const std::string& text)
        {
            if (IRI::tryParse(text))
                value = parsedValue(text);
        }

        static void parseUtf16(ModelledValuePointer& value, const std::string& utf8)
        {
            const auto text = tests::readUtf8(utf8);
            if (text && IRI::tryParse(utf8))
                value = parsedFromUtf16(tests::toUtf16(*text));
        }

        static void read(ModelledValue& value, unsigned seed)
        {
            tests::Random random(seed);
            require(tests::readsAlike(value.specimen, 6, random));
        }

        static void combine(ModelledValuePointer& result, unsigned char letter, ModelledValue& left,
                            ModelledValue& right)
        {
            if (left.isMovedFrom || right.isMovedFrom)
                return;
            const bool isResolved = letter == 'R';
            tests::Outcome outcome = isResolved ? tests::resolve(left.specimen, right.specimen)
                                                : tests::relativise(left.specimen, right.specimen);
            require(outcome.alike);
            if (!outcome.result || pathIsLong(outcome.result->record))
                return;
            ModelledValuePointer made = valueOf(std::move(*outcome.result));
            // An empty reference gives a copy of the base.
            if (isResolved && left.record().isEmpty && !right.record().isEmpty)
                made->hash.take(right.hash);
            made->specimen.origin = "result";
            result = std::move(made);
        }

        // Resolving can double a path with each call, so that a few lines would take hours.
        static bool pathIsLong(const tests::NaiveRecord& record)
        {
            constexpr std::size_t LONGEST = 1000;
            return record.path && record.path->stored().size() > LONGEST;
        }

        static void callWithTwo(unsigned char letter, ModelledValuePointer& first,
                                ModelledValue& second)
        {
            switch (letter) {
            case 'c':
                first = copied(second);
                break;
            case 'm':
                first = moved(second);
                break;
            case '=':
                assignCopy(*first, second);
                break;
            case '<':
                require(assignMoved(*first, second));
                break;
            case 'x':
                if (!first->isMovedFrom)
                    exchange(*first, second);
                break;
            case 'e':
                if (!first->isMovedFrom)
                    require(compareAlike(*first, second));
                break;
            default:
                break;
            }
        }

        std::array<ModelledValuePointer, 4> values_;
        std::array<tests::TwinBag, 2> bags_;
    };

} // namespace

void run(Input input)
{
    Program program;
    for (int calls = 0; calls < 100 && !input.isAtEnd(); ++calls) {
        const std::string line = input.line();
        program.call(Input(line));
    }
    program.end();
}

} // namespace foundation::network::fuzz
