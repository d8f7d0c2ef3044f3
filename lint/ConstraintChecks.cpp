// Names and types in constraints, from the operators' descriptions and the attributes of objects.

#include "lint/Checks.h"
#include "lint/NearNames.h"
#include "types/NumberText.h"

#include <algorithm>
#include <array>
#include <fmt/format.h>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace scenariomatch::lint
{

namespace
{

using Kind = ConstraintNode::Kind;
// Type tags that a value may have; none when nothing is known.
using Tags = std::vector<std::string>;

bool hasTag(const Tags& tags, std::string_view tag)
{
    return std::find(tags.begin(), tags.end(), tag) != tags.end();
}

bool isNumeric(const Tags& tags)
{
    return hasTag(tags, "INT") || hasTag(tags, "DOUBLE");
}

bool isDisjoint(const Tags& left, const Tags& right)
{
    return !left.empty() && !right.empty() &&
           std::none_of(left.begin(), left.end(), [&](const std::string& tag) {
               return hasTag(right, tag);
           });
}

std::string joined(const std::vector<std::string>& words, std::string_view separator)
{
    return fmt::format("{}", fmt::join(words, separator));
}

bool isComparison(std::string_view op)
{
    static constexpr std::array<std::string_view, 6> kComparisons = {
        "=", "!=", "<", "<=", ">", ">="};
    return std::find(kComparisons.begin(), kComparisons.end(), op) != kComparisons.end();
}

// Numbers compare with numbers, points with points, everything else with its own kind.
bool isComparable(const Tags& left, const Tags& right)
{
    if (left.empty() || right.empty()) {
        return true;
    }
    const bool isPoints = left.front().ends_with("POINT") && right.front().ends_with("POINT");
    return (isNumeric(left) && isNumeric(right)) || isPoints || !isDisjoint(left, right);
}

std::string typeOf(std::string_view type)
{
    std::string text(type);
    std::transform(text.begin(), text.end(), text.begin(), [](char letter) {
        return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
    });
    return text;
}

// The variables that constraints may name, with the types of what they stand for; an empty type is
// not known.
struct Scope
{
    std::map<std::string, std::string> variables;
    // Null for the body of a declared operator.
    const Model* model = nullptr;
    // Unknown variables are no news.
    bool isIncomplete = false;
};

class ExpressionChecker
{
public:
    // Of a constraint that is misread only names are checked.
    ExpressionChecker(
        const Project& project, const Scope& scope, Diagnostics& out, bool isMisread = false)
        : m_project(project)
        , m_scope(scope)
        , m_out(out)
        , m_isMisread(isMisread)
    {
    }

    void checkConstraint(const ConstraintNode& root)
    {
        const std::size_t reported = m_out.all().size();
        const Tags tags = check(root);
        if (m_out.all().size() != reported || m_scope.model == nullptr || m_isMisread) {
            return;
        }
        const bool isText = root.kind == Kind::Word;
        if (isText || (!tags.empty() && !hasTag(tags, "BOOL"))) {
            m_out.add(
                "argument-type",
                root.range,
                fmt::format(
                    "a constraint is true or false, and this is {}",
                    isText ? "a word" : joined(tags, " or ")));
        }
    }

    const std::map<std::string, std::vector<Range>>& unknownVariables() const { return m_unknown; }

    const std::set<std::string>& usedVariables() const { return m_seen; }

private:
    Tags check(const ConstraintNode& node);
    Tags checkAttribute(const ConstraintNode& node);
    Tags checkWord(const ConstraintNode& node);
    Tags checkCall(const ConstraintNode& call);
    Tags checkAgentCall(const ConstraintNode& call, const std::vector<std::string>& types);
    Tags checkLoadedCall(const ConstraintNode& call, const LoadedOperator& op);
    void checkDeclaredOnly(const ConstraintNode& call);
    bool checkCount(const ConstraintNode& call, const LoadedOperator& op);
    bool checkArgument(
        const ConstraintNode& call,
        std::size_t position,
        const LoadedOperator& op,
        const Tags& tags);
    bool checkText(const ConstraintNode& call, std::size_t position, const Tags& accepted);
    bool
    checkComparedText(const ConstraintNode& text, const ConstraintNode& other, const Tags& tags);
    bool checkElementName(const ConstraintNode& text, const ConstraintNode& attribute);
    void reportOperator(const ConstraintNode& call);
    bool reportVariable(const Word& name);
    bool reportConstant(const Word& name);
    bool reportAgent(const ConstraintNode& call, const ConstraintNode& argument);

    // A constant with the name of a variable has been reported, and the variable is meant.
    bool isConstant(const std::string& word) const
    {
        return m_scope.model != nullptr && m_scope.model->findConstant(word) != nullptr &&
               !m_scope.variables.contains(word);
    }

    bool isVariable(const ConstraintNode& node) const
    {
        return node.kind == Kind::Word && m_scope.variables.contains(node.name.text);
    }

    bool isText(const ConstraintNode& node) const
    {
        return node.kind == Kind::Word && !m_scope.variables.contains(node.name.text) &&
               !isConstant(node.name.text) && !wholeNumber(node.name.text);
    }

    const Project& m_project;
    const Scope& m_scope;
    Diagnostics& m_out;
    bool m_isMisread;
    std::map<std::string, std::vector<Range>> m_unknown;
    std::set<std::string> m_seen;
};

Tags ExpressionChecker::check(const ConstraintNode& node)
{
    switch (node.kind) {
    case Kind::Attribute:
        return checkAttribute(node);
    case Kind::Word:
        return checkWord(node);
    case Kind::Call:
        break;
    }
    return checkCall(node);
}

// Each unknown variable is remembered; the caller tells of it once.
bool ExpressionChecker::reportVariable(const Word& name)
{
    m_unknown[name.text].push_back(name.range);
    return false;
}

Tags ExpressionChecker::checkAttribute(const ConstraintNode& node)
{
    const auto variable = m_scope.variables.find(node.name.text);
    if (variable == m_scope.variables.end()) {
        reportVariable(node.name);
        return {};
    }
    m_seen.insert(node.name.text);
    const std::string& type = variable->second;
    if (type.empty()) {
        return {};
    }
    if (const auto tag = m_project.types().attribute(type, node.attribute.text)) {
        return {*tag};
    }
    const std::vector<std::string> known = m_project.types().attributesOf(type);
    if (known.empty() && !m_project.types().isRead()) {
        return {};
    }
    const std::string near = nearestName(node.attribute.text, known);
    m_out
        .add(
            "unknown-attribute",
            node.attribute.range,
            fmt::format("a {} has no attribute '{}'", type, node.attribute.text),
            didYouMean(near))
        .suggestion = near;
    return {};
}

Tags ExpressionChecker::checkWord(const ConstraintNode& node)
{
    if (isConstant(node.name.text)) {
        return {"DOUBLE"};
    }
    if (wholeNumber(node.name.text)) {
        return {"INT", "DOUBLE"};
    }
    if (isVariable(node)) {
        m_seen.insert(node.name.text);
        return {};
    }
    return {"STRING"};
}

void ExpressionChecker::reportOperator(const ConstraintNode& call)
{
    const std::vector<std::string> names(
        m_project.operators().names().begin(), m_project.operators().names().end());
    const std::string near = nearestName(call.name.text, names);
    m_out
        .add(
            "unknown-operator",
            call.name.range,
            fmt::format("there is no operator '{}'", call.name.text),
            didYouMean(near))
        .suggestion = near;
}

Tags ExpressionChecker::checkCall(const ConstraintNode& call)
{
    const OperatorTable& operators = m_project.operators();
    const LoadedOperator* loaded = operators.findLoaded(call.name.text);
    const bool isDeclared = operators.isDeclared(call.name.text);
    const bool isEmpty = call.children.size() == 1 && call.children.front().kind == Kind::Word &&
                         call.children.front().name.text.empty();
    if (loaded == nullptr && !isDeclared) {
        if (operators.isLoaded()) {
            reportOperator(call);
        }
        for (const ConstraintNode& child : call.children) {
            check(child);
        }
        return {};
    }
    std::vector<std::string> types;
    for (const ConstraintNode& child : call.children) {
        if (isVariable(child)) {
            types.push_back(m_scope.variables.at(child.name.text));
            m_seen.insert(child.name.text);
        }
    }
    if (types.size() == call.children.size() && !isEmpty) {
        return checkAgentCall(call, types);
    }
    if (loaded == nullptr) {
        checkDeclaredOnly(call);
        return {};
    }
    return checkLoadedCall(call, *loaded);
}

Tags ExpressionChecker::checkAgentCall(
    const ConstraintNode& call, const std::vector<std::string>& types)
{
    if (std::find(types.begin(), types.end(), "") != types.end()) {
        return {};
    }
    const OperatorTable& operators = m_project.operators();
    const DeclaredOperator* declared =
        operators.findDeclared(call.name.text, types, m_project.types());
    if (declared != nullptr) {
        const auto& body = declared->body.meant;
        const LoadedOperator* inner = body ? operators.findLoaded(body->name.text) : nullptr;
        return inner == nullptr || inner->description.m_result.empty()
                   ? Tags()
                   : Tags{inner->description.m_result};
    }
    std::vector<std::string> forms;
    for (const DeclaredOperator& op : operators.declared()) {
        if (op.name.text == call.name.text && forms.size() < 3) {
            std::vector<std::string> parameters;
            for (const Variable& parameter : op.parameters) {
                parameters.push_back(parameter.type.text);
            }
            forms.push_back(fmt::format("{}({})", call.name.text, joined(parameters, ", ")));
        }
    }
    m_out.add(
        "agent-call",
        call.name.range,
        fmt::format("no declaration of '{}' takes ({})", call.name.text, joined(types, ", ")),
        forms.empty()
            ? "write attributes, VARIABLE->ATTRIBUTE, or declare it in an operator description"
            : "declared is " + joined(forms, ", "));
    return {};
}

// An operator that takes agents alone got something else.
void ExpressionChecker::checkDeclaredOnly(const ConstraintNode& call)
{
    bool isReported = false;
    for (const ConstraintNode& child : call.children) {
        if (isText(child)) {
            reportVariable(child.name);
            isReported = true;
        } else if (child.kind != Kind::Word) {
            const std::size_t reported = m_out.all().size();
            check(child);
            isReported = isReported || m_out.all().size() != reported;
        }
    }
    if (!isReported) {
        m_out.add(
            "agent-call",
            call.name.range,
            fmt::format("'{}' takes agents, no values", call.name.text),
            "write bare variables");
    }
}

bool ExpressionChecker::checkCount(const ConstraintNode& call, const LoadedOperator& op)
{
    const std::size_t most = op.description.m_arguments.size();
    const std::size_t least = op.description.m_requiredArguments;
    const std::size_t count = call.children.size();
    if (count >= least && count <= most) {
        return true;
    }
    m_out.add(
        "argument-count",
        call.range,
        fmt::format(
            "'{}' takes {}{} arguments, and there are {}",
            call.name.text,
            least,
            least == most ? "" : fmt::format(" to {}", most),
            count));
    return false;
}

Tags ExpressionChecker::checkLoadedCall(const ConstraintNode& call, const LoadedOperator& op)
{
    std::vector<Tags> tags;
    for (const ConstraintNode& child : call.children) {
        tags.push_back(check(child));
    }
    const bool isListed = !op.description.m_arguments.empty() && !m_isMisread;
    bool isSound = !isListed || checkCount(call, op);
    for (std::size_t i = 0; i < tags.size() && isSound; ++i) {
        isSound = checkArgument(call, i, op, tags[i]);
    }
    const bool hasTwo = tags.size() == 2 && !m_isMisread;
    if (isSound && isComparison(call.name.text) && hasTwo && !isText(call.children[0]) &&
        !isText(call.children[1]) && !isComparable(tags[0], tags[1])) {
        m_out.add(
            "argument-type",
            call.range,
            fmt::format(
                "{} and {} cannot be compared", joined(tags[0], " or "), joined(tags[1], " or ")));
    }
    if (!op.description.m_result.empty()) {
        return {op.description.m_result};
    }
    return tags.size() == 1 ? tags.front() : Tags();
}

bool ExpressionChecker::checkArgument(
    const ConstraintNode& call, std::size_t position, const LoadedOperator& op, const Tags& tags)
{
    const ConstraintNode& argument = call.children[position];
    const bool isListed = position < op.description.m_arguments.size();
    const Tags accepted = isListed ? op.description.m_arguments[position] : Tags();
    if (isVariable(argument)) {
        return reportAgent(call, argument);
    }
    if (isText(argument)) {
        return checkText(call, position, accepted);
    }
    if (m_isMisread || !isDisjoint(tags, accepted)) {
        return true;
    }
    m_out.add(
        "argument-type",
        argument.range,
        fmt::format(
            "'{}' takes {} here, and this is {}",
            call.name.text,
            joined(accepted, " or "),
            joined(tags, " or ")));
    return false;
}

bool ExpressionChecker::reportAgent(const ConstraintNode& call, const ConstraintNode& argument)
{
    const std::string& name = argument.name.text;
    m_out.add(
        "agent-call",
        argument.range,
        fmt::format("'{}' is an agent, and '{}' needs a value here", name, call.name.text),
        m_scope.variables.at(name) == kComponentType ? fmt::format("write {}->Interval", name)
                                                     : fmt::format("write {}->ATTRIBUTE", name));
    return false;
}

// A word that is no variable, constant or number. False after a report.
bool ExpressionChecker::checkText(
    const ConstraintNode& call, std::size_t position, const Tags& accepted)
{
    const ConstraintNode& text = call.children[position];
    if (!accepted.empty() && !hasTag(accepted, "STRING")) {
        return isNumeric(accepted) ? reportConstant(text.name) : reportVariable(text.name);
    }
    if (call.children.size() != 2) {
        return true;
    }
    const ConstraintNode& other = call.children[1 - position];
    if (other.kind == Kind::Word && isVariable(other)) {
        return reportVariable(text.name);
    }
    Diagnostics ignored;
    ExpressionChecker quiet(m_project, m_scope, ignored);
    return checkComparedText(text, other, quiet.check(other));
}

bool ExpressionChecker::checkComparedText(
    const ConstraintNode& text, const ConstraintNode& other, const Tags& tags)
{
    if (isNumeric(tags)) {
        return reportConstant(text.name);
    }
    if (!tags.empty() && !hasTag(tags, "STRING")) {
        m_out.add(
            "argument-type",
            text.range,
            fmt::format("{} and a text cannot be compared", joined(tags, " or ")));
        return false;
    }
    return other.kind != Kind::Attribute || other.attribute.text != "Name" ||
           checkElementName(text, other);
}

// "z->Name = Door": the scene has to have a door.
bool ExpressionChecker::checkElementName(
    const ConstraintNode& text, const ConstraintNode& attribute)
{
    const auto variable = m_scope.variables.find(attribute.name.text);
    if (!m_project.scene() || variable == m_scope.variables.end()) {
        return true;
    }
    static const std::set<std::string, std::less<>> kSceneTypes = {"Zone", "Equipment", "Wall"};
    const std::string& type = variable->second;
    if (!kSceneTypes.contains(type)) {
        return true;
    }
    std::vector<std::string> names;
    std::map<std::string, std::string> places;
    for (const SceneElement& element : *m_project.scene()) {
        if (element.type == type) {
            names.push_back(element.name);
            places.emplace(element.name, element.place);
        }
    }
    if (places.contains(text.name.text)) {
        return true;
    }
    const std::string near = nearestName(text.name.text, names);
    m_out
        .add(
            "unknown-object",
            text.range,
            fmt::format("'{}' is no {} of this scene", text.name.text, typeOf(type)),
            near.empty() ? "" : fmt::format("did you mean '{}' ({})?", near, places[near]))
        .suggestion = near;
    return false;
}

bool ExpressionChecker::reportConstant(const Word& name)
{
    if (m_scope.model == nullptr || !m_project.hasSettings()) {
        return true;
    }
    std::vector<std::string> names;
    for (const Constant& constant : *m_scope.model->constants) {
        names.push_back(constant.name.text);
    }
    const auto& all = m_project.constants();
    const auto later = std::find_if(all.begin(), all.end(), [&](const Constant& constant) {
        return constant.name.text == name.text;
    });
    if (later != all.end() && m_project.hasLateConstants()) {
        return false;
    }
    const std::string near = nearestName(name.text, names);
    m_out
        .add(
            "unknown-constant",
            name.range,
            later != all.end() ? fmt::format("the constant '{}' is not known here", name.text)
                               : fmt::format("'{}' is no constant, and no number", name.text),
            later != all.end() ? "a constant is known in what is read after it" : didYouMean(near))
        .suggestion = near;
    return false;
}

Scope scopeOf(const Project& project, const Model& model)
{
    Scope scope;
    scope.model = &model;
    for (const Variable& object : model.objects) {
        const bool isKnown = project.types().isDeclared(object.type.text);
        scope.variables[object.name.text] = isKnown ? object.type.text : "";
    }
    for (const ModelComponent& component : model.components) {
        scope.variables[component.variable.text] = kComponentType;
    }
    const bool needsComponents = isModelKind(model.kind.text) && model.isComposite();
    scope.isIncomplete = needsComponents && model.components.empty();
    return scope;
}

// Tells of the unknown variables of a model, each once. One that is named several times, while
// nothing names the declared variable next to it, is rather declared wrongly.
void reportUnknownVariables(
    const Scope& scope,
    const std::map<std::string, std::vector<Range>>& unknown,
    const std::set<std::string>& seen,
    Diagnostics& out)
{
    std::vector<std::string> known;
    std::vector<std::string> unseen;
    for (const auto& [name, type] : scope.variables) {
        known.push_back(name);
        if (!seen.contains(name)) {
            unseen.push_back(name);
        }
    }
    for (const auto& [name, ranges] : unknown) {
        const std::string lonely = nearestName(name, unseen);
        const std::string near = lonely.empty() ? nearestName(name, known) : lonely;
        const Variable* declared =
            scope.model == nullptr || lonely.empty() ? nullptr : scope.model->findObject(lonely);
        if (declared != nullptr && ranges.size() > 1) {
            out.add(
                   "unknown-variable",
                   declared->name.range,
                   fmt::format("nothing names '{}', and there is no '{}'", lonely, name),
                   didYouMean(name))
                .suggestion = name;
            continue;
        }
        out.add(
               "unknown-variable",
               ranges.front(),
               fmt::format(
                   "'{}' is no variable of this {}",
                   name,
                   scope.model == nullptr ? "declaration" : "model"),
               didYouMean(near))
            .suggestion = near;
    }
}

} // namespace

void checkConstraints(const Project& project, const Model& model, Diagnostics& out)
{
    const Scope scope = scopeOf(project, model);
    std::map<std::string, std::vector<Range>> unknown;
    std::set<std::string> seen;
    for (const ModelConstraint& constraint : model.constraints) {
        const std::size_t reported = out.all().size();
        checkReading(constraint, out);
        if (!constraint.meant) {
            continue;
        }
        const bool isMisread = constraint.isReported || out.all().size() != reported;
        ExpressionChecker checker(project, scope, out, isMisread);
        checker.checkConstraint(*constraint.meant);
        seen.insert(checker.usedVariables().begin(), checker.usedVariables().end());
        for (const auto& [name, ranges] : checker.unknownVariables()) {
            auto& places = unknown[name];
            places.insert(places.end(), ranges.begin(), ranges.end());
        }
    }
    for (const ModelComponent& component : model.components) {
        for (const Word& argument : component.arguments) {
            seen.insert(argument.text);
        }
    }
    if (model.objects.empty() && (!unknown.empty() || !model.components.empty())) {
        out.add(
            "missing-physical-objects",
            model.name.range,
            fmt::format("'{}' names variables, but has no PhysicalObjects", model.name.text));
    } else if (!scope.isIncomplete) {
        reportUnknownVariables(scope, unknown, seen, out);
    }
}

void checkDeclaredOperators(const Project& project, Diagnostics& out)
{
    for (const DeclaredOperator& op : project.operators().declared()) {
        Scope scope;
        for (const Variable& parameter : op.parameters) {
            const std::string& type = parameter.type.text;
            const bool isKnown = type == kComponentType || project.types().isDeclared(type);
            scope.variables[parameter.name.text] = isKnown ? type : "";
        }
        checkReading(op.body, out);
        if (op.body.meant) {
            ExpressionChecker checker(project, scope, out);
            checker.checkConstraint(*op.body.meant);
            reportUnknownVariables(scope, checker.unknownVariables(), checker.usedVariables(), out);
        }
    }
}

} // namespace scenariomatch::lint
