#pragma once

#include "lint/Source.h"

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace scenariomatch::lint
{

enum class Severity : std::uint8_t { Error, Warning };

// A kind of mistake. The names are stable; docs/diagnostics.md explains them.
struct Rule
{
    std::string_view name;
    Severity severity;
    // One sentence for people.
    std::string_view summary;
};

// All kinds, in the order of their names.
std::span<const Rule> rules();

// The rule of a name, which must exist.
const Rule& ruleOf(std::string_view name);

// One mistake at one place.
//
//     lobby.models:14:14: error: 'Bank_Zone' is no zone of this scene [unknown-object]
struct Diagnostic
{
    const Rule* rule = nullptr;
    Range range;
    std::string message;
    // What to write instead, or where to look; may be empty.
    std::string hint;
    // The name that was probably meant; may be empty.
    std::string suggestion;
};

// Collects what is found.
class Diagnostics
{
public:
    // The rule must exist. The reference is good until the next call.
    Diagnostic&
    add(std::string_view rule, const Range& range, std::string message, std::string hint = "");

    const std::vector<Diagnostic>& all() const { return m_all; }

    // By file, in the order in which files were first reported, and place.
    void sort();

    bool hasErrors() const;

private:
    std::vector<Diagnostic> m_all;
};

} // namespace scenariomatch::lint
