#pragma once

#include "lint/ConstraintTree.h"
#include "lint/Source.h"

#include <array>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace scenariomatch::lint
{

inline constexpr std::array<std::string_view, 4> kModelKinds = {
    "PrimitiveState", "PrimitiveEvent", "CompositeState", "CompositeEvent"};
inline constexpr std::array<std::string_view, 5> kSections = {
    "PhysicalObjects", "Components", "Constraints", "Alarm", "Miscellaneous"};

bool isModelKind(std::string_view word);
bool isSection(std::string_view word);

struct Constant
{
    Word name;
    // As written.
    Word value;
    double number = 0.0;
};

// Parts of a section whose keyword is misspelt are there, but the engine does not read them: their
// isRead is false.
struct Variable
{
    Word name;
    Word type;
    bool isRead = true;
};

struct ModelComponent
{
    Word variable;
    Word kind;
    Word model;
    std::vector<Word> arguments;
    // With its brackets.
    std::optional<Word> bounds;
    Range range;
    bool isRead = true;
};

struct ModelConstraint
{
    Range range;
    // What is written, by the usual precedence of operators; nothing where it is no constraint.
    std::optional<ConstraintNode> meant;
    // What the engine makes of it; nothing where it throws.
    std::optional<ConstraintNode> read;
    // Something is wrong with how it is written, and has been reported.
    bool isReported = false;
    bool isRead = true;
};

struct MergeClause
{
    Word name;
    std::vector<std::pair<Word, Word>> pairs;
    // Only the first clause of a section is read.
    bool isRead = true;
};

// A scenario model with the places of all its words.
struct Model
{
    Word kind;
    Word name;
    std::optional<Word> threshold;
    std::vector<Variable> objects;
    std::vector<ModelComponent> components;
    std::vector<ModelConstraint> constraints;
    std::optional<Word> alarmLevel;
    std::optional<Word> alarmText;
    std::vector<MergeClause> clauses;
    // The constants known where it stands; never null. A later one of a name replaces an earlier
    // one.
    std::shared_ptr<const std::vector<Constant>> constants =
        std::make_shared<const std::vector<Constant>>();
    // What is wrong with its shape has been reported; the rest of it is not known.
    bool isBroken = false;
    // Whether the engine reads the very text as one declaration.
    bool isRead = true;

    const Constant* findConstant(std::string_view wanted) const;
    const Variable* findObject(std::string_view variable) const;
    const ModelComponent* findComponent(std::string_view variable) const;

    bool isComposite() const { return kind.text != "PrimitiveState"; }
};

} // namespace scenariomatch::lint
