#pragma once

#include "engine/FrameView.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

namespace scenariomatch
{

// Who comes into question for a variable: the agents of its type that pass tests which depend on
// nothing else, or on one constant object beside. Found once per frame, and object, for all models
// that ask the same.
//
// Questions are told apart by a text and get numbers while models are prepared; whoever asks first
// in a frame works the answer out.
//
// Example: for near_in_A the zones named A; then, for the zone, the people inside it.
class CS_EXPORT Choices
{
public:
    struct Answer
    {
        std::uint64_t frame = 0;
        // Places in the type's list, ascending, and for each the confidences of the tests.
        std::vector<std::uint32_t> ranks;
        std::vector<double> confidences;
        // By rank: one more than its index in `ranks`, 0 where it is not among them.
        std::vector<std::uint32_t> indexes;
    };

    struct Number
    {
        std::size_t number = 0;
        bool isNew = false;
    };

    // Entered when it is new.
    Number numberOf(const std::string& question);

    // The answer for no object, or for the constant object with this number; out of date unless
    // its frame is the view's. Valid until the next frame.
    Answer& about(std::size_t number, const FrameView& view);
    Answer& about(std::size_t number, std::int32_t constantNumber, const FrameView& view);

private:
    std::unordered_map<std::string, std::size_t> m_numbers;
    // By question: for no object, then by the object's number.
    std::vector<std::vector<Answer>> m_answers;
};

} // namespace scenariomatch
