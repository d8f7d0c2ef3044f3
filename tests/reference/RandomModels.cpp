#include "tests/reference/RandomModels.h"

#include <algorithm>

namespace scenariomatch
{

namespace
{

constexpr int kMostVariables = 3;

std::string variableName(int index)
{
    return {static_cast<char>('p' + index)};
}

// The text with the variables p and q exchanged, which stand before an arrow, a blank or a
// parenthesis.
std::string exchanged(std::string text)
{
    for (std::size_t i = 1; i + 1 < text.size(); ++i) {
        const bool isWord = text[i - 1] == '(' || text[i - 1] == ' ';
        const bool isEnd = text[i + 1] == '-' || text[i + 1] == ' ' || text[i + 1] == ')';
        if (isWord && isEnd && (text[i] == 'p' || text[i] == 'q')) {
            text[i] = text[i] == 'p' ? 'q' : 'p';
        }
    }
    return text;
}

} // namespace

RandomModels::RandomModels(Random& random)
    : m_random(random)
    , m_flavours(random.of<std::string>({"iepmn", "iepmn", "epmn", "pm", "m", "i", "im", "en"}))
    , m_names{"A", "B", "C", "D", "E", "F", "G", "H", "I", "J"}
    , m_made(kMostVariables + 1)
{
    m_set.declarations = "CONSTANT(FAR 1000)\nCONSTANT(NAN nan)\nCONSTANT(INF inf)\n"
                         "CONSTANT(ROOT 1.4142135623730951)\n";
    m_set.negation =
        m_random.of<Flavour>({Flavour::Impure, Flavour::Pure, Flavour::Plain, Flavour::Plain});
    for (std::size_t i = m_names.size(); i > 1; --i) {
        std::swap(
            m_names[i - 1], m_names[static_cast<std::size_t>(m_random.pick(static_cast<int>(i)))]);
    }
    for (int primitives = 1 + m_random.pick(4); primitives > 0; --primitives) {
        addPrimitive();
    }
    for (int composites = m_random.pick(5); composites > 0; --composites) {
        addComposite();
    }
}

std::string RandomModels::newName()
{
    if (!m_models.empty() && m_random.oneIn(25)) {
        return m_random.of(m_models).name;
    }
    std::string name = m_names.back();
    m_names.pop_back();
    return name;
}

std::string RandomModels::threshold()
{
    return m_random.of<std::string>({"", "", "", "", "", "[0.2]", "[0.5]", "[0.75]"});
}

void RandomModels::addModel(const Model& model, const std::string& sections)
{
    m_set.declarations += model.kind + "(" + model.name + threshold() + ",\n" + sections + ")\n";
    m_models.push_back(model);
    if (!m_random.oneIn(30)) {
        m_set.used.push_back(model.name);
    }
}

std::string RandomModels::physicalObjects(int variables, const std::vector<std::string>& types)
{
    const bool isTurnedRound = m_random.oneIn(4);
    const std::string common = m_random.oneIn(2) ? m_random.of(types) : "";
    std::string objects;
    for (int i = 0; i < variables; ++i) {
        const std::string name = variableName(isTurnedRound ? variables - 1 - i : i);
        objects += "(" + name + " : " + (common.empty() ? m_random.of(types) : common) + ")";
    }
    if (variables == 1 && m_random.oneIn(25)) {
        objects += "(p : " + m_random.of(types) + ")";
    }
    return "PhysicalObjects(" + objects + ")\n";
}

void RandomModels::addPrimitive()
{
    static const std::vector<std::string> kTypes{
        "Person",
        "Person",
        "Person",
        "Person",
        "Person",
        "Person",
        "Thing",
        "Thing",
        "Any",
        "Child",
        "Zone",
        "Bag",
        "Twice"};
    if (!m_primitives.empty() && m_random.oneIn(4)) {
        addAlike(m_random.of(m_primitives));
        return;
    }
    const int variables = m_random.oneIn(8) ? 3 : 1 + m_random.pick(2);
    const Model model{newName(), "PrimitiveState", variables};
    m_variables = std::max(m_variables, variables);
    const std::string objects = physicalObjects(variables, kTypes);
    std::string constraints;
    for (int count = m_random.of<int>({0, 0, 1, 1, 1, 2, 3}); count > 0; --count) {
        constraints += "(" + constraint(variables) + ")";
    }
    m_primitives.push_back({variables, objects, constraints});
    addModel(model, objects + "Constraints(" + constraints + ")\n");
}

// The same under another name, here and there with the variables exchanged or one constraint more.
void RandomModels::addAlike(const Primitive& primitive)
{
    std::string objects = primitive.objects;
    std::string constraints = primitive.constraints;
    if (m_random.oneIn(3)) {
        objects = exchanged(objects);
    }
    if (m_random.oneIn(2)) {
        constraints = exchanged(constraints);
    }
    if (m_random.oneIn(3)) {
        constraints += "(" + constraint(primitive.variables) + ")";
    }
    addModel(
        {newName(), "PrimitiveState", primitive.variables},
        objects + "Constraints(" + constraints + ")\n");
}

std::string RandomModels::op(const std::string& name, const std::string& flavours)
{
    std::string possible;
    for (const char flavour : flavours) {
        if (m_flavours.find(flavour) != std::string::npos) {
            possible += flavour;
        }
    }
    const std::string& choices = possible.empty() ? flavours : possible;
    const auto chosen = static_cast<std::size_t>(m_random.pick(static_cast<int>(choices.size())));
    return name + "_" + choices[chosen];
}

std::string RandomModels::variable(int variables)
{
    return variableName(m_random.pick(variables));
}

std::string RandomModels::other(const std::string& term, int variables)
{
    const bool isSame = variables == 1 || m_random.oneIn(6);
    const int first = term.front() - 'p';
    const bool isVariable = first >= 0 && first < variables;
    return isSame || !isVariable
               ? variable(variables)
               : variableName((first + 1 + m_random.pick(variables - 1)) % variables);
}

std::string RandomModels::numberTerm(int variables)
{
    return numberOf(variable(variables));
}

std::string RandomModels::numberOf(const std::string& variable)
{
    static const std::vector<std::string> kOdd{"->R", "->R", "->X", "->W", "->Y"};
    return variable + (m_random.oneIn(8) ? m_random.of(kOdd) : "->P");
}

std::string RandomModels::positionOf(const std::string& variable)
{
    static const std::vector<std::string> kOdd{"->Y", "->Y", "->Y", "->P", "->W"};
    return variable + (m_random.oneIn(8) ? m_random.of(kOdd) : "->X");
}

std::string RandomModels::positionTerm(int variables)
{
    return m_random.oneIn(40) ? "3" : positionOf(variable(variables));
}

std::string RandomModels::boundTerm(int variables)
{
    if (m_random.oneIn(6)) {
        return numberTerm(variables);
    }
    return m_random.of<std::string>(
        {"0",
         "0.3",
         "0.5",
         "1",
         "1",
         "1",
         "1.5",
         "2",
         "2",
         "2",
         "3",
         "3",
         "-1",
         "FAR",
         "NAN",
         "INF",
         "ROOT"});
}

std::string RandomModels::numberCall(int variables)
{
    const std::string bound = boundTerm(variables);
    return m_random.oneIn(3) ? op("sum") + "(" + bound + ", " + boundTerm(variables) + ")"
                             : op("value") + "(" + bound + ")";
}

std::string RandomModels::distance(int variables)
{
    static const std::vector<std::pair<std::string, std::string>> kDistances{
        {"apart", "iepmn"},
        {"apart", "iepmn"},
        {"apart", "iepmn"},
        {"far", "ipmn"},
        {"risky", "ipmn"},
        {"from", "iep"}};
    const auto& [name, flavours] = m_random.of(kDistances);
    return op(name, flavours) + "(" + twoPositions(variables) + ")";
}

std::string RandomModels::twoPositions(int variables)
{
    const std::string first = positionTerm(variables);
    return first + ", " + positionOf(other(first, variables));
}

// Something with a truth value that stands before another operator.
std::string RandomModels::call(int variables)
{
    const std::string a = numberTerm(variables);
    const std::string b = numberOf(other(a, variables));
    switch (m_random.pick(12)) {
    case 0:
        return op("near") + "(" + a + ", " + b + ")";
    case 1:
        return op("close") + "(" + a + ", " + (m_random.oneIn(2) ? b : "1") + ")";
    case 2:
        return op("left") + "(" + a + ", " + b + ")";
    case 3:
        return op("maybe") + "(" + a + ")";
    case 4:
        return op("moved") + "(" + a + ")";
    case 5:
        return op("value") + "(" + variable(variables) + "->F)";
    case 6:
        return op("inside") + "(" + twoPositions(variables) + ")";
    case 7:
        return op("named") + "(" + variable(variables) + "->T, yes)";
    case 8:
        return op("<=", "iepmn") + "(" + boundTerm(variables) + ", " + boundTerm(variables) + ")";
    default:
        return op("within", "iepmn") + "(" + twoPositions(variables) + ", " + boundTerm(variables) +
               ")";
    }
}

std::string RandomModels::comparison(int variables)
{
    static const std::vector<std::pair<std::string, std::string>> kAtMost{
        {"<=", "iepmn"}, {"<", "ipm"}};
    static const std::vector<std::pair<std::string, std::string>> kAtLeast{
        {">=", "iepmn"}, {">", "ipm"}};
    const bool isOdd = m_random.oneIn(8);
    const auto& [atMost, atMostFlavours] = m_random.of(isOdd ? kAtLeast : kAtMost);
    const auto& [atLeast, atLeastFlavours] = m_random.of(isOdd ? kAtMost : kAtLeast);
    switch (m_random.pick(8)) {
    case 0:
    case 1:
    case 2: {
        const std::string bound = m_random.oneIn(3) ? numberCall(variables) : "";
        const std::string plain =
            m_random.of<std::string>({"0", "1", "1.5", "2", "2", "3", "3", "-1", "ROOT"});
        return distance(variables) + " " + op(atMost, atMostFlavours) + " " +
               (bound.empty() ? plain : bound);
    }
    case 3:
    case 4:
        return numberCall(variables) + " " + op(atLeast, atLeastFlavours) + " " +
               distance(variables);
    case 5:
        return numberCall(variables) + " " + op(atLeast, atLeastFlavours) + " (" + op("value") +
               "(" + positionTerm(variables) + ") " + op("apart", "iepmn") + " " + op("mirror") +
               "(" + positionTerm(variables) + "))";
    case 6:
        return distance(variables) + " " + op(atMost, atMostFlavours) + " " + distance(variables);
    default:
        return numberCall(variables) + " " + op(atMost, atMostFlavours) + " " +
               numberCall(variables);
    }
}

std::string RandomModels::oddity(int variables)
{
    const std::string a = variable(variables) + "->P";
    switch (m_random.pick(10)) {
    case 0:
        return op("empty") + "(" + a + ")";
    case 1:
        return op("number") + "(" + a + ")";
    case 2:
        return op("nan") + "(" + a + ")";
    case 3:
        return op("zero") + "(" + a + ")";
    case 4:
        return op("odd", "ie") + "(" + a + ")";
    case 5:
        return op("same", "ie") + "(" + a + ")";
    case 6:
        return op("value") + "(" + variable(variables) + "->W)";
    case 7:
        return op("close") + "(1, 2)";
    case 8:
        return "p beside " + variable(variables);
    default:
        return op("failing") + "(" + a + ")";
    }
}

std::string RandomModels::negated(int variables)
{
    const std::string a = numberTerm(variables);
    const std::string b = numberOf(other(a, variables));
    return m_random.oneIn(2) ? "!(" + a + " " + op("near") + " " + b + ")"
                             : "!(" + a + " " + op("<=", "iepmn") + " 2)";
}

std::string RandomModels::relation(int variables)
{
    switch (m_random.pick(12)) {
    case 0:
        return m_random.oneIn(2) ? oddity(variables) : negated(variables);
    case 1:
    case 2:
        return numberTerm(variables) + " " + op("left") + " " + boundTerm(variables);
    case 3:
        return op("sometimes", "i") + "(" + numberTerm(variables) + ")";
    case 4:
    case 5:
    case 6:
        return comparison(variables);
    default:
        return call(variables);
    }
}

std::string RandomModels::newConstraint(int variables)
{
    const std::string connective = m_random.oneIn(2)   ? op("and", "iepmn")
                                   : m_random.oneIn(2) ? op("or")
                                                       : op("but");
    switch (m_random.pick(8)) {
    case 0:
        return call(variables) + " " + connective + " " + relation(variables);
    case 1:
        return call(variables) + " " + connective + " " + call(variables) + " " +
               op("and", "iepmn") + " " + relation(variables);
    default:
        return relation(variables);
    }
}

std::string RandomModels::constraint(int variables)
{
    auto& made = m_made[static_cast<std::size_t>(variables)];
    if (!made.empty() && m_random.oneIn(3)) {
        return m_random.of(made);
    }
    made.push_back(newConstraint(variables));
    return made.back();
}

std::string RandomModels::component(int index, int variables)
{
    // Most often one of the latest models, so that composites stand on composites.
    const int latest = static_cast<int>(m_models.size()) - 1;
    const int chosenModel =
        m_random.oneIn(2) ? std::max(0, latest - m_random.pick(2)) : m_random.pick(latest + 1);
    const Model& sub = m_models[static_cast<std::size_t>(chosenModel)];
    int count = sub.variables;
    if (m_random.oneIn(20)) {
        count += m_random.oneIn(2) ? 1 : -1;
    }
    std::string arguments;
    for (int i = 0; i < count; ++i) {
        const int chosen = m_random.oneIn(4) ? m_random.pick(variables) : i % variables;
        arguments += (i == 0 ? "" : ", ") + variableName(chosen);
    }
    return "(c" + std::to_string(index) + " : " + sub.kind + " " + sub.name + "(" + arguments +
           "))";
}

std::string RandomModels::compositeConstraint(int components, int variables)
{
    const std::string first = "c" + std::to_string(1 + m_random.pick(components));
    const std::string second = "c" + std::to_string(1 + m_random.pick(components));
    const auto relate = [&](const std::string& name) {
        return first + "->Interval " + op(name) + " " + second + "->Interval";
    };
    switch (m_random.pick(13)) {
    case 0:
    case 1:
    case 2:
        return relate("before");
    case 3:
    case 4:
        return relate("after");
    case 5:
        return relate("overlap");
    case 6:
        return op("named") + "(" + first + "->Name, " + m_models.front().name + ")";
    case 7:
        return op("sometimes", "i") + "(" + first + "->Interval)";
    case 8:
        return op("grown", "ie") + "(" + first + "->Interval)";
    case 9:
        return op("lasting") + "(" + first + "->Interval) " + op(">=", "iepmn") + " 1";
    case 10:
        return first + " earlier " + second;
    case 11:
        return op("maybe") + "(" + first + "->W)";
    default:
        return constraint(std::min(variables, 2));
    }
}

void RandomModels::addComposite()
{
    static const std::vector<std::string> kKinds{
        "CompositeEvent", "CompositeState", "PrimitiveEvent"};
    static const std::vector<std::string> kTypes{"Person", "Person", "Person", "Zone", "Any"};
    const int components = m_random.oneIn(4) ? 3 : 1 + m_random.pick(2);
    const Model model{
        newName(),
        m_random.oneIn(20) ? "PrimitiveState" : m_random.of(kKinds),
        m_random.oneIn(4) ? 1 : 2 + m_random.pick(components == 1 ? 1 : 2)};
    const std::string objects = physicalObjects(model.variables, kTypes);
    std::string parts;
    for (int i = 1; i <= components; ++i) {
        parts += component(i, model.variables);
    }
    std::string constraints;
    for (int count = m_random.of<int>({0, 0, 1, 1, 2}); count > 0; --count) {
        constraints += "(" + compositeConstraint(components, model.variables) + ")";
    }
    m_components = std::max(m_components, components);
    addModel(model, objects + "Components(" + parts + ")\nConstraints(" + constraints + ")\n");
}

} // namespace scenariomatch
