#include "tests/reference/SmallFamilies.h"

#include <algorithm>
#include <limits>

namespace scenariomatch
{

namespace
{

using Kind = SceneValue::Kind;
using Model = SmallFamily::Model;

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

const std::vector<std::string>& pairConstraints()
{
    static const std::vector<std::string> constraints{
        "apart_m(p->X, q->X) <=_m 1",
        "value_p(1) >_m far_m(q->X, p->X)",
        "within_m(p->X, q->X, p->R)",
        "within_n(q->X, p->X, 1)",
        "apart_i(p->X, q->X) <=_i 1",
        "left_i(p->P, q->P)",
        "!(p->P near_p q->P)",
        "maybe_e(q->P)",
        "maybe_e(p->P)",
        "close_p(p->P, 1)",
        "risky_m(p->X, q->X) <_m 2",
        "sometimes_i(q->P)",
        "close_e(1, 2)",
        "within_m(p->X, p->X, 0) and_m apart_m(q->X, p->X) <=_m 1",
        "inside_i(p->X, q->Y) or_p value_p(p->F)",
        "failing_p(p->P)",
        "value_p(q->F)"};
    return constraints;
}

const std::vector<std::string>& singleConstraints()
{
    static const std::vector<std::string> constraints{
        "maybe_p(p->P)",
        "moved_e(p->P)",
        "moved_p(p->P)",
        "p->P left_i 2",
        "!(p->P near_p 1)",
        "!(p->P near_p 2)",
        "sometimes_i(p->P)",
        "failing_e(p->P)",
        "apart_m(p->X, p->Y) <=_m 1",
        "value_e(p->F)",
        "empty_i(p->W)"};
    return constraints;
}

std::string number(std::size_t value)
{
    const std::string digits = std::to_string(value);
    return std::string(5 - std::min<std::size_t>(digits.size(), 5), '0') + digits;
}

// Every list of at most `longest` of the constraints.
std::vector<std::string> listsOf(const std::vector<std::string>& constraints, int longest)
{
    std::vector<std::string> lists{""};
    std::size_t shorter = 0;
    for (int length = 0; length < longest; ++length) {
        const std::size_t end = lists.size();
        for (; shorter < end; ++shorter) {
            for (const std::string& constraint : constraints) {
                lists.push_back(lists[shorter] + "(" + constraint + ")");
            }
        }
    }
    return lists;
}

void addPrimitives(
    SmallFamily& family, const std::string& objects, const std::vector<std::string>& lists)
{
    // Some candidates are confident and some are not.
    static const std::vector<std::string> kThresholds{"", "[0.5]", "[0.6]"};
    for (const std::string& list : lists) {
        const std::string name = "M" + number(family.models.size());
        const std::string& threshold = kThresholds[family.models.size() % kThresholds.size()];
        std::string declaration = "PrimitiveState(";
        declaration += name + threshold;
        declaration += ",\nPhysicalObjects(";
        declaration += objects + ")\n";
        declaration += "Constraints(" + list + "))\n";
        family.models.push_back({name, declaration});
    }
}

std::vector<SceneObject> twoZones()
{
    return {
        {.host = 0,
         .type = "Zone",
         .attributes =
             {{"P", {.x = 1.0}},
              {"X", {.kind = Kind::Point, .x = 1.0, .y = 0.0}},
              {"Y", {.kind = Kind::Polygon, .x = 2.0, .y = 1.0}}}},
        {.host = 1,
         .type = "Zone",
         .attributes = {{"P", {.x = 0.0}}, {"X", {.kind = Kind::Polygon, .x = 2.0, .y = 0.0}}}}};
}

// Low and High are never true at once; Pair is true of two that are equal.
void addStates(SmallFamily& family)
{
    family.common = {
        {"Low",
         "PrimitiveState(Low, PhysicalObjects((p : Person)) Constraints((maybe_p(p->P))"
         "(p->P left_i 2)))\n"},
        {"High",
         "PrimitiveState(High, PhysicalObjects((p : Person)) Constraints((!(p->P left_p 2))))\n"},
        {"Pair",
         "PrimitiveState(Pair, PhysicalObjects((p : Person)(q : Person))"
         " Constraints((apart_m(p->X, q->X) <=_m 1)))\n"}};
    family.actors = {"Person", "Person", "Person"};
    family.places = {
        {{"P", {.x = 0.0}}, {"X", {.kind = Kind::Point, .x = 0.0, .y = 0.0}}},
        {{"P", {.x = 3.0}}, {"X", {.kind = Kind::Point, .x = 3.0, .y = 0.0}}},
        {{"P", {.x = 1.0}}, {"X", {.kind = Kind::Point, .x = 1.0, .y = 0.0}}},
        {{"P", {.x = 2.0}}, {"X", {.kind = Kind::Point, .x = 2.0, .y = 0.0}}}};
    family.settings = {
        .prolongation = 1.0, .timeSearch = 2.0, .bayesianRatio = 1.0, .historySize = 2};
}

// What a component may be: every state with every choice of arguments.
const std::vector<std::string>& componentChoices()
{
    static const std::vector<std::string> choices{
        "PrimitiveState Low(p)",
        "PrimitiveState Low(q)",
        "PrimitiveState High(p)",
        "PrimitiveState High(q)",
        "PrimitiveState Pair(p, q)",
        "PrimitiveState Pair(q, p)"};
    return choices;
}

void addComposite(
    SmallFamily& family, const std::vector<std::string>& components, const std::string& constraints)
{
    static const std::vector<std::string> kKinds{
        "CompositeEvent", "PrimitiveEvent", "CompositeState"};
    const std::string name = "M" + number(family.models.size());
    std::string parts;
    for (std::size_t i = 0; i < components.size(); ++i) {
        parts += "(c" + std::to_string(i + 1) + " : ";
        parts += components[i] + ")";
    }
    family.models.push_back(
        {name,
         kKinds[family.models.size() % kKinds.size()] + "(" + name +
             ",\nPhysicalObjects((p : Person)(q : Person))\nComponents(" + parts +
             ")\nConstraints(" + constraints + "))\n"});
}

} // namespace

ModelSet SmallFamily::all() const
{
    ModelSet set;
    for (const auto* group : {&common, &models}) {
        for (const Model& model : *group) {
            set.declarations += model.declaration;
            set.used.push_back(model.name);
        }
    }
    return set;
}

SmallFamily SmallFamily::part(std::size_t first, std::size_t stride) const
{
    SmallFamily part = *this;
    part.models.clear();
    for (std::size_t i = first; i < models.size(); i += stride) {
        part.models.push_back(models[i]);
    }
    return part;
}

std::vector<Attributes> plainPlaces()
{
    return {
        {{"P", {.x = 0.0}},
         {"X", {.kind = Kind::Point, .x = 0.0, .y = 0.0}},
         {"Y", {.kind = Kind::Polygon, .x = 1.0, .y = 1.0}},
         {"R", {.kind = Kind::WholeNumber, .x = 1.0}}},
        {{"P", {.x = 1.0}}, {"X", {.kind = Kind::Point, .x = 1.0, .y = 0.0}}, {"R", {.x = 0.0}}},
        {{"P", {.x = 3.0}},
         {"X", {.kind = Kind::Point, .x = 1.8, .y = 0.6}},
         {"Y", {.kind = Kind::Point, .x = 2.0, .y = 0.0}},
         {"R", {.x = 2.0}},
         {"F", {.kind = Kind::Truth, .x = 1.0, .y = 0.9}}},
        {{"P", {.x = 0.0}},
         {"X", {.kind = Kind::HighPoint, .x = 0.0, .y = 0.0, .z = 1.0}},
         {"F", {.kind = Kind::Truth, .x = 0.0, .y = 0.9}}}};
}

std::vector<Attributes> oddPlaces()
{
    return {
        {{"P", {.x = kNaN}},
         {"X", {.kind = Kind::Polygon, .x = 1.0, .y = 0.0}},
         {"R", {.x = kInfinity}}},
        {{"P", {.kind = Kind::WholeNumber, .x = 1.0}},
         {"X", {.kind = Kind::Point, .x = kNaN, .y = 0.0}},
         {"R", {.x = -1.0}},
         {"F", {.kind = Kind::Truth, .x = 1.0, .y = kNaN}}},
        {{"X", {.kind = Kind::HighPoint, .x = 0.0, .y = kInfinity, .z = 0.0}},
         {"F", {.kind = Kind::Text, .x = 1.0}}},
        {{"P", {.x = 1.0}},
         {"X", {.kind = Kind::WholePoint, .x = 1.0, .y = 0.0}},
         {"R", {.x = kNaN}}}};
}

SmallFamily constraintLists(const std::string& objects, int longest)
{
    SmallFamily family;
    addPrimitives(family, objects, listsOf(pairConstraints(), longest));
    family.actors = {"Person", "Person", "Child"};
    family.places = plainPlaces();
    family.zones = twoZones();
    return family;
}

SmallFamily singleLists(int longest)
{
    SmallFamily family;
    addPrimitives(family, "(p : Person)", listsOf(singleConstraints(), longest));
    family.actors = {"Person", "Child", "Person"};
    family.places = plainPlaces();
    family.settings.prolongation = 2.0;
    family.settings.timeSearch = 1.0;
    return family;
}

SmallFamily pairs()
{
    static const std::vector<std::string> kOrders{
        "",
        "(c1->Interval before_p c2->Interval)",
        "(c1->Interval after_e c2->Interval)",
        "(c1->Interval overlap_i c2->Interval)",
        "(c1->Interval before_i c2->Interval)(named_p(c2->Name, High))"};
    SmallFamily family;
    addStates(family);
    for (const std::string& first : componentChoices()) {
        addComposite(family, {first}, "");
        addComposite(family, {first}, "(lasting_p(c1->Interval) >=_m 1)(sometimes_i(p->P))");
        for (const std::string& second : componentChoices()) {
            for (const std::string& order : kOrders) {
                addComposite(family, {first, second}, order);
            }
        }
    }
    return family;
}

SmallFamily triples()
{
    SmallFamily family;
    addStates(family);
    for (const std::string& first : componentChoices()) {
        for (const std::string& second : componentChoices()) {
            for (const std::string& third : componentChoices()) {
                addComposite(family, {first, second, third}, "");
                addComposite(
                    family,
                    {first, second, third},
                    "(c1->Interval before_p c2->Interval)(c3->Interval after_i c2->Interval)");
            }
        }
    }
    return family;
}

SmallFamily chains()
{
    SmallFamily family;
    addStates(family);
    family.common.push_back(
        {"Meets",
         "CompositeEvent(Meets[0.3], PhysicalObjects((p : Person)(q : Person))"
         " Components((c1 : PrimitiveState Low(p))(c2 : PrimitiveState Pair(p, q)))"
         " Constraints((c1->Interval before_p c2->Interval)))\n"});
    const auto add = [&](const std::vector<std::string>& components,
                         const std::string& constraints) {
        addComposite(family, components, constraints);
    };
    add({"CompositeEvent Meets(p, q)"}, "(grown_e(c1->Interval))");
    add({"CompositeEvent Meets(p, q)", "PrimitiveState High(q)"},
        "(c1->Interval before_e c2->Interval)");
    add({"CompositeEvent Meets(p, q)", "CompositeEvent Meets(q, p)"}, "");
    add({"CompositeEvent M00001(p, q)"}, "(lasting_i(c1->Interval) >=_m 1)");
    add({"CompositeEvent M00001(q, p)", "CompositeEvent Meets(p, q)"},
        "(c1->Interval overlap_p c2->Interval)");
    add({"PrimitiveEvent M00001(p, q)", "CompositeEvent M00000(p)"}, "");
    return family;
}

SmallFamily visits()
{
    SmallFamily family;
    family.common = {
        {"At",
         "PrimitiveState(At, PhysicalObjects((p : Person)(z : Zone))"
         " Constraints((p->P near_p z->P)))\n"},
        {"Off",
         "PrimitiveState(Off, PhysicalObjects((p : Person)(z : Zone))"
         " Constraints((!(p->P near_e z->P))))\n"},
        {"Even",
         "PrimitiveState(Even, PhysicalObjects((p : Person)) Constraints((maybe_p(p->P))))\n"},
        {"Some",
         "PrimitiveState(Some, PhysicalObjects((p : Person)) Constraints((sometimes_i(p->P))))\n"},
        {"Close",
         "PrimitiveState(Close[0.4], PhysicalObjects((p : Person)(q : Person))"
         " Constraints((close_e(p->P, q->P))))\n"}};
    family.models = {
        {"Leaves",
         "CompositeEvent(Leaves, PhysicalObjects((p : Person)(z : Zone))"
         " Components((a : PrimitiveState At(p, z))(b : PrimitiveState Off(p, z)))"
         " Constraints((a->Interval before_i b->Interval)))\n"},
        {"Returns",
         "CompositeEvent(Returns, PhysicalObjects((p : Person)(z : Zone))"
         " Components((a : CompositeEvent Leaves(p, z))(b : PrimitiveState At(p, z)))"
         " Constraints((b->Interval after_p a->Interval)))\n"},
        {"Both",
         "CompositeState(Both[0.2], PhysicalObjects((p : Person)(q : Person))"
         " Components((a : PrimitiveState Even(p))(b : PrimitiveState Some(q))))\n"},
        {"Again",
         "CompositeEvent(Again, PhysicalObjects((p : Person)(q : Person))"
         " Components((a : PrimitiveState Close(p, q))(b : PrimitiveState Close(q, p)))"
         " Constraints((a->Interval overlap_i b->Interval)))\n"},
        {"IsEven",
         "PrimitiveEvent(IsEven, PhysicalObjects((p : Person))"
         " Components((c : PrimitiveState Even(p))))\n"}};
    family.actors = {"Person", "Child", "Person"};
    family.places = plainPlaces();
    family.zones = twoZones();
    family.settings = {
        .prolongation = 1.0, .timeSearch = 2.0, .bayesianRatio = 1.0, .historySize = 2};
    return family;
}

} // namespace scenariomatch
