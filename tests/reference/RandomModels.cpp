#include "tests/reference/RandomModels.h"

#include <algorithm>

namespace scenariomatch
{

namespace
{

std::string variable(int index)
{
    return {static_cast<char>('p' + index)};
}

} // namespace

RandomModels::RandomModels(std::uint32_t seed)
    : m_random(seed)
    , m_names{"A", "B", "C", "D", "E", "F", "G", "H"}
{
    for (std::size_t i = m_names.size(); i > 1; --i) {
        std::swap(m_names[i - 1], m_names[static_cast<std::size_t>(pick(static_cast<int>(i)))]);
    }
    for (int primitives = 1 + pick(3); primitives > 0; --primitives) {
        addPrimitive();
    }
    for (int composites = pick(4); composites > 0; --composites) {
        addComposite();
    }
}

int RandomModels::pick(int limit)
{
    return static_cast<int>(m_random() % static_cast<std::uint32_t>(limit));
}

bool RandomModels::oneIn(int times)
{
    return pick(times) == 0;
}

std::string RandomModels::newName()
{
    if (!m_models.empty() && oneIn(20)) {
        return m_models[static_cast<std::size_t>(pick(static_cast<int>(m_models.size())))].name;
    }
    std::string name = m_names.back();
    m_names.pop_back();
    return name;
}

std::string RandomModels::threshold()
{
    const std::vector<std::string> choices{"", "", "", "[0.3]", "[0.5]", "[0.75]"};
    return choices[static_cast<std::size_t>(pick(static_cast<int>(choices.size())))];
}

void RandomModels::addModel(const Model& model, const std::string& sections)
{
    m_text += model.kind + "(" + model.name + threshold() + ",\n" + sections + ")\n";
    m_models.push_back(model);
    if (!oneIn(30)) {
        m_used.push_back(model.name);
    }
}

void RandomModels::addPrimitive()
{
    const std::vector<std::string> types{
        "Person", "Person", "Person", "Child", "Thing", "Zone", "Any", "Bag"};
    const Model model{newName(), "PrimitiveState", 1 + pick(2)};
    std::string objects;
    for (int i = 0; i < model.variables; ++i) {
        objects += "(" + variable(i) + " : " +
                   types[static_cast<std::size_t>(pick(static_cast<int>(types.size())))] + ")";
    }
    std::string constraints;
    for (int count = pick(3); count > 0; --count) {
        constraints += "(" + primitiveConstraint(model.variables) + ")";
    }
    addModel(model, "PhysicalObjects(" + objects + ")\nConstraints(" + constraints + ")\n");
}

std::string RandomModels::primitiveConstraint(int variables)
{
    const std::string a = variable(pick(variables)) + "->P";
    const std::string b =
        oneIn(10) ? variable(pick(variables)) + "->Q" : variable(pick(variables)) + "->P";
    switch (pick(12)) {
    case 0:
        return a + " near " + b;
    case 1:
        return "close(" + a + ", " + b + ")";
    case 2:
        return a + " left " + b;
    case 3:
        return a + " left 2";
    case 4:
        return "maybe(" + a + ")";
    case 5:
        return "sometimes(" + a + ")";
    case 6:
        return "moved(" + a + ")";
    case 7:
        return "near(" + a + ", " + b + ") and maybe(" + b + ")";
    case 8:
        return "!(" + a + " near " + b + ")";
    case 9:
        return oneIn(4) ? "nan(" + a + ")" : "close(" + a + ", 1)";
    case 10:
        return "failing(" + a + ")";
    default:
        return oneIn(4) ? (oneIn(2) ? "empty(" + a + ")" : "number(" + a + ")")
                        : "close(" + b + ", 2)";
    }
}

std::string RandomModels::component(int index, int variables)
{
    const Model& sub = m_models[static_cast<std::size_t>(pick(static_cast<int>(m_models.size())))];
    int count = sub.variables;
    if (oneIn(20)) {
        count += oneIn(2) ? 1 : -1;
    }
    std::string arguments;
    for (int i = 0; i < count; ++i) {
        const int chosen = oneIn(4) ? pick(variables) : (i + pick(2)) % variables;
        arguments += (i == 0 ? "" : ", ") + variable(chosen);
    }
    return "(c" + std::to_string(index) + " : " + sub.kind + " " + sub.name + "(" + arguments +
           "))";
}

std::string RandomModels::compositeConstraint(int components)
{
    const std::string first = "c" + std::to_string(1 + pick(components));
    const std::string second = "c" + std::to_string(1 + pick(components));
    switch (pick(7)) {
    case 0:
    case 1:
        return first + "->Interval before " + second + "->Interval";
    case 2:
        return first + "->Interval after " + second + "->Interval";
    case 3:
        return first + "->Interval overlap " + second + "->Interval";
    case 4:
        return "named(" + first + "->Name, " + m_models.front().name + ")";
    case 5:
        return "sometimes(" + first + "->Interval)";
    default:
        return primitiveConstraint(2);
    }
}

void RandomModels::addComposite()
{
    const std::vector<std::string> kinds{
        "CompositeEvent", "CompositeState", "PrimitiveEvent", "PrimitiveState"};
    const int components = oneIn(4) ? 3 : 1 + pick(2);
    const Model model{
        newName(),
        kinds[static_cast<std::size_t>(oneIn(20) ? 3 : pick(3))],
        1 + pick(components == 1 ? 2 : 3)};
    std::string objects;
    for (int i = 0; i < model.variables; ++i) {
        objects += "(" + variable(i) + " : Person)";
    }
    std::string parts;
    for (int i = 1; i <= components; ++i) {
        parts += component(i, model.variables);
    }
    std::string constraints;
    for (int count = pick(3); count > 0; --count) {
        constraints += "(" + compositeConstraint(components) + ")";
    }
    m_width = std::max(m_width, components);
    addModel(
        model,
        "PhysicalObjects(" + objects + ")\nComponents(" + parts + ")\nConstraints(" + constraints +
            ")\n");
}

} // namespace scenariomatch
