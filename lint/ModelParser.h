#pragma once

#include "lint/ConstraintParser.h"
#include "lint/Cursor.h"
#include "lint/Diagnostic.h"
#include "lint/Model.h"

#include <optional>
#include <set>
#include <string>

namespace scenariomatch::lint
{

// Parses one declaration of a model and reports what is wrong with its shape, each mistake once.
// Where the parentheses do not balance the first place at which that shows is reported and the rest
// is left alone.
//
//     declaration = KIND "(" NAME [ "[" THRESHOLD "]" ] "," { section } ")" ;
//     section = "PhysicalObjects" "(" { "(" NAME ":" TYPE ")" } ")"
//             | "Components" "(" { "(" NAME ":" KIND MODEL "(" list ")" [ "[" bounds "]" ] ")" }
//             ")" | "Constraints" "(" { "(" constraint ")" } ")" | "Alarm" "(" { "(" KEY ":" text
//             ")" } ")" | "Miscellaneous" "(" "(" NAME "," { "(" KEY VALUE ")" } ")" ")" ;
class ModelParser
{
public:
    // All must outlive the parser.
    ModelParser(const PlacedText& text, const std::set<std::string>& operators, Diagnostics& out);

    // The model, broken where its shape is. The kind is checked too.
    Model parse();

private:
    using ItemParser = bool (ModelParser::*)(const Range& opening);

    bool parseKind();
    bool parseName();
    void finishName(const PlacedText& name);
    bool parseThreshold();
    bool parseSections();
    bool parseSection(const Word& key, const Range& opening);
    bool skipSection(const Range& opening);
    bool parseList(const Word& key, const Range& opening, ItemParser parseItem);
    bool failInList(const Word& key, const Range& opening, bool isFirst);
    bool parseObject(const Range& opening);
    bool parseComponent(const Range& opening);
    bool parseArguments(ModelComponent& component);
    bool parseBounds(ModelComponent& component);
    bool parseConstraint(const Range& opening);
    bool skipGroup();
    bool parseAlarm(const Range& opening);
    bool parseClause(const Range& opening);
    bool parsePair(MergeClause& clause, const Range& opening);
    bool checkEnd();
    void reportTabs();
    bool isHarmlessTab(std::size_t position) const;

    // The word before one of the stops; a second word is reported as cut off.
    bool takeName(Word& name, std::string_view stops, std::string_view what);
    bool close(const Range& opening);
    void noteLayout(const Range& opening, const Range& closing);
    bool failUnclosed(const Range& place, const Range& opening);
    bool
    fail(std::string_view rule, const Range& range, std::string message, std::string hint = "");

    Cursor m_cursor;
    Diagnostics& m_out;
    ConstraintParser m_constraints;
    Model m_model;
    // Whether the section's keyword is misspelt.
    bool m_isUnread = false;
    // Where the layout tells that a ")" is missing, should one be.
    std::optional<Range> m_layoutGap;
};

} // namespace scenariomatch::lint
