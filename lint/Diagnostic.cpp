#include "lint/Diagnostic.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <map>
#include <utility>

namespace scenariomatch::lint
{

namespace
{

using enum Severity;

constexpr std::array kRules = {
    Rule{
        "absolute-file-name", Error, "A file name begins with '/', but a folder is put before it."},
    Rule{"agent-call", Error, "An operator is called on agents, and no declaration fits."},
    Rule{"argument-count", Error, "An operator has too few or too many arguments."},
    Rule{"argument-cut", Error, "An argument has a blank inside and is cut there."},
    Rule{"argument-type", Error, "An operator does not accept a value of this type."},
    Rule{"bare-attribute", Error, "An attribute by itself is read as the name of an operator."},
    Rule{"blank-before-call", Error, "A blank stands between an operator and its parenthesis."},
    Rule{"blank-before-parenthesis", Error, "A blank before ')' belongs to the word before it."},
    Rule{"bounds-ignored", Warning, "Bounds in brackets after a component have no effect."},
    Rule{"call-on-right", Error, "A call or a group stands to the right of a word or attribute."},
    Rule{"component-argument-type", Error, "A component gets an object of another type."},
    Rule{"component-arguments", Error, "A component gets too few or too many objects."},
    Rule{"component-kind", Warning, "The kind before a component is not that of its model."},
    Rule{"component-not-used", Error, "A used model is made of a model that is not used."},
    Rule{"constant-shadows-variable", Error, "A constant has the name of a variable."},
    Rule{"constant-value", Error, "The value of a constant is no number."},
    Rule{"duplicate-model", Error, "Two models have one name."},
    Rule{"entry-cut", Error, "A blank or tab cuts an entry, or makes it another word."},
    Rule{"group-split", Error, "A group does not end at its own parenthesis."},
    Rule{"header-name", Error, "A block's header lacks its name and comma."},
    Rule{"ignored-clause", Error, "A clause is not read, or has no effect."},
    Rule{"malformed", Error, "The text is no declaration, section or constraint."},
    Rule{"misread", Error, "The reader splits a constraint in an unexpected way."},
    Rule{"missing-blank", Error, "An operator has no blanks around it."},
    Rule{"missing-comma", Error, "The comma after a model's name is missing."},
    Rule{"missing-components", Error, "A model of this kind needs components."},
    Rule{"missing-parenthesis", Error, "A '(' is missing."},
    Rule{"missing-physical-objects", Error, "A model names variables but has no physical objects."},
    Rule{"model-circle", Error, "A model contains itself."},
    Rule{"name-cut", Error, "A name has a blank inside or behind it."},
    Rule{"nested-call", Error, "An argument is a call; arguments are words and attributes."},
    Rule{"no-block", Error, "A file has no block of its kind."},
    Rule{"no-effect", Warning, "What is written has no effect."},
    Rule{"no-order", Warning, "Nothing orders the components of a composite."},
    Rule{"object-type-layout", Error, "A type is not laid out as its reader needs it."},
    Rule{"parent-circle", Error, "A type derives from itself."},
    Rule{"prose-opens-block", Error, "A remark contains the word that opens a block."},
    Rule{"remark-in-models", Error, "A remark swallows the declaration after it."},
    Rule{"sample-empty-zone", Warning, "No track of the sample enters a zone."},
    Rule{"sample-missing-type", Warning, "The sample has no object of a type."},
    Rule{"sample-never-evaluated", Warning, "The sample has no candidates of a model."},
    Rule{"sample-never-false", Warning, "A constraint is true wherever the sample tries it."},
    Rule{"sample-never-true", Warning, "A constraint is false wherever the sample tries it."},
    Rule{"sample-out-of-range", Warning, "A comparison holds for no number of the sample."},
    Rule{
        "settings-after-models", Error, "Constants are read after the models that could use them."},
    Rule{"split-conjunction", Error, "'and', 'or' and comparisons are split in another place."},
    Rule{"state-with-components", Error, "A primitive state has components."},
    Rule{"stray-parenthesis", Error, "There is one ')' too many."},
    Rule{"tab", Error, "A tab is no blank."},
    Rule{"threshold-range", Error, "A threshold is no number from 0 to 1."},
    Rule{"unbound-object", Warning, "No component passes an object of a composite."},
    Rule{"unclosed-block", Error, "A block, or a type's block, does not end with '}'."},
    Rule{"unclosed-parenthesis", Error, "A ')' is missing."},
    Rule{"unknown-alarm-level", Error, "There is no such alarm level."},
    Rule{"unknown-attribute", Error, "Objects of a type have no such attribute."},
    Rule{"unknown-constant", Error, "There is no such constant."},
    Rule{"unknown-keyword", Error, "There is no such keyword here."},
    Rule{"unknown-kind", Error, "There is no such kind of declaration."},
    Rule{"unknown-model", Error, "There is no model of this name."},
    Rule{"unknown-object", Error, "The scene has no element of this name."},
    Rule{"unknown-operator", Error, "There is no such operator."},
    Rule{"unknown-parent", Error, "A type's parent is not declared."},
    Rule{"unknown-section", Error, "A model has no such section."},
    Rule{"unknown-type", Error, "There is no such type."},
    Rule{"unknown-variable", Error, "The model has no such variable."},
    Rule{"unreadable-file", Error, "A file cannot be read."},
    Rule{"unused-model", Warning, "A model takes no part: no settings file names it."},
};

} // namespace

std::span<const Rule> rules()
{
    return kRules;
}

const Rule& ruleOf(std::string_view name)
{
    const auto* const found =
        std::lower_bound(kRules.begin(), kRules.end(), name, [](const Rule& rule, auto wanted) {
            return rule.name < wanted;
        });
    assert(found != kRules.end() && found->name == name);
    return *found;
}

Diagnostic&
Diagnostics::add(std::string_view rule, const Range& range, std::string message, std::string hint)
{
    return m_all.emplace_back(
        Diagnostic{&ruleOf(rule), range, std::move(message), std::move(hint), ""});
}

void Diagnostics::sort()
{
    std::map<const Source*, std::size_t> order;
    for (const Diagnostic& diagnostic : m_all) {
        order.emplace(diagnostic.range.source, order.size());
    }
    std::stable_sort(m_all.begin(), m_all.end(), [&](const Diagnostic& a, const Diagnostic& b) {
        const std::size_t first = order[a.range.source];
        const std::size_t second = order[b.range.source];
        return first != second ? first < second : a.range.begin < b.range.begin;
    });
}

bool Diagnostics::hasErrors() const
{
    return std::any_of(m_all.begin(), m_all.end(), [](const Diagnostic& diagnostic) {
        return diagnostic.rule->severity == Severity::Error;
    });
}

} // namespace scenariomatch::lint
