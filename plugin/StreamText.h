#pragma once

#include <array>
#include <charconv>
#include <concepts>
#include <string>
#include <string_view>

namespace scenariomatch
{

// Text built up as a standard stream with default settings in the C locale would write it.
//
// Keeps its memory when cleared, so that one object serves every frame. A stream itself would
// format by the locale of the program around it.
//
// Example:
//     StreamText text;
//     text << "frame " << 12 << ": " << 0.5;
class StreamText
{
public:
    StreamText& operator<<(std::string_view text)
    {
        m_text += text;
        return *this;
    }

    StreamText& operator<<(char character)
    {
        m_text += character;
        return *this;
    }

    template <std::integral Number>

    requires(!std::same_as<Number, char> && !std::same_as<Number, bool>) StreamText&
    operator<<(Number value)
    {
        std::array<char, 24> digits = {};
        const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value);
        m_text.append(digits.data(), end.ptr);
        return *this;
    }

    // Six significant digits.
    StreamText& operator<<(double value)
    {
        std::array<char, 32> digits = {};
        const auto end = std::to_chars(
            digits.data(), digits.data() + digits.size(), value, std::chars_format::general, 6);
        m_text.append(digits.data(), end.ptr);
        return *this;
    }

    const std::string& text() const { return m_text; }

    void clear() { m_text.clear(); }

private:
    std::string m_text;
};

} // namespace scenariomatch
