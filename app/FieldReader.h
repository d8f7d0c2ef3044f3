#pragma once

#include "app/TrackProblems.h"

#include <cstddef>
#include <optional>
#include <span>
#include <string_view>

namespace scenariomatch
{

// What is wrong with a field of a row.
struct FieldFault
{
    Oddity kind = Oddity::Malformed;
    // Byte of the row, from 0.
    std::size_t offset = 0;
    const char* reason = "";
};

// Cuts a row at the separator, blanks around fields dropped. The number of fields found, which may
// be more than fit into the fields.
std::size_t splitAt(char separator, std::string_view row, std::span<std::string_view> fields);

// Cuts a row at blanks and tabs, several count as one.
std::size_t splitAtBlanks(std::string_view row, std::span<std::string_view> fields);

// Reads decimal numbers of the rows of one kind of file; remembers the first thing that was wrong
// in a row.
//
// Example:
//     FieldReader reader;
//     reader.start(row);
//     const int frame = reader.whole(fields[0]);
//     if (reader.fault()) { ... }
class FieldReader
{
public:
    void start(std::string_view row);

    // A number, used up whole and finite; 0 when it is none.
    double number(std::string_view field);

    // A whole number, also one written as "12.0"; 0 when it is none.
    int whole(std::string_view field);

    void fail(Oddity kind, std::string_view field, const char* reason);

    const std::optional<FieldFault>& fault() const { return m_fault; }

private:
    std::string_view m_row;
    std::optional<FieldFault> m_fault;
};

} // namespace scenariomatch
