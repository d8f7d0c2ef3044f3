#include "app/FieldReader.h"

#include <charconv>
#include <cmath>
#include <limits>
#include <system_error>

namespace scenariomatch
{

namespace
{

constexpr std::string_view kBlanks = " \t";

std::string_view trimmed(std::string_view text)
{
    while (!text.empty() && kBlanks.find(text.front()) != std::string_view::npos) {
        text.remove_prefix(1);
    }
    while (!text.empty() && kBlanks.find(text.back()) != std::string_view::npos) {
        text.remove_suffix(1);
    }
    return text;
}

} // namespace

std::size_t splitAt(char separator, std::string_view row, std::span<std::string_view> fields)
{
    std::size_t count = 0;
    while (true) {
        const std::size_t end = row.find(separator);
        if (count < fields.size()) {
            fields[count] = trimmed(row.substr(0, end));
        }
        ++count;
        if (end == std::string_view::npos) {
            return count;
        }
        row.remove_prefix(end + 1);
    }
}

std::size_t splitAtBlanks(std::string_view row, std::span<std::string_view> fields)
{
    std::size_t count = 0;
    std::size_t begin = row.find_first_not_of(kBlanks);
    while (begin != std::string_view::npos) {
        const std::size_t end = std::min(row.find_first_of(kBlanks, begin), row.size());
        if (count < fields.size()) {
            fields[count] = row.substr(begin, end - begin);
        }
        ++count;
        begin = row.find_first_not_of(kBlanks, end);
    }
    return count;
}

void FieldReader::start(std::string_view row)
{
    m_row = row;
    m_fault.reset();
}

double FieldReader::number(std::string_view field)
{
    std::string_view text = field;
    if (text.size() > 1 && text.front() == '+' && text[1] != '-') {
        text.remove_prefix(1);
    }
    double value = 0.0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    const bool isWhole = !text.empty() && end == text.data() + text.size();
    if (isWhole && (error == std::errc::result_out_of_range || !std::isfinite(value))) {
        fail(Oddity::NotFinite, field, "the number is not finite");
        return 0.0;
    }
    if (!isWhole || error != std::errc()) {
        fail(Oddity::Malformed, field, "a number is expected");
        return 0.0;
    }
    return value;
}

int FieldReader::whole(std::string_view field)
{
    int value = 0;
    const char* const end = field.data() + field.size();
    const auto [last, error] = std::from_chars(field.data(), end, value);
    if (error == std::errc() && last == end) {
        return value;
    }
    const double real = number(field);
    if (real != std::floor(real)) {
        fail(Oddity::Malformed, field, "a whole number is expected");
        return 0;
    }
    if (std::abs(real) > std::numeric_limits<int>::max()) {
        fail(Oddity::OutOfRange, field, "the number is out of range");
        return 0;
    }
    return static_cast<int>(real);
}

void FieldReader::fail(Oddity kind, std::string_view field, const char* reason)
{
    if (!m_fault) {
        m_fault = {kind, static_cast<std::size_t>(field.data() - m_row.data()), reason};
    }
}

} // namespace scenariomatch
